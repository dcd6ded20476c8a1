#include "editor/database/transform.h"

#include <cmath>

namespace editor {

namespace {

AcGeVector3d sum(const AcGeVector3d& a, const AcGeVector3d& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

} // namespace

AcGeVector3d Transform::vector(const AcGeVector3d& v) const {
    return sum(sum(x * v.x, y * v.y), z * v.z);
}

AcGePoint3d Transform::point(const AcGePoint3d& p) const {
    return origin + vector({p.x, p.y, p.z});
}

Transform Transform::after(const Transform& inner) const {
    return {vector(inner.x), vector(inner.y), vector(inner.z), point(inner.origin)};
}

Transform Transform::scaled(const AcGeVector3d& factors) const {
    return {x * factors.x, y * factors.y, z * factors.z, origin};
}

Transform Transform::turned(double angle) const {
    const double cosine = std::cos(angle), sine = std::sin(angle);
    return {sum(x * cosine, y * sine), sum(x * -sine, y * cosine), z, origin};
}

Transform Transform::moved(const AcGePoint3d& to) const {
    return {x, y, z, point(to)};
}

Transform planeToWorld(const dwg::Point3& extrusion) {
    const AcGeVector3d normal{extrusion.x, extrusion.y, extrusion.z};
    if (normal.x == 0 && normal.y == 0 && normal.z > 0)
        return {};
    const AcGePlane plane({}, normal.normal());
    return {plane.xAxis(), plane.yAxis(), plane.normal(), {}};
}

} // namespace editor
