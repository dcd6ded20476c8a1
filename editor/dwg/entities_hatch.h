#pragma once

#include "editor/dwg/color.h"
#include "editor/dwg/entities.h"

namespace dwg {

/// HATCH: boundary paths in the plane of the extrusion, filled solid, by a gradient or by families of lines.
struct Hatch {
    /// One stop of a gradient: 0 the first colour, 1 the last one.
    struct GradientColor {
        double shift = 0;
        NamedColor color;
        bool operator==(const GradientColor&) const = default;
    };

    struct ControlPoint {
        Point2 point;
        /// Stored where the edge is rational.
        double weight = 1;
        bool operator==(const ControlPoint&) const = default;
    };

    struct Edge {
        static constexpr std::uint8_t line = 1, arc = 2, ellipse = 3, spline = 4;

        std::uint8_t kind = line;
        /// Of a line start and end; of an arc the center; of an ellipse the center and, from it, the end of the major
        /// axis.
        Point2 first, second;
        /// Of an arc the radius, of an ellipse minor by major axis. Angles that run clockwise are measured clockwise.
        double radiusOrRatio = 0, startAngle = 0, endAngle = 0;
        bool counterclockwise = false;
        /// Splines only; the points that one passes through and their tangents are stored from 2010 on.
        std::uint32_t degree = 0;
        bool rational = false, periodic = false;
        std::vector<double> knots;
        std::vector<ControlPoint> controlPoints;
        std::vector<Point2> fitPoints;
        Point2 startTangent, endTangent;
        bool operator==(const Edge&) const = default;
    };

    struct Vertex {
        Point2 point;
        /// Stored where the path has bulges.
        double bulge = 0;
        bool operator==(const Vertex&) const = default;
    };

    struct Path {
        static constexpr std::uint32_t isPolyline = 2, isDerived = 4; ///< bits of the flags

        std::uint32_t flags = 0;
        /// A polyline has vertices, any other path edges.
        bool hasBulges = false, closed = false;
        std::vector<Vertex> vertices;
        std::vector<Edge> edges;
        /// The entities that the path follows, where the hatch is associative.
        std::vector<HandleRef> boundaries;
        bool operator==(const Path&) const = default;
    };

    /// A family of parallel lines, angle and scale of the pattern worked in.
    struct PatternLine {
        double angle = 0;
        Point2 base;
        /// From one line to the next.
        Point2 offset;
        /// Negative for a gap, 0 for a dot; empty for a line without gaps.
        std::vector<double> dashes;
        bool operator==(const PatternLine&) const = default;
    };

    /// From 2004 on: 1 for a gradient, whose hatch is solid as well.
    std::uint32_t gradient = 0, reserved = 0;
    double gradientAngle = 0, gradientShift = 0;
    /// 1 where a tint of one colour stands for the second one.
    std::uint32_t singleColor = 0;
    double gradientTint = 0;
    std::vector<GradientColor> gradientColors;
    std::wstring gradientName;
    double elevation = 0;
    Point3 extrusion = zAxis;
    std::wstring name;
    bool solid = false, associative = false;
    std::vector<Path> paths;
    /// 0 every other area, 1 the outermost, 2 all that lies in the outermost path.
    std::uint16_t style = 0;
    /// 0 lines of the user's, 1 predefined, 2 of the user's file.
    std::uint16_t patternType = 0;
    /// What follows is stored where the hatch isn't solid.
    double angle = 0, scale = 1;
    bool doubled = false;
    std::vector<PatternLine> lines;
    /// Stored where a path is derived.
    double pixelSize = 0;
    /// The points that the areas were picked by.
    std::vector<Point2> seeds;
    bool operator==(const Hatch&) const = default;
};

} // namespace dwg
