#include "editor/application/drawing.h"

namespace editor {

namespace {

template <class Table> AcDbObjectId findIn(Table* table, const std::wstring& name) {
    AcDbObjectId id;
    if (table->getAt(name.c_str(), id) != eOk)
        id = {};
    table->close();
    return id;
}

AcDbBlockTableRecord* openModelSpace(AcDbDatabase& database, AcDb::OpenMode mode) {
    AcDbBlockTableRecord* space = nullptr;
    acdbOpenObject(space, findBlock(database, ACDB_MODEL_SPACE), mode);
    return space;
}

} // namespace

AcDbObjectId findBlock(AcDbDatabase& database, const std::wstring& name) {
    AcDbBlockTable* table = nullptr;
    return database.getBlockTable(table) == eOk ? findIn(table, name) : AcDbObjectId();
}

AcDbObjectId findLayer(AcDbDatabase& database, const std::wstring& name) {
    AcDbLayerTable* table = nullptr;
    return database.getLayerTable(table) == eOk ? findIn(table, name) : AcDbObjectId();
}

AcDbObjectId addToModelSpace(AcDbDatabase& database, std::unique_ptr<AcDbEntity> entity) {
    AcDbBlockTableRecord* const space = openModelSpace(database, AcDb::kForWrite);
    if (space == nullptr)
        return {};
    AcDbObjectId id;
    AcDbEntity* const added = entity.get();
    if (space->appendAcDbEntity(id, added) == eOk) {
        (void)entity.release(); // the drawing owns it now
        added->setLayer(database.clayer());
        added->close();
    }
    space->close();
    return id;
}

std::wstring recordName(AcDbObjectId record) {
    std::wstring name;
    AcDbSymbolTableRecord* opened = nullptr;
    if (acdbOpenObject(opened, record, AcDb::kForRead) != eOk)
        return name;
    if (opened->getName(name) != eOk)
        name.clear();
    opened->close();
    return name;
}

int eraseObject(AcDbObjectId object) {
    AcDbObject* opened = nullptr;
    if (const int status = acdbOpenAcDbObject(opened, object, AcDb::kForWrite); status != eOk)
        return status;
    const int status = opened->erase();
    opened->close();
    return status;
}

std::wstring statusText(int status) {
    switch (status) {
    case eOk:
        return L"done";
    case Acad::eBadDwgHeader:
        return L"it is not a valid drawing file";
    case Acad::eUnsupportedFileFormat:
        return L"its format is not supported";
    case Acad::eFileNotFound:
        return L"the file can't be found";
    case Acad::eFileAccessErr:
        return L"the file can't be accessed";
    case Acad::eFilerError:
        return L"the file is damaged or can't be written";
    case Acad::eFileSharingViolation:
        return L"the file is in use";
    case Acad::eNotApplicable:
        return L"this can't be done with it";
    case Acad::eSelfReference:
        return L"the drawing would contain itself";
    case Acad::eDuplicateRecordName:
        return L"the name is in use";
    case Acad::eInvalidInput:
        return L"the name or value is not valid";
    case Acad::eCannotBeErasedByCaller:
        return L"a drawing can't do without it";
    case Acad::eObjectIsReferenced:
        return L"it is in use";
    case Acad::eWasOpenForRead:
    case Acad::eWasOpenForWrite:
        return L"it is in use elsewhere";
    case Acad::eNotImplementedYet:
        return L"this is not supported";
    default:
        return L"status " + std::to_wstring(status);
    }
}

} // namespace editor
