#include "tests/chains/ChainFixture.h"

#include "editor/application/drawing.h"
#include "editor/application/format.h"
#include "editor/application/text.h"
#include "editor/database/describing.h"
#include "tessaro/mapping/engine/Engine.h"
#include "tessaro/platform/MainThread.h"

#include <gmock/gmock.h>
#include <memory>

namespace tests {

editor::UserEvent WrittenUser::next(const editor::Prompt& prompt) {
    if (!events.empty()) {
        const editor::UserEvent event = events.front();
        events.pop_front();
        return event;
    }
    if (prompt.kind == editor::Prompt::Kind::Command)
        return {};
    ++unexpected;
    return {editor::UserEvent::Kind::Cancel, {}, {}};
}

ChainTest::ChainTest() : directory(new Directory) {
    platform::SetMainThread();
    platform::SetUserInterface(&user);
    placement = {};
    savedClayer = {};
    clayerSaved = false;
    askedBlocks.clear();
    blockInsert = overlayXRef = 0;
    directory->path = editor::fromUtf8(folder.path().string());
    directory->schemeName = L"<None>";
    directories.push_back(directory);
    currentDirectory = directory;

    editor.console().setSink([this](std::wstring_view text) { transcript += editor::toUtf8(text); });
    editor.setUserInput(&user);
    editor.documents().create();
    door = AddBlock(L"DOOR");
    editor.reactors().addReactor(&cmdLineReactor);
    editor.commands().addOwn({L"TEST", L"TESSARO", L"TESSARO", ACRX_CMD_MODAL, [this] {
                                  ++opened;
                                  if (const auto callback = std::exchange(routine, nullptr))
                                      callback(chosen);
                              }});
}

ChainTest::~ChainTest() {
    editor.reactors().removeReactor(&cmdLineReactor);
    platform::SetUserInterface(nullptr);
    currentDirectory = nullptr;
    for (Directory* owned : directories)
        delete owned;
    directories.clear();
}

std::wstring ChainTest::PathOf(const std::wstring& fileName) const {
    return directory->path + L"/" + fileName;
}

Block* ChainTest::AddBlockWithoutFile(const std::wstring& name) {
    auto* const block = new Block;
    block->name = name;
    directory->blocks.push_back(block);
    return block;
}

Block* ChainTest::AddBlock(const std::wstring& name) {
    AcDbDatabase drawing;
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(drawing.getLayerTable(table, AcDb::kForWrite), eOk);
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    layer->setName(L"Leaf");
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, layer.get()), eOk);
    layer.release()->close();
    table->close();
    EXPECT_EQ(drawing.setClayer(id), eOk);
    EXPECT_FALSE(
        editor::addToModelSpace(drawing, std::make_unique<AcDbLine>(AcGePoint3d{}, AcGePoint3d{1, 0, 0})).isNull());
    EXPECT_EQ(drawing.saveAs(PathOf(name + L".dwg").c_str()), eOk);
    return AddBlockWithoutFile(name);
}

void ChainTest::Place(int (*callback)(Block*), Block* block) {
    routine = callback;
    chosen = block;
    editor.execute(L"TESSARO\n");
}

std::vector<std::string> ChainTest::Model() {
    std::vector<std::string> texts;
    for (const AcDbObjectId id : editor::modelSpaceEntities(Drawing())) {
        AcDbEntity* entity = nullptr;
        EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), eOk);
        const auto* const reference = dynamic_cast<AcDbBlockReference*>(entity);
        texts.push_back(reference != nullptr
                            ? "INSERT " + editor::toUtf8(editor::recordName(reference->blockTableRecord()))
                            : editor::toUtf8(entity->isA()->name()).substr(4));
        entity->close();
    }
    return texts;
}

bool ChainTest::IsDefined(const std::wstring& name) {
    return !editor::findBlock(Drawing(), name).isNull();
}

std::wstring ChainTest::CurrentLayer() {
    return editor::recordName(Drawing().clayer());
}

std::string ChainTest::Content() {
    std::wstring content = L"layer " + CurrentLayer() + L" userr4 " + editor::numberText(Drawing().userr4()) + L"\n";
    for (const AcDbObjectId id : editor::modelSpaceEntities(Drawing())) {
        for (const std::wstring& line : editor::describeEntity(id))
            content += line + L"\n";
    }
    const auto addNames = [&content](AcDbSymbolTable* table) {
        AcDbSymbolTableIterator* made = nullptr;
        EXPECT_EQ(table->newIterator(made), eOk);
        for (const std::unique_ptr<AcDbSymbolTableIterator> walk(made); !walk->done(); walk->step()) {
            AcDbObjectId id;
            walk->getRecordId(id);
            content += editor::recordName(id) + L"\n";
        }
        table->close();
    };
    AcDbBlockTable* blocks = nullptr;
    AcDbLayerTable* layers = nullptr;
    AcDbLinetypeTable* linetypes = nullptr;
    EXPECT_EQ(Drawing().getBlockTable(blocks), eOk);
    addNames(blocks);
    EXPECT_EQ(Drawing().getLayerTable(layers), eOk);
    addNames(layers);
    EXPECT_EQ(Drawing().getLinetypeTable(linetypes), eOk);
    addNames(linetypes);
    return editor::toUtf8(content);
}

void ChainTest::UndoAll() {
    transcript.clear();
    for (int count = 0; count < 200 && !Said("Nothing to undo."); ++count)
        editor.execute(L"U\n");
    EXPECT_TRUE(Said("Nothing to undo."));
}

void ChainTest::Remember() {
    contentBefore = Content();
    savedBefore = SavedDrawing::save(Drawing(), folder.path() / "before.dwg");
}

void ChainTest::ExpectUndone() {
    UndoAll();
    EXPECT_EQ(Content(), contentBefore);
    const SavedDrawing after = SavedDrawing::save(Drawing(), folder.path() / "after.dwg");
    EXPECT_THAT(savedBefore->differences(after), testing::IsEmpty());
}

void ChainTest::ExpectFlags(bool active, bool explode, bool multiple, bool relaunch) {
    EXPECT_EQ(placement.placementActive, active);
    EXPECT_EQ(placement.explodePending, explode);
    EXPECT_EQ(placement.multiplePending, multiple);
    EXPECT_EQ(placement.relaunchPending, relaunch);
}

} // namespace tests
