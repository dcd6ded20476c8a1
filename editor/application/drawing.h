#pragma once

#include "editor/database/space_entities.h"
#include "editor/sdk/db.h"

#include <memory>
#include <string>

/// Short ways to what commands do with a database.
namespace editor {

/// Makes a new entity, on the current layer, part of model space. Null where the database refuses it.
AcDbObjectId addToModelSpace(AcDbDatabase& database, std::unique_ptr<AcDbEntity> entity);
/// The block definition of that name, in whatever case; null where there is none.
AcDbObjectId findBlock(AcDbDatabase& database, const std::wstring& name);
/// Name of a symbol table record; empty where it can't be opened.
std::wstring recordName(AcDbObjectId record);
AcDbObjectId findLayer(AcDbDatabase& database, const std::wstring& name);
/// An Acad status.
int eraseObject(AcDbObjectId object);

/// A status in words.
std::wstring statusText(int status);

} // namespace editor
