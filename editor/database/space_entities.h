#pragma once

#include "editor/sdk/db.h"

#include <vector>

namespace editor {

/// The entities of model space in their order, without erased ones. Nothing is opened for it.
std::vector<AcDbObjectId> modelSpaceEntities(const AcDbDatabase& database);
/// Null in an empty drawing.
AcDbObjectId lastEntity(const AcDbDatabase& database);
/// Whether the id names an entity that isn't erased.
bool isEntity(AcDbObjectId id);

} // namespace editor
