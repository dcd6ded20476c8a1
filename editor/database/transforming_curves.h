#pragma once

#include "editor/database/transform.h"
#include "editor/dwg/entities_curve.h"
#include "editor/dwg/entities_hatch.h"

/// Entities with many points, carried over by an affine map; see transformEntity. False, and the entity perhaps half
/// done, where it can't say what the map makes of it.
namespace editor {

/// Only by maps that keep angles. What it was made from stays behind: the copy isn't associative.
bool carryHatch(dwg::Hatch& hatch, const Transform& by);
bool carrySpline(dwg::Spline& spline, const Transform& by);
/// The copy has no annotation.
bool carryLeader(dwg::Leader& leader, const Transform& by);

} // namespace editor
