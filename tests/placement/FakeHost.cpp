#include "tests/placement/FakeHost.h"

#include "editor/sdk/editor.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"

namespace tests {

PlacementTest* PlacementTest::current = nullptr;

namespace {

class FakeDocument : public AcApDocument {
    const wchar_t* fileName() const override { return L"Drawing1.dwg"; }
    AcDbDatabase* database() const override { return &PlacementTest::current->drawing; }
};

class FakeDocuments : public AcApDocManager {
public:
    AcApDocument* curDocument() const override { return &document; }
    AcApDocument* mdiActiveDocument() const override { return &document; }
    AcApDocumentIterator* newAcApDocumentIterator() override { return nullptr; }
    bool isApplicationContext() const override { return false; }
    int activateDocument(AcApDocument*, bool) override { return 0; }
    void executeInApplicationContext(void (*)(void*), void*) const override {}
    int appContextOpenDocument(const wchar_t*) override { return 0; }
    int lockDocument(AcApDocument*, AcAp::DocLockMode) override { return 0; }
    int unlockDocument(AcApDocument*) override { return 0; }
    void pushResourceHandle() override {}
    void popResourceHandle() override {}
    int sendStringToExecute(AcApDocument* target, const wchar_t* text, bool activate, bool wrapUpInactiveDoc,
                            bool echoString) override {
        EXPECT_EQ(target, &document);
        PlacementTest::current->sent.push_back({text, activate, wrapUpInactiveDoc, echoString});
        PlacementTest::current->layersAtSending.push_back(PlacementTest::current->drawing.clayer());
        return 0;
    }

private:
    mutable FakeDocument document;
};

class FakeServices : public AcDbHostApplicationServices {
    AcDbDatabase* workingDatabase() const override { return &PlacementTest::current->drawing; }
};

std::wstring TextOf(const resbuf& element) {
    switch (element.restype) {
    case RTSTR:
        return element.resval.rstring;
    case RTREAL:
        return platform::Format(L"real %f", element.resval.rreal);
    case RTNONE:
        return L"end";
    default:
        return L"other";
    }
}

} // namespace

PlacementTest::PlacementTest() : directory(new Directory) {
    current = this;
    platform::SetMainThread();
    platform::SetUserInterface(this);
    placement = {};
    askedBlocks.clear();
    pendingOpenPath.clear();
    blockInsert = overlayXRef = 0;
    directory->path = L"/lib";
    directories.push_back(directory);
    door = AddBlock(*directory, L"DOOR");
    currentDirectory = directory;
}

PlacementTest::~PlacementTest() {
    platform::SetUserInterface(nullptr);
    currentDirectory = nullptr;
    for (Directory* owned : directories)
        delete owned;
    directories.clear();
    current = nullptr;
}

std::vector<std::wstring> PlacementTest::Sent() const {
    std::vector<std::wstring> texts;
    for (const SentText& text : sent)
        texts.push_back(text.text);
    return texts;
}

void PlacementTest::Define(const std::wstring& name) {
    AcDbDatabase source;
    AcDbObjectId id;
    ASSERT_EQ(drawing.insert(id, name.c_str(), &source), eOk);
}

bool PlacementTest::IsDefined(const std::wstring& name) {
    AcDbBlockTable* table = nullptr;
    EXPECT_EQ(drawing.getBlockTable(table), eOk);
    const bool found = table->has(name.c_str());
    table->close();
    return found;
}

Block* PlacementTest::AddBlock(Directory& owner, const std::wstring& name) {
    auto* const block = new Block;
    block->name = name;
    owner.blocks.push_back(block);
    return block;
}

platform::MessageAnswer PlacementTest::MessageBox(const std::wstring& text, const std::wstring& caption,
                                                  platform::MessageButtons, platform::MessageIcon) {
    EXPECT_EQ(caption, L"Tessaro");
    questions.push_back(text);
    return answer;
}

} // namespace tests

using tests::PlacementTest;

AcApDocManager* acDocManagerPtr() {
    static tests::FakeDocuments documents;
    return &documents;
}

AcDbHostApplicationServices* acdbHostApplicationServices() {
    static tests::FakeServices services;
    return &services;
}

int acedGetVar(const wchar_t* name, resbuf* value) {
    const auto found = PlacementTest::current->reals.find(name);
    if (found == PlacementTest::current->reals.end())
        return RTERROR;
    value->restype = RTREAL;
    value->resval.rreal = found->second;
    return RTNORM;
}

int acedSetVar(const wchar_t* name, const resbuf* value) {
    EXPECT_EQ(value->restype, RTSHORT);
    PlacementTest::current->shorts[name] = value->resval.rint;
    return RTNORM;
}

int acedCmdS(const resbuf* list) {
    std::vector<std::wstring> elements;
    for (; list != nullptr; list = list->rbnext)
        elements.push_back(tests::TextOf(*list));
    PlacementTest::current->lists.push_back(elements);
    return PlacementTest::current->listResult;
}
