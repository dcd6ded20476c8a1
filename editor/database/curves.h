#pragma once

#include "editor/sdk/ge.h"

#include <vector>

namespace editor {

/// A curve by its control points: `knots` ascending, degree + 1 more than points; `weights` one for each point, or
/// none. What doesn't fit together gives the control points themselves.
struct BSpline {
    std::size_t degree = 3;
    std::vector<double> knots;
    std::vector<AcGePoint3d> controlPoints;
    std::vector<double> weights{};
};

/// Points on the curve that straight pieces between them show it well.
std::vector<AcGePoint3d> pointsOfSpline(const BSpline& spline);

/// A smooth curve through the points, likewise; `closed` leads back to the first one.
std::vector<AcGePoint3d> pointsThrough(const std::vector<AcGePoint3d>& through, bool closed = false);

} // namespace editor
