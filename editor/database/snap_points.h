#pragma once

#include "editor/sdk/db.h"

#include <vector>

namespace editor {

enum class SnapKind { End, Middle, Center, Insertion };

/// The points of that kind that an entity shows, in world coordinates: ends and middles of lines, arcs and the pieces
/// of polylines, centers of circles, arcs and ellipses, insertion points of references and texts. A reference has those
/// of its definition's entities too. None for what isn't decoded.
std::vector<AcGePoint3d> snapPoints(AcDbObjectId entity, SnapKind kind);

} // namespace editor
