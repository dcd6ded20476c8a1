#pragma once

/// Geometry in three dimensions. Lengths in drawing units, angles in radians.
struct AcGeTol {
    double equalPointTol = 1e-10;
    double equalVectorTol = 1e-10;
    double equalVector() const { return equalVectorTol; }
};

struct AcGeContext {
    static AcGeTol gTol;
};

struct AcGePoint2d {
    double x = 0, y = 0;
};

class AcGePlane;
struct AcGePoint3d;

struct AcGeVector3d {
    double x = 0, y = 0, z = 0;

    static const AcGeVector3d kXAxis, kYAxis, kZAxis;

    double length() const;
    /// The unit vector, or the vector itself where its length is within the tolerance.
    AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const;
    AcGeVector3d crossProduct(const AcGeVector3d& other) const;
    double dotProduct(const AcGeVector3d& other) const;
    AcGeVector3d operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
};

struct AcGePoint3d {
    double x = 0, y = 0, z = 0;

    static const AcGePoint3d kOrigin;

    AcGePoint3d operator+(const AcGeVector3d& vector) const { return {x + vector.x, y + vector.y, z + vector.z}; }
    AcGeVector3d operator-(const AcGePoint3d& other) const { return {x - other.x, y - other.y, z - other.z}; }
    /// Turns the point about the axis through `origin`, counter-clockwise seen against the axis.
    AcGePoint3d& rotateBy(double angle, const AcGeVector3d& axis, const AcGePoint3d& origin = kOrigin);
    /// Where the line through the point along `direction` meets the plane. For a direction that is parallel to the
    /// plane: the point itself.
    AcGePoint3d project(const AcGePlane& plane, const AcGeVector3d& direction) const;
    /// Coordinates in the plane's own axes, from its origin.
    AcGePoint2d convert2d(const AcGePlane& plane) const;
};

/// A plane with axes: from an origin and a normal, the axes follow the arbitrary-axis rule (x axis = Y cross normal
/// where the normal's x and y are both within 1/64 of zero, else Z cross normal; y axis = normal cross x axis).
class AcGePlane {
public:
    AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal);
    const AcGePoint3d& pointOnPlane() const { return planeOrigin; }
    const AcGeVector3d& normal() const { return planeNormal; }
    const AcGeVector3d& xAxis() const { return uAxis; }
    const AcGeVector3d& yAxis() const { return vAxis; }

private:
    AcGePoint3d planeOrigin;
    AcGeVector3d planeNormal, uAxis, vAxis;
};
