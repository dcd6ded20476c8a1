#pragma once

#include "editor/sdk/db.h"

#include <vector>

namespace editor {

/// The entities of model space that a box in the plan view holds: those that lie in it whole, or with `crossing` also
/// those that it cuts. In drawing order; what shows nothing is in no box.
std::vector<AcDbObjectId> entitiesInBox(AcDbDatabase& database, const AcGePoint3d& corner, const AcGePoint3d& opposite,
                                        bool crossing);

} // namespace editor
