#pragma once

#include "editor/dwg/point.h"
#include "editor/sdk/ge.h"

namespace editor {

/// An affine map of space: three axes and an origin.
struct Transform {
    AcGeVector3d x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
    AcGePoint3d origin;

    AcGeVector3d vector(const AcGeVector3d& v) const;
    AcGePoint3d point(const AcGePoint3d& p) const;
    /// First `inner`, then this one.
    Transform after(const Transform& inner) const;
    /// Lengths multiplied along the three axes.
    Transform scaled(const AcGeVector3d& factors) const;
    /// Turned about the z axis.
    Transform turned(double angle) const;
    Transform moved(const AcGePoint3d& to) const;
};

/// From the plane of a flat entity to space, by the arbitrary-axis rule.
Transform planeToWorld(const dwg::Point3& extrusion);

} // namespace editor
