#pragma once

namespace dwg {

/// A point or vector in drawing units.
struct Point2 {
    double x = 0, y = 0;
    bool operator==(const Point2&) const = default;
};

struct Point3 {
    double x = 0, y = 0, z = 0;
    bool operator==(const Point3&) const = default;
};

} // namespace dwg
