#include "editor/sdk/ge.h"

#include <cmath>

AcGeTol AcGeContext::gTol;

const AcGePoint3d AcGePoint3d::kOrigin;

const AcGeVector3d AcGeVector3d::kXAxis{1, 0, 0};
const AcGeVector3d AcGeVector3d::kYAxis{0, 1, 0};
const AcGeVector3d AcGeVector3d::kZAxis{0, 0, 1};

double AcGeVector3d::length() const {
    return std::hypot(x, y, z);
}

AcGeVector3d AcGeVector3d::normal(const AcGeTol& tol) const {
    const double size = length();
    if (size <= tol.equalVector())
        return *this;
    return {x / size, y / size, z / size};
}

AcGeVector3d AcGeVector3d::crossProduct(const AcGeVector3d& other) const {
    return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
}

double AcGeVector3d::dotProduct(const AcGeVector3d& other) const {
    return x * other.x + y * other.y + z * other.z;
}

AcGePoint3d& AcGePoint3d::rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& origin) {
    if (axis.length() <= AcGeContext::gTol.equalVector())
        return *this;
    const AcGeVector3d unit = axis.normal();
    const AcGeVector3d arm = *this - origin;
    const double cosine = std::cos(angle);
    const AcGeVector3d along = unit * (unit.dotProduct(arm) * (1 - cosine));
    const AcGeVector3d across = unit.crossProduct(arm) * std::sin(angle);
    *this = origin + arm * cosine + across + along;
    return *this;
}

AcGePoint3d AcGePoint3d::project(const AcGePlane& plane, const AcGeVector3d& direction) const {
    const double slope = plane.normal().dotProduct(direction);
    if (std::abs(slope) <= AcGeContext::gTol.equalVector())
        return *this;
    return *this + direction * (plane.normal().dotProduct(plane.pointOnPlane() - *this) / slope);
}

AcGePoint2d AcGePoint3d::convert2d(const AcGePlane& plane) const {
    const AcGeVector3d arm = *this - plane.pointOnPlane();
    return {arm.dotProduct(plane.xAxis()), arm.dotProduct(plane.yAxis())};
}

AcGePlane::AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal)
    : planeOrigin(origin), planeNormal(normal.normal()) {
    constexpr double nearVertical = 1.0 / 64;
    const bool vertical = std::abs(planeNormal.x) < nearVertical && std::abs(planeNormal.y) < nearVertical;
    const AcGeVector3d& reference = vertical ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis;
    uAxis = reference.crossProduct(planeNormal).normal();
    vAxis = planeNormal.crossProduct(uAxis).normal();
}
