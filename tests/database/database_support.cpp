#include "tests/database/database_support.h"

#include <gtest/gtest.h>

namespace tests {

namespace {

AcDbObjectId named(AcDbDatabase& database, std::uint16_t table, const wchar_t* name) {
    return {&database, database.impl()->findRecord(table, name)};
}

} // namespace

AcDbObjectId blockNamed(AcDbDatabase& database, const wchar_t* name) {
    return named(database, dwg::object_type::blockControl, name);
}

AcDbObjectId layerNamed(AcDbDatabase& database, const wchar_t* name) {
    return named(database, dwg::object_type::layerControl, name);
}

AcDbObjectId append(AcDbObjectId block, AcDbEntity* entity, const wchar_t* layer) {
    AcDbBlockTableRecord* record = nullptr;
    EXPECT_EQ(acdbOpenObject(record, block, AcDb::kForWrite), eOk);
    AcDbObjectId id;
    EXPECT_EQ(record->appendAcDbEntity(id, entity), eOk);
    if (layer != nullptr) {
        EXPECT_EQ(entity->setLayer(layer), eOk);
    }
    entity->close();
    record->close();
    return id;
}

AcDbObjectId appendToModel(AcDbDatabase& database, AcDbEntity* entity, const wchar_t* layer) {
    return append(blockNamed(database, ACDB_MODEL_SPACE), entity, layer);
}

AcDbObjectId addLayer(AcDbDatabase& database, const wchar_t* name, std::uint16_t colour) {
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(database.getLayerTable(table, AcDb::kForWrite), eOk);
    auto* const record = new AcDbLayerTableRecord;
    EXPECT_EQ(record->setName(name), eOk);
    EXPECT_EQ(record->setColorIndex(colour), eOk);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, record), eOk);
    record->close();
    table->close();
    return id;
}

AcDbObjectId addBlock(AcDbDatabase& database, const wchar_t* name) {
    AcDbBlockTable* table = nullptr;
    EXPECT_EQ(database.getBlockTable(table, AcDb::kForWrite), eOk);
    auto* const record = new AcDbBlockTableRecord;
    EXPECT_EQ(record->setName(name), eOk);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, record), eOk);
    record->close();
    table->close();
    return id;
}

std::vector<AcDbObjectId> entitiesOf(AcDbObjectId block) {
    AcDbBlockTableRecord* record = nullptr;
    EXPECT_EQ(acdbOpenObject(record, block, AcDb::kForRead), eOk);
    AcDbBlockTableRecordIterator* walk = nullptr;
    EXPECT_EQ(record->newIterator(walk), eOk);
    std::vector<AcDbObjectId> entities;
    for (; !walk->done(); walk->step()) {
        AcDbEntity* entity = nullptr;
        EXPECT_EQ(walk->getEntity(entity, AcDb::kForNotify), eOk);
        entities.push_back(entity->objectId());
        entity->close();
    }
    delete walk;
    record->close();
    return entities;
}

std::vector<std::wstring> namesOf(AcDbSymbolTable& table) {
    AcDbSymbolTableIterator* walk = nullptr;
    EXPECT_EQ(table.newIterator(walk), eOk);
    std::vector<std::wstring> names;
    for (; !walk->done(); walk->step()) {
        AcDbSymbolTableRecord* record = nullptr;
        EXPECT_EQ(walk->getRecord(record, AcDb::kForRead), eOk);
        names.emplace_back();
        EXPECT_EQ(record->getName(names.back()), eOk);
        record->close();
    }
    delete walk;
    return names;
}

int erase(AcDbObjectId object) {
    AcDbObject* opened = nullptr;
    const int status = acdbOpenAcDbObject(opened, object, AcDb::kForWrite);
    if (status != eOk)
        return status;
    const int result = opened->erase();
    opened->close();
    return result;
}

const dwg::Object& objectOf(AcDbObjectId id) {
    return *id.database->impl()->drawing.find(id.handle);
}

std::wstring wide(const std::string& text) {
    return {text.begin(), text.end()};
}

} // namespace tests
