#include "editor/database/working_database.h"
#include "tests/database/database_support.h"

#include <gtest/gtest.h>

using namespace tests;
using namespace dwg::object_type;

namespace {

TEST(Tables, NewDrawingHasItsStandingRecordsInOrder) {
    AcDbDatabase database;
    AcDbBlockTable* blocks = nullptr;
    ASSERT_EQ(database.getBlockTable(blocks), eOk);
    EXPECT_EQ(namesOf(*blocks), (std::vector<std::wstring>{L"*Model_Space", L"*Paper_Space"}));
    AcDbLinetypeTable* linetypes = nullptr;
    ASSERT_EQ(database.getLinetypeTable(linetypes), eOk);
    EXPECT_EQ(namesOf(*linetypes), (std::vector<std::wstring>{L"ByBlock", L"ByLayer", L"Continuous"}));
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(database.getLayerTable(layers), eOk);
    EXPECT_EQ(namesOf(*layers), (std::vector<std::wstring>{L"0"}));
}

TEST(Tables, DatabaseWithoutDrawingHasNoTables) {
    AcDbDatabase database(false);
    AcDbLayerTable* layers = nullptr;
    EXPECT_EQ(database.getLayerTable(layers), Acad::eNoDatabase);
    EXPECT_EQ(layers, nullptr);
    EXPECT_TRUE(database.clayer().isNull());
    EXPECT_EQ(database.saveAs(L"never.dwg"), Acad::eNoDatabase);
}

TEST(Tables, NamesAreLookedUpIgnoringCase) {
    AcDbDatabase database;
    addLayer(database, L"W\u00e4nde");
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(database.getLayerTable(layers), eOk);
    EXPECT_TRUE(layers->has(L"W\u00c4NDE"));
    EXPECT_FALSE(layers->has(L"W\u00c4ND"));
    AcDbObjectId id;
    EXPECT_EQ(layers->getAt(L"none", id), Acad::eKeyNotFound);
    EXPECT_TRUE(id.isNull());
}

TEST(Tables, NameThatExistsInAnotherCaseIsRefusedAndStaysTheCallers) {
    AcDbDatabase database;
    addLayer(database, L"Walls");
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(database.getLayerTable(layers, AcDb::kForWrite), eOk);
    AcDbLayerTableRecord record;
    ASSERT_EQ(record.setName(L"WALLS"), eOk);
    EXPECT_EQ(layers->add(&record), Acad::eDuplicateRecordName);
    EXPECT_EQ(record.database(), nullptr);
}

TEST(Tables, AddingNeedsATableThatIsOpenForWriteAndAProperName) {
    AcDbDatabase database;
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(database.getLayerTable(layers), eOk);
    AcDbLayerTableRecord record;
    ASSERT_EQ(record.setName(L"A"), eOk);
    EXPECT_EQ(layers->add(&record), Acad::eNotOpenForWrite);
    ASSERT_EQ(layers->upgradeOpen(), eOk);
    for (const wchar_t* const name : {L"", L"a|b", L"a*", L"a=b"})
        EXPECT_EQ(record.setName(name), Acad::eInvalidInput) << name;
    AcDbLayerTableRecord nameless;
    EXPECT_EQ(layers->add(&nameless), Acad::eInvalidInput);
    AcDbBlockTableRecord block;
    ASSERT_EQ(block.setName(L"B"), eOk);
    EXPECT_EQ(layers->add(&block), Acad::eInvalidInput);
}

TEST(Tables, IteratorGoesBothWaysAndSkipsErasedRecordsOnlyWhenAsked) {
    AcDbDatabase database;
    addLayer(database, L"A");
    const AcDbObjectId b = addLayer(database, L"B");
    addLayer(database, L"C");
    ASSERT_EQ(erase(b), eOk);
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(database.getLayerTable(layers), eOk);
    EXPECT_EQ(namesOf(*layers), (std::vector<std::wstring>{L"0", L"A", L"C"}));
    AcDbSymbolTableIterator* walk = nullptr;
    ASSERT_EQ(layers->newIterator(walk, false), eOk);
    std::size_t count = 0;
    for (; !walk->done(); walk->step(false, false))
        ++count;
    EXPECT_EQ(count, 4u);
    AcDbObjectId id;
    EXPECT_EQ(walk->getRecordId(id), Acad::eInvalidIndex);
    delete walk;
}

TEST(Layers, NewLayerHasColourSevenAndLinetypeContinuous) {
    AcDbDatabase database;
    const AcDbObjectId id = addLayer(database, L"A");
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(acdbOpenObject(layer, id, AcDb::kForRead), eOk);
    EXPECT_EQ(layer->colorIndex(), 7);
    AcDbLinetypeTableRecord* linetype = nullptr;
    ASSERT_EQ(acdbOpenObject(linetype, layer->linetypeObjectId(), AcDb::kForRead), eOk);
    std::wstring name;
    EXPECT_EQ(linetype->getName(name), eOk);
    EXPECT_EQ(name, L"Continuous");
}

TEST(Layers, LayerThatIsOffHasAPositiveColour) {
    AcDbDatabase database;
    const AcDbObjectId id = addLayer(database, L"A", 3);
    database.impl()->drawing.body<dwg::Layer>({0, id.handle})->color.index = -3;
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(acdbOpenObject(layer, id, AcDb::kForWrite), eOk);
    EXPECT_EQ(layer->colorIndex(), 3);
    EXPECT_TRUE(layer->isOff());
    EXPECT_EQ(layer->setColorIndex(5), eOk);
    EXPECT_TRUE(layer->isOff());
    EXPECT_EQ(layer->setColorIndex(0), Acad::eOutOfRange);
    EXPECT_EQ(layer->setColorIndex(256), Acad::eOutOfRange);
}

TEST(Entities, NewEntityTakesTheCurrentLayerAndIsByLayer) {
    AcDbDatabase database;
    ASSERT_EQ(database.setClayer(addLayer(database, L"A")), eOk);
    const AcDbObjectId id = appendToModel(database, new AcDbLine({0, 0, 0}, {1, 1, 0}));
    AcDbLine* line = nullptr;
    ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForRead), eOk);
    EXPECT_EQ(line->layer(), L"A");
    EXPECT_EQ(line->colorIndex(), 256);
    EXPECT_EQ(line->linetype(), L"BYLAYER");
    EXPECT_EQ(line->blockId(), blockNamed(database, ACDB_MODEL_SPACE));
}

