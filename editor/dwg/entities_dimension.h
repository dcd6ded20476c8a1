#pragma once

#include "editor/dwg/entities.h"

namespace dwg {

/// The seven fixed types of dimensions. What is drawn is the block; the fields say how it was made.
struct Dimension {
    std::uint8_t version = 0;
    Point3 extrusion = zAxis;
    Point2 textMiddle;
    double elevation = 0;
    std::uint8_t flags = 0;
    std::wstring text;
    double textRotation = 0, horizontalDirection = 0;
    Point3 blockScale{1, 1, 1};
    double blockRotation = 0;
    std::uint16_t attachment = 5;
    std::uint16_t lineSpacingStyle = 1;
    double lineSpacingFactor = 1;
    double measurement = 0;
    /// From 2007 on: an unknown flag, and whether the first and the second arrow are turned over.
    bool unknown = false, firstArrowFlipped = false, secondArrowFlipped = false;
    Point2 blockPosition;
    /// The points that define it, in the order that its type stores them in: up to four.
    std::array<Point3, 4> points;
    /// Angle between two lines only: the place of the arc, stored ahead of the points.
    Point2 arcPlace;
    /// Linear and aligned: angle of the extension lines; linear: angle of the dimension line.
    double extensionAngle = 0, rotation = 0;
    /// Radius and diameter only.
    double leaderLength = 0;
    /// Ordinate only: bit 0 measures along x.
    std::uint8_t ordinateFlags = 0;
    HandleRef style{handle_code::hardPointer};
    HandleRef block{handle_code::hardPointer};
    bool operator==(const Dimension&) const = default;
};

} // namespace dwg
