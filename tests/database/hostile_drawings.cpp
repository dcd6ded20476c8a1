// Drawings that lead in circles, inserted, exploded, drawn and saved: they end.

#include "editor/database/exploding.h"
#include "editor/database/wireframe.h"
#include "tests/database/database_support.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tests;
using namespace dwg::object_type;

namespace {

dwg::Drawing& drawingOf(AcDbDatabase& database) {
    return database.impl()->drawing;
}

/// A reference that the interface would refuse: to a definition that contains it.
void insertUnchecked(AcDbDatabase& database, AcDbObjectId into, AcDbObjectId what) {
    const AcDbObjectId id = append(into, new AcDbLine({}, {1, 1, 0}));
    dwg::Object& object = *drawingOf(database).find(id.handle);
    dwg::Insert reference;
    reference.block.value = what.handle;
    object.type = insert;
    object.body = reference;
}

dwg::Object& addDictionary(AcDbDatabase& database, dwg::Handle owner) {
    dwg::Object object;
    object.handle = drawingOf(database).newHandle();
    object.type = dictionary;
    object.owner = {dwg::handle_code::softPointer, owner};
    object.body = dwg::Dictionary{};
    return *drawingOf(database).add(std::move(object));
}

void name(AcDbDatabase& database, dwg::Handle dictionary, const wchar_t* name, dwg::Handle object) {
    drawingOf(database)
        .body<dwg::Dictionary>({0, dictionary})
        ->items.push_back({name, {dwg::handle_code::softOwner, object}});
}

void expectInsertedAndSaved(AcDbDatabase& source) {
    const TemporaryFolder folder;
    for (const AcDb::AcDbDwgVersion version : {AcDb::kDHL_1015, AcDb::kDHL_1032}) {
        AcDbDatabase target;
        AcDbObjectId id;
        ASSERT_EQ(target.insert(id, L"Inserted", &source), eOk);
        const auto file = folder.path() / "a.dwg";
        ASSERT_EQ(target.saveAs(file.wstring().c_str(), false, version), eOk);
        AcDbDatabase read(false);
        ASSERT_EQ(read.readDwgFile(file.wstring().c_str()), eOk);
        EXPECT_FALSE(blockNamed(read, L"Inserted").isNull());
        ASSERT_EQ(source.saveAs(file.wstring().c_str(), false, version), eOk);
    }
}

TEST(HostileDrawings, BlocksThatContainThemselvesAreInsertedDrawnExplodedAndSaved) {
    AcDbDatabase source;
    const AcDbObjectId one = addBlock(source, L"One"), other = addBlock(source, L"Other");
    insertUnchecked(source, one, other);
    insertUnchecked(source, other, one);
    insertUnchecked(source, other, other);
    const AcDbObjectId reference = appendToModel(source, new AcDbBlockReference({}, one));
    EXPECT_TRUE(editor::wireframeOfModelSpace(source).strokes.empty());
    expectInsertedAndSaved(source);
    std::vector<AcDbObjectId> made;
    EXPECT_EQ(editor::explodeReference(reference, made), editor::Explosion::Done);
    EXPECT_EQ(made.size(), 1u);
}

TEST(HostileDrawings, BlocksThatMultiplyAtEveryLevelAreDrawnInPartOnly) {
    AcDbDatabase source;
    std::vector<AcDbObjectId> blocks;
    for (int level = 0; level < 12; ++level)
        blocks.push_back(addBlock(source, (L"Level" + std::to_wstring(level)).c_str()));
    for (std::size_t level = 0; level + 1 < blocks.size(); ++level)
        for (int i = 0; i < 20; ++i)
            insertUnchecked(source, blocks[level], blocks[level + 1]);
    append(blocks.back(), new AcDbLine({}, {1, 0, 0}));
    appendToModel(source, new AcDbBlockReference({}, blocks.front()));
    EXPECT_TRUE(editor::wireframeOfModelSpace(source).cut);
    AcDbDatabase target;
    AcDbObjectId id;
    ASSERT_EQ(target.insert(id, L"Inserted", &source), eOk);
    EXPECT_EQ(entitiesOf(id).size(), 1u);
}

TEST(HostileDrawings, OwnersInACircleAreLeftBehind) {
    AcDbDatabase source;
    const AcDbObjectId line = appendToModel(source, new AcDbLine({}, {1, 0, 0}));
    const dwg::Handle one = addDictionary(source, 0).handle;
    const dwg::Handle other = addDictionary(source, one).handle;
    drawingOf(source).find(one)->owner = {dwg::handle_code::softPointer, other};
    name(source, one, L"OTHER", other);
    name(source, other, L"ONE", one);
    drawingOf(source).find(line.handle)->extensionDictionary = {dwg::handle_code::hardOwner, one};
    expectInsertedAndSaved(source);
}

TEST(HostileDrawings, OwnersOfEndlessDepthAreLeftBehind) {
    AcDbDatabase source;
    const AcDbObjectId line = appendToModel(source, new AcDbLine({}, {1, 0, 0}));
    dwg::Handle owner = drawingOf(source).namedObjects()->handle;
    for (int depth = 0; depth < 100'000; ++depth) {
        const dwg::Handle inner = addDictionary(source, owner).handle;
        name(source, owner, L"INNER", inner);
        owner = inner;
    }
    drawingOf(source).find(line.handle)->extensionDictionary = {dwg::handle_code::hardOwner, owner};
    AcDbDatabase target;
    AcDbObjectId id;
    ASSERT_EQ(target.insert(id, L"Inserted", &source), eOk);
    EXPECT_EQ(entitiesOf(id).size(), 1u);
    EXPECT_LT(drawingOf(target).objects().size(), 1000u);
}

TEST(HostileDrawings, PolylinesWhoseEndsLeadToEachOtherAreInserted) {
    AcDbDatabase source;
    std::vector<AcDbObjectId> chain;
    for (int i = 0; i < 50'000; ++i)
        chain.push_back(AcDbObjectId{});
    const AcDbObjectId block = blockNamed(source, ACDB_MODEL_SPACE);
    AcDbBlockTableRecord* record = nullptr;
    ASSERT_EQ(acdbOpenObject(record, block, AcDb::kForWrite), eOk);
    for (AcDbObjectId& id : chain) {
        auto* const entity = new NewEntity(polyline3d, dwg::Polyline3d{});
        ASSERT_EQ(record->appendAcDbEntity(id, entity), eOk);
        entity->close();
    }
    record->close();
    for (std::size_t i = 0; i < chain.size(); ++i)
        drawingOf(source).find(chain[i].handle)->as<dwg::Polyline3d>()->vertices.sequenceEnd.value =
            chain[(i + 1) % chain.size()].handle;
    AcDbDatabase target;
    AcDbObjectId id;
    ASSERT_EQ(target.insert(id, L"Inserted", &source), eOk);
    EXPECT_EQ(entitiesOf(id).size(), chain.size());
}

TEST(HostileDrawings, ReferencesOfARecordThatLeadToItselfAreMapped) {
    AcDbDatabase source;
    const AcDbObjectId line = appendToModel(source, new AcDbLine({}, {1, 0, 0}));
    const dwg::Handle names = addDictionary(source, line.handle).handle;
    dwg::Object object;
    object.handle = drawingOf(source).newHandle();
    object.type = record;
    object.owner = {dwg::handle_code::softPointer, names};
    object.reactors = {{dwg::handle_code::softPointer, object.handle}, {dwg::handle_code::softPointer, names}};
    object.body = dwg::DataRecord{{}, 1, {{dwg::handle_code::softPointer, object.handle}}};
    const dwg::Handle handle = drawingOf(source).add(std::move(object))->handle;
    name(source, names, L"SELF", handle);
    drawingOf(source).find(line.handle)->extensionDictionary = {dwg::handle_code::hardOwner, names};
    AcDbDatabase target;
    AcDbObjectId id;
    ASSERT_EQ(target.insert(id, L"Inserted", &source), eOk);
    const dwg::Object& copy = objectOf(entitiesOf(id)[0]);
    const auto* const items = drawingOf(target).body<dwg::Dictionary>(copy.extensionDictionary);
    ASSERT_NE(items, nullptr);
    const dwg::Object* const own = drawingOf(target).find(items->items.at(0).object);
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(own->as<dwg::DataRecord>()->references.at(0).value, own->handle);
}

TEST(HostileDrawings, RecordsWithControlCharactersInTheirNamesAreLookedUpAndSaved) {
    AcDbDatabase source;
    const AcDbObjectId layer = addLayer(source, L"Walls");
    appendToModel(source, new AcDbLine({}, {1, 0, 0}), L"Walls");
    drawingOf(source).find(layer.handle)->as<dwg::Layer>()->head.name = L"Wa\nlls";
    EXPECT_EQ(layerNamed(source, L"WA\nLLS").handle, layer.handle);
    expectInsertedAndSaved(source);
}

} // namespace
