#include "tests/database/database_support.h"

#include <gtest/gtest.h>

using namespace tests;
using namespace dwg::object_type;

namespace {

TEST(Insert, ModelSpaceBecomesADefinitionWithItsBasePoint) {
    AcDbDatabase source, target;
    addLayer(source, L"Walls", 3);
    source.setInsbase({5, 6, 0});
    appendToModel(source, new AcDbLine({}, {1, 0, 0}), L"Walls");
    appendToModel(source, new AcDbCircle({}, AcGeVector3d::kZAxis, 2));
    AcDbObjectId id;
    ASSERT_EQ(target.insert(id, L"Table", &source), eOk);
    EXPECT_EQ(id, blockNamed(target, L"TABLE"));
    const auto entities = entitiesOf(id);
    ASSERT_EQ(entities.size(), 2u);
    EXPECT_NE(objectOf(entities[0]).as<dwg::Line>(), nullptr);
    EXPECT_NE(objectOf(entities[1]).as<dwg::Circle>(), nullptr);
    AcDbEntity* line = nullptr;
    ASSERT_EQ(acdbOpenObject(line, entities[0], AcDb::kForRead), eOk);
    EXPECT_EQ(line->layer(), L"Walls");
    EXPECT_EQ(line->blockId(), id);
    AcDbBlockTableRecord* block = nullptr;
    ASSERT_EQ(acdbOpenObject(block, id, AcDb::kForRead), eOk);
    EXPECT_EQ(block->origin().x, 5);
    EXPECT_FALSE(block->isLayout());
    EXPECT_FALSE(block->isAnonymous());
    EXPECT_EQ(entitiesOf(blockNamed(source, ACDB_MODEL_SPACE)).size(), 2u) << "the source keeps its own";
}

TEST(Insert, RecordsOfTheDestinationWinOverThoseOfTheSameName) {
    AcDbDatabase source, target;
    addLayer(source, L"WALLS", 3);
    const AcDbObjectId own = addLayer(target, L"Walls", 5);
    const AcDbObjectId ownChair = addBlock(target, L"Chair");
    const AcDbObjectId chair = addBlock(source, L"CHAIR");
    append(chair, new AcDbLine({}, {1, 0, 0}));
    appendToModel(source, new AcDbBlockReference({}, chair), L"WALLS");
    AcDbObjectId id;
    ASSERT_EQ(target.insert(id, L"Table", &source), eOk);
    const auto entities = entitiesOf(id);
    ASSERT_EQ(entities.size(), 1u);
    EXPECT_EQ(objectOf(entities[0]).entity->layer.value, own.handle);
    EXPECT_EQ(objectOf(entities[0]).as<dwg::Insert>()->block.value, ownChair.handle);
    EXPECT_TRUE(entitiesOf(ownChair).empty());
}

TEST(Insert, NestedDefinitionsComeAlong) {
    AcDbDatabase source, target;
    const AcDbObjectId inner = addBlock(source, L"Inner"), outer = addBlock(source, L"Outer");
    append(inner, new AcDbCircle({}, AcGeVector3d::kZAxis, 1));
    append(outer, new AcDbBlockReference({}, inner));
    appendToModel(source, new AcDbBlockReference({}, outer));
    addBlock(source, L"Unused");
    AcDbObjectId id;
    ASSERT_EQ(target.insert(id, L"Table", &source), eOk);
    EXPECT_EQ(entitiesOf(blockNamed(target, L"Inner")).size(), 1u);
    EXPECT_EQ(entitiesOf(blockNamed(target, L"Outer")).size(), 1u);
    EXPECT_TRUE(blockNamed(target, L"Unused").isNull());
}

TEST(Insert, RedefinitionKeepsTheRecordAndSoItsReferences) {
    AcDbDatabase first, second, target;
    appendToModel(first, new AcDbLine({}, {1, 0, 0}));
    for (int i = 0; i < 3; ++i)
        appendToModel(second, new AcDbCircle({}, AcGeVector3d::kZAxis, 1.0 + i));
    AcDbObjectId before, after;
    ASSERT_EQ(target.insert(before, L"Table", &first), eOk);
    const AcDbObjectId reference = appendToModel(target, new AcDbBlockReference({1, 1, 0}, before));
    ASSERT_EQ(target.insert(after, L"TABLE", &second), eOk);
    EXPECT_EQ(before, after);
    EXPECT_EQ(entitiesOf(after).size(), 3u);
    AcDbBlockReference* insert = nullptr;
    ASSERT_EQ(acdbOpenObject(insert, reference, AcDb::kForRead), eOk);
    EXPECT_EQ(insert->blockTableRecord(), after);
}

TEST(Insert, DrawingInsertedIntoItselfIsRefused) {
    AcDbDatabase database;
    AcDbObjectId id;
    EXPECT_EQ(database.insert(id, L"Table", &database), Acad::eSelfReference);
    EXPECT_TRUE(id.isNull());
}

TEST(Insert, DefinitionThatWouldContainItselfIsRefusedAndNothingChanges) {
    AcDbDatabase source, target;
    appendToModel(source, new AcDbBlockReference({}, addBlock(source, L"Table")));
    AcDbObjectId id;
    EXPECT_EQ(target.insert(id, L"table", &source), Acad::eSelfReference);
    EXPECT_TRUE(blockNamed(target, L"Table").isNull());

    // By way of a definition that the destination has: Chair there contains Desk.
    AcDbDatabase other;
    appendToModel(other, new AcDbBlockReference({}, addBlock(other, L"Chair")));
    const AcDbObjectId desk = addBlock(target, L"Desk"), chair = addBlock(target, L"Chair");
    append(chair, new AcDbBlockReference({}, desk));
    const std::size_t objects = target.impl()->drawing.objects().size();
    EXPECT_EQ(target.insert(id, L"Desk", &other), Acad::eSelfReference);
    EXPECT_EQ(target.impl()->drawing.objects().size(), objects);
}

TEST(Insert, BadInputHasItsStatuses) {
    AcDbDatabase source, target, empty(false);
    AcDbObjectId id;
    EXPECT_EQ(target.insert(id, L"Table", nullptr), Acad::eInvalidInput);
    EXPECT_EQ(target.insert(id, L"", &source), Acad::eInvalidInput);
    EXPECT_EQ(target.insert(id, ACDB_MODEL_SPACE, &source), Acad::eInvalidInput);
    EXPECT_EQ(target.insert(id, L"Table", &empty), Acad::eNoDatabase);
    EXPECT_EQ(empty.insert(id, L"Table", &source), Acad::eNoDatabase);
}

TEST(Insert, ObjectsLeftOpenDoNoHarm) {
    AcDbDatabase target;
    AcDbObjectId id;
    {
        AcDbDatabase source;
        AcDbObject* open = nullptr;
        ASSERT_EQ(acdbOpenAcDbObject(open, appendToModel(source, new AcDbLine({}, {1, 0, 0})), AcDb::kForRead), eOk);
        ASSERT_EQ(target.insert(id, L"Table", &source), eOk);
    }
    EXPECT_EQ(entitiesOf(id).size(), 1u);
}

TEST(Insert, ExtensionDictionaryAndExtendedDataGoWithTheirEntity) {
    AcDbDatabase source, target;
    const AcDbObjectId line = appendToModel(source, new AcDbLine({}, {1, 0, 0}));
    dwg::Drawing& drawing = source.impl()->drawing;
    const auto add = [&](std::uint16_t type, dwg::Handle owner, dwg::Body body) {
        dwg::Object object;
        object.handle = drawing.newHandle();
        object.type = type;
        object.owner = {dwg::handle_code::softPointer, owner};
        object.body = std::move(body);
        return drawing.add(std::move(object))->handle;
    };
    const dwg::Handle dictionary = add(dwg::object_type::dictionary, line.handle, dwg::Dictionary{});
    dwg::DataRecord data;
    data.data = {1, 2, 3};
    const dwg::Handle record = add(dwg::object_type::record, dictionary, data);
    drawing.body<dwg::Dictionary>({0, dictionary})->items.push_back({L"DATA", {dwg::handle_code::hardOwner, record}});
    const dwg::Handle application = add(dwg::object_type::application, 9, dwg::ApplicationRecord{{.name = L"MINE"}});
    source.impl()->enter(*source.impl()->table(applicationControl), application);
    dwg::Object& entity = *drawing.find(line.handle);
    entity.extensionDictionary.value = dictionary;
    entity.extendedData.push_back({{dwg::handle_code::hardPointer, application}, {0x46, 1, 0}});

    AcDbObjectId id;
    ASSERT_EQ(target.insert(id, L"Table", &source), eOk);
    const dwg::Object& copy = objectOf(entitiesOf(id)[0]);
    const auto* const names = target.impl()->drawing.body<dwg::Dictionary>(copy.extensionDictionary);
    ASSERT_NE(names, nullptr);
    ASSERT_EQ(names->items.size(), 1u);
    const auto* const carried = target.impl()->drawing.body<dwg::DataRecord>(names->items[0].object);
    ASSERT_NE(carried, nullptr);
    EXPECT_EQ(carried->data, data.data);
    ASSERT_EQ(copy.extendedData.size(), 1u);
    EXPECT_EQ(copy.extendedData[0].application.value, target.impl()->findRecord(applicationControl, L"MINE"));
}

} // namespace