TEST(Entities, LinetypeWordsAreInUpperCaseAndNamesAsStored) {
    AcDbDatabase database;
    const AcDbObjectId id = appendToModel(database, new AcDbLine({0, 0, 0}, {1, 1, 0}));
    AcDbLine* line = nullptr;
    ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForWrite), eOk);
    EXPECT_EQ(line->setLinetype(L"byblock"), eOk);
    EXPECT_EQ(line->linetype(), L"BYBLOCK");
    EXPECT_EQ(line->setLinetype(L"CONTINUOUS"), eOk);
    EXPECT_EQ(line->linetype(), L"Continuous");
    EXPECT_EQ(line->setLinetype(L"DASHED"), Acad::eKeyNotFound);
    EXPECT_EQ(line->setLinetype(L"ByLayer"), eOk);
    EXPECT_EQ(line->linetype(), L"BYLAYER");
}

TEST(Entities, TrueColourGivesTheNearestIndex) {
    AcDbDatabase database;
    const AcDbObjectId id = appendToModel(database, new AcDbLine({0, 0, 0}, {1, 1, 0}));
    dwg::Color& colour = database.impl()->drawing.find(id.handle)->entity->color;
    AcDbLine* line = nullptr;
    ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForRead), eOk);
    colour = {256, 0xFE0102, true};
    EXPECT_EQ(line->colorIndex(), 1);
    colour = {256, 0x0000FF, true};
    EXPECT_EQ(line->colorIndex(), 5);
}

TEST(Entities, SetterStatuses) {
    AcDbDatabase database, other;
    const AcDbObjectId id = appendToModel(database, new AcDbLine({0, 0, 0}, {1, 1, 0}));
    AcDbLine* line = nullptr;
    ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForRead), eOk);
    EXPECT_EQ(line->setLayer(L"0"), Acad::eNotOpenForWrite);
    EXPECT_EQ(line->setColorIndex(1), Acad::eNotOpenForWrite);
    ASSERT_EQ(line->upgradeOpen(), eOk);
    EXPECT_EQ(line->setLayer(L"none"), Acad::eKeyNotFound);
    EXPECT_EQ(line->setLayer(layerNamed(other, L"0")), Acad::eInvalidInput);
    EXPECT_EQ(line->setLayer(blockNamed(database, ACDB_MODEL_SPACE)), Acad::eInvalidKey);
    EXPECT_EQ(line->setColorIndex(257), Acad::eOutOfRange);
    AcDbLine loose({0, 0, 0}, {1, 0, 0});
    EXPECT_EQ(loose.setLayer(L"0"), Acad::eNoDatabase);
    EXPECT_EQ(loose.setColorIndex(3), eOk);
}

