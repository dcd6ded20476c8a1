#include "editor/database/database_state.h"
#include "editor/database/object_classes.h"

AcDbObject::AcDbObject(std::unique_ptr<Impl> implementation) : state(std::move(implementation)) {}

AcDbObject::~AcDbObject() = default;

const AcRxClass* AcDbObject::isA() const {
    return state->rxClass;
}

AcDbObjectId AcDbObject::objectId() const {
    return state->database == nullptr ? AcDbObjectId{} : AcDbObjectId{state->database, state->object->handle};
}

AcDbDatabase* AcDbObject::database() const {
    return state->database;
}

bool AcDbObject::isErased() const {
    return state->database != nullptr && state->database->impl()->isErased(state->object->handle);
}

int AcDbObject::upgradeOpen() {
    if (state->database == nullptr || state->writing)
        return state->writing ? Acad::eWasOpenForWrite : eOk;
    if (state->readers != 1)
        return Acad::eWasOpenForRead;
    state->readers = 0;
    state->database->impl()->change(state->object->handle);
    state->writing = true;
    return eOk;
}

int AcDbObject::downgradeOpen() {
    if (!state->writing)
        return Acad::eNotOpenForWrite;
    state->writing = false;
    ++state->readers;
    return eOk;
}

int AcDbObject::erase(bool erasing) {
    if (state->database == nullptr)
        return Acad::eNoDatabase;
    if (!state->writing)
        return Acad::eNotOpenForWrite;
    AcDbDatabase::Impl& database = *state->database->impl();
    if (state->own)
        return Acad::eWasErased;
    if (erasing == isErased())
        return erasing ? Acad::eWasErased : eOk;
    if (erasing) {
        const int refusal = database.refusalToErase(*state->object);
        if (refusal != eOk)
            return refusal;
    }
    database.setErased(*state->object, erasing);
    return eOk;
}

int AcDbObject::close() {
    if (state->database == nullptr)
        return Acad::eNoDatabase;
    if (state->readers > 0)
        --state->readers;
    else if (state->writing)
        state->writing = false;
    else
        return Acad::eNotApplicable;
    return eOk;
}

int acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode) {
    object = nullptr;
    if (id.isNull())
        return Acad::eNullObjectId;
    return id.database == nullptr ? Acad::eNoDatabase : id.database->impl()->open(object, id.handle, mode);
}

namespace {

/// The one class object of a declared class.
template <class T> AcRxClass* describe(const wchar_t* name, AcRxClass* parent) {
    static AcRxClass rxClass(name, parent);
    return &rxClass;
}

} // namespace

AcRxClass* AcDbObject::desc() {
    return describe<AcDbObject>(L"AcDbObject", AcRxObject::desc());
}
AcRxClass* AcDbEntity::desc() {
    return describe<AcDbEntity>(L"AcDbEntity", AcDbObject::desc());
}
AcRxClass* AcDbLine::desc() {
    return describe<AcDbLine>(L"AcDbLine", AcDbEntity::desc());
}
AcRxClass* AcDbCircle::desc() {
    return describe<AcDbCircle>(L"AcDbCircle", AcDbEntity::desc());
}
AcRxClass* AcDbText::desc() {
    return describe<AcDbText>(L"AcDbText", AcDbEntity::desc());
}
AcRxClass* AcDbMText::desc() {
    return describe<AcDbMText>(L"AcDbMText", AcDbEntity::desc());
}
AcRxClass* AcDbDimension::desc() {
    return describe<AcDbDimension>(L"AcDbDimension", AcDbEntity::desc());
}
AcRxClass* AcDbBlockReference::desc() {
    return describe<AcDbBlockReference>(L"AcDbBlockReference", AcDbEntity::desc());
}
AcRxClass* AcDbSymbolTable::desc() {
    return describe<AcDbSymbolTable>(L"AcDbSymbolTable", AcDbObject::desc());
}
AcRxClass* AcDbLayerTable::desc() {
    return describe<AcDbLayerTable>(L"AcDbLayerTable", AcDbSymbolTable::desc());
}
AcRxClass* AcDbLinetypeTable::desc() {
    return describe<AcDbLinetypeTable>(L"AcDbLinetypeTable", AcDbSymbolTable::desc());
}
AcRxClass* AcDbBlockTable::desc() {
    return describe<AcDbBlockTable>(L"AcDbBlockTable", AcDbSymbolTable::desc());
}
AcRxClass* AcDbSymbolTableRecord::desc() {
    return describe<AcDbSymbolTableRecord>(L"AcDbSymbolTableRecord", AcDbObject::desc());
}
AcRxClass* AcDbLayerTableRecord::desc() {
    return describe<AcDbLayerTableRecord>(L"AcDbLayerTableRecord", AcDbSymbolTableRecord::desc());
}
AcRxClass* AcDbLinetypeTableRecord::desc() {
    return describe<AcDbLinetypeTableRecord>(L"AcDbLinetypeTableRecord", AcDbSymbolTableRecord::desc());
}
AcRxClass* AcDbBlockTableRecord::desc() {
    return describe<AcDbBlockTableRecord>(L"AcDbBlockTableRecord", AcDbSymbolTableRecord::desc());
}
