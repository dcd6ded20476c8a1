#pragma once

#include "editor/database/object_state.h"
#include "editor/database/transform.h"

#include <algorithm>
#include <cmath>

/// What the transformations of entities share.
namespace editor {

constexpr double fullTurn = 2 * 3.14159265358979323846;
constexpr double tolerance = 1e-9;

inline bool isNear(double one, double other) {
    return std::abs(one - other) <= tolerance * std::max({1e-30, std::abs(one), std::abs(other)});
}

inline bool isOrthogonal(const AcGeVector3d& one, const AcGeVector3d& other) {
    return std::abs(one.dotProduct(other)) <= tolerance * one.length() * other.length();
}

inline AcGeVector3d unit(const AcGeVector3d& vector) {
    return vector * (1 / vector.length());
}

inline dwg::Point3 movedPoint(const Transform& by, const dwg::Point3& point) {
    return fromPoint(by.point(toPoint(point)));
}

/// What an affine map does to the plane of a flat entity. Plane and image are both seen against their normals, so that
/// a turn in one is a turn of the same sense in the other.
class FlatMap {
public:
    FlatMap(const Transform& by, const dwg::Point3& extrusion) : map(by), from(planeToWorld(extrusion)) {
        const AcGeVector3d cross = by.vector(from.x).crossProduct(by.vector(from.y));
        usable = std::isfinite(cross.length()) && cross.length() > 0;
        if (!usable)
            return;
        normal = fromVector(unit(cross));
        to = planeToWorld(normal);
        xImage = inPlane(by.vector(from.x));
        yImage = inPlane(by.vector(from.y));
    }

    bool isUsable() const { return usable; }
    /// Lengths in the plane are multiplied by one factor and angles are kept.
    bool isSimilarity() const { return isNear(xImage.length(), yImage.length()) && isOrthogonal(xImage, yImage); }
    double factor() const { return xImage.length(); }
    double turn() const { return std::atan2(xImage.y, xImage.x); }
    const dwg::Point3& extrusion() const { return normal; }
    double thickness(double own) const { return own * map.vector(from.z).dotProduct(to.z); }
    /// A direction of the plane in the image's own axes.
    AcGeVector3d direction(double x, double y) const {
        return {xImage.x * x + yImage.x * y, xImage.y * x + yImage.y * y, 0};
    }
    /// A point of the plane in the image's own axes, z being the elevation.
    dwg::Point3 point(const dwg::Point3& own) const {
        const AcGePoint3d world = map.point(from.point(toPoint(own)));
        return fromVector(inPlane(world - AcGePoint3d::kOrigin));
    }
    dwg::Point2 point(const dwg::Point2& own, double elevation) const {
        const dwg::Point3 moved = point(dwg::Point3{own.x, own.y, elevation});
        return {moved.x, moved.y};
    }
    double elevation(const dwg::Point2& own, double elevation) const { return point({own.x, own.y, elevation}).z; }
    /// The image in world coordinates.
    AcGePoint3d worldPoint(const dwg::Point3& own) const { return map.point(from.point(toPoint(own))); }
    AcGeVector3d worldX() const { return map.vector(from.x); }
    AcGeVector3d worldY() const { return map.vector(from.y); }

private:
    AcGeVector3d inPlane(const AcGeVector3d& v) const {
        return {v.dotProduct(to.x), v.dotProduct(to.y), v.dotProduct(to.z)};
    }

    const Transform& map;
    Transform from, to;
    dwg::Point3 normal;
    AcGeVector3d xImage, yImage;
    bool usable = false;
};

} // namespace editor