TEST(Entities, SetLayerOfAnInsertTakesItsAttributesAlong) {
    AcDbDatabase database;
    const AcDbObjectId layer = addLayer(database, L"A");
    const AcDbObjectId id = appendToModel(database, new AcDbBlockReference({}, addBlock(database, L"B")));
    dwg::Drawing& drawing = database.impl()->drawing;
    dwg::Object attribute;
    attribute.handle = drawing.newHandle();
    attribute.type = dwg::object_type::attribute;
    attribute.body = dwg::Attribute{};
    attribute.entity.emplace();
    drawing.body<dwg::Insert>({0, id.handle})->attributes.parts.push_back(attribute.handle);
    const dwg::Object& part = *drawing.add(std::move(attribute));
    AcDbEntity* insert = nullptr;
    ASSERT_EQ(acdbOpenObject(insert, id, AcDb::kForWrite), eOk);
    EXPECT_EQ(insert->setLayer(layer, false), eOk);
    EXPECT_NE(part.entity->layer.value, layer.handle);
    EXPECT_EQ(insert->setLayer(layer, true), eOk);
    EXPECT_EQ(part.entity->layer.value, layer.handle);
}

TEST(Opening, ReadersAndOneWriterExcludeEachOther) {
    AcDbDatabase database;
    const AcDbObjectId id = layerNamed(database, L"0");
    AcDbObject *reader = nullptr, *second = nullptr, *writer = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(reader, id, AcDb::kForRead), eOk);
    ASSERT_EQ(acdbOpenAcDbObject(second, id, AcDb::kForRead), eOk);
    EXPECT_EQ(reader, second);
    EXPECT_EQ(acdbOpenAcDbObject(writer, id, AcDb::kForWrite), Acad::eWasOpenForRead);
    EXPECT_EQ(reader->upgradeOpen(), Acad::eWasOpenForRead);
    EXPECT_EQ(second->close(), eOk);
    EXPECT_EQ(reader->upgradeOpen(), eOk);
    EXPECT_EQ(acdbOpenAcDbObject(second, id, AcDb::kForRead), Acad::eWasOpenForWrite);
    EXPECT_EQ(acdbOpenAcDbObject(writer, id, AcDb::kForWrite), Acad::eWasOpenForWrite);
    EXPECT_EQ(reader->downgradeOpen(), eOk);
    EXPECT_EQ(reader->close(), eOk);
    EXPECT_EQ(reader->close(), Acad::eNotApplicable);
    EXPECT_EQ(acdbOpenAcDbObject(writer, id, AcDb::kForWrite), eOk);
}

TEST(Opening, BadIdentifiersHaveTheirStatuses) {
    AcDbDatabase database;
    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenAcDbObject(object, {}, AcDb::kForRead), Acad::eNullObjectId);
    EXPECT_EQ(acdbOpenAcDbObject(object, {nullptr, 5}, AcDb::kForRead), Acad::eNoDatabase);
    EXPECT_EQ(acdbOpenAcDbObject(object, {&database, 0xFFFF}, AcDb::kForRead), Acad::eInvalidKey);
    AcDbLine* line = nullptr;
    EXPECT_EQ(acdbOpenObject(line, layerNamed(database, L"0"), AcDb::kForRead), Acad::eNotApplicable);
}

TEST(Erasing, RulesOfLayers) {
    AcDbDatabase database;
    const AcDbObjectId used = addLayer(database, L"Used"), current = addLayer(database, L"Current"),
                       spare = addLayer(database, L"Spare");
    const AcDbObjectId line = appendToModel(database, new AcDbLine({}, {1, 0, 0}), L"Used");
    ASSERT_EQ(database.setClayer(current), eOk);
    EXPECT_EQ(erase(layerNamed(database, L"0")), Acad::eCannotBeErasedByCaller);
    EXPECT_EQ(erase(current), Acad::eCannotBeErasedByCaller);
    EXPECT_EQ(erase(used), Acad::eObjectIsReferenced);
    EXPECT_EQ(erase(spare), eOk);
    EXPECT_EQ(erase(spare), Acad::eWasErased);
    EXPECT_EQ(database.setClayer(spare), Acad::eWasErased);
    EXPECT_EQ(erase(line), eOk);
    EXPECT_EQ(erase(used), eOk);
}

TEST(Erasing, NeedsAnObjectThatIsOpenForWriteAndCanBeTakenBack) {
    AcDbDatabase database;
    const AcDbObjectId id = appendToModel(database, new AcDbLine({}, {1, 0, 0}));
    AcDbObject* line = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(line, id, AcDb::kForRead), eOk);
    EXPECT_EQ(line->erase(), Acad::eNotOpenForWrite);
    ASSERT_EQ(line->upgradeOpen(), eOk);
    ASSERT_EQ(line->erase(), eOk);
    EXPECT_TRUE(line->isErased());
    EXPECT_TRUE(entitiesOf(blockNamed(database, ACDB_MODEL_SPACE)).empty());
    EXPECT_EQ(line->erase(false), eOk);
    EXPECT_EQ(line->close(), eOk);
    EXPECT_EQ(entitiesOf(blockNamed(database, ACDB_MODEL_SPACE)).size(), 1u);
}

