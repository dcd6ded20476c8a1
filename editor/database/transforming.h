#pragma once

#include "editor/database/transform.h"
#include "editor/dwg/model.h"

namespace editor {

/// Carries a decoded entity over by an affine map. A circle or arc that is stretched becomes an ellipse, so the type of
/// the object may change; flat entities that are mirrored turn their extrusion.
///
/// False, and the object unchanged, where it has no way to say what the map makes of it: a body that isn't decoded,
/// bulges and widths that are stretched unevenly, an insertion that is sheared, a map that flattens it. The parts of an
/// insertion or polyline are objects of their own: see transformTree.
bool transformEntity(dwg::Object& object, const Transform& by);

/// An entity with the entities that hang on it: attributes with the end of their sequence, or vertices.
struct EntityTree {
    dwg::Object whole;
    std::vector<dwg::Object> parts;
};

/// As transformEntity, for all of a tree or nothing.
bool transformTree(EntityTree& tree, const Transform& by);

} // namespace editor