TEST(Erasing, BlockDefinitionThatIsInsertedIsRefused) {
    AcDbDatabase database;
    const AcDbObjectId block = addBlock(database, L"B");
    append(block, new AcDbLine({}, {1, 0, 0}));
    const AcDbObjectId insert = appendToModel(database, new AcDbBlockReference({1, 2, 0}, block));
    EXPECT_EQ(erase(block), Acad::eObjectIsReferenced);
    EXPECT_EQ(erase(blockNamed(database, ACDB_MODEL_SPACE)), Acad::eCannotBeErasedByCaller);
    EXPECT_EQ(erase(insert), eOk);
    EXPECT_EQ(erase(block), eOk);
    EXPECT_TRUE(blockNamed(database, L"B").isNull());
}

TEST(Blocks, DefinitionMayNotContainItself) {
    AcDbDatabase database;
    const AcDbObjectId outer = addBlock(database, L"Outer"), inner = addBlock(database, L"Inner");
    append(outer, new AcDbBlockReference({}, inner));
    AcDbBlockTableRecord* record = nullptr;
    ASSERT_EQ(acdbOpenObject(record, inner, AcDb::kForWrite), eOk);
    AcDbBlockReference insert({}, outer);
    EXPECT_EQ(record->appendAcDbEntity(&insert), Acad::eSelfReference);
    AcDbBlockReference nothing({}, {&database, 0xFFFF});
    EXPECT_EQ(record->appendAcDbEntity(&nothing), Acad::eInvalidKey);
}

TEST(Blocks, EntitiesKeepTheirOrder) {
    AcDbDatabase database;
    std::vector<AcDbObjectId> order;
    for (int i = 0; i < 5; ++i)
        order.push_back(appendToModel(database, new AcDbLine({}, {1.0 * i, 0, 0})));
    ASSERT_EQ(erase(order[2]), eOk);
    order.erase(order.begin() + 2);
    EXPECT_EQ(entitiesOf(blockNamed(database, ACDB_MODEL_SPACE)), order);
}

TEST(Classes, TextIsNotParagraphTextAndDimensionsAreDimensions) {
    AcDbDatabase database;
    const auto classOf = [&](std::uint16_t type, dwg::Body body) {
        const AcDbObjectId id = appendToModel(database, new NewEntity(type, std::move(body)));
        dwg::Object& object = *database.impl()->drawing.find(id.handle);
        return editor::makeInterfaceObject(&database, database.impl()->drawing, object)->isA();
    };
    EXPECT_TRUE(classOf(text, dwg::Text{})->isDerivedFrom(AcDbText::desc()));
    EXPECT_TRUE(classOf(attributeDefinition, dwg::AttributeDefinition{})->isDerivedFrom(AcDbText::desc()));
    EXPECT_FALSE(classOf(multilineText, dwg::MultilineText{})->isDerivedFrom(AcDbText::desc()));
    for (std::uint16_t type = dimensionOrdinate; type <= dimensionDiameter; ++type)
        EXPECT_TRUE(classOf(type, dwg::Carried{})->isDerivedFrom(AcDbDimension::desc())) << type;
    const AcRxClass* const hatch = classOf(78, dwg::Carried{});
    EXPECT_STREQ(hatch->name(), L"AcDbHatch");
    EXPECT_TRUE(hatch->isDerivedFrom(AcDbEntity::desc()));
    EXPECT_FALSE(hatch->isDerivedFrom(AcDbDimension::desc()));
}

TEST(NumberText, DecimalsAreThoseGivenOrTheDrawings) {
    wchar_t text[50];
    EXPECT_EQ(acdbRToS(2.5, 2, 1, text, 50), RTNORM);
    EXPECT_STREQ(text, L"2.5");
    EXPECT_EQ(acdbRToS(2.5, 2, -1, text, 50), RTNORM);
    EXPECT_STREQ(text, L"2.5000");
    AcDbDatabase database;
    database.impl()->header.LUPREC = 2;
    editor::setWorkingDatabase(&database);
    EXPECT_EQ(acdbRToS(-1.0 / 3, 2, -1, text, 50), RTNORM);
    EXPECT_STREQ(text, L"-0.33");
    EXPECT_EQ(acdbRToS(1, 2, 4, text, 3), RTERROR);
}

TEST(WorkingDatabase, IsForgottenWhenItGoes) {
    {
        AcDbDatabase database;
        editor::setWorkingDatabase(&database);
        EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), &database);
    }
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
}

} // namespace
