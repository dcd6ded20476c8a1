#pragma once

#include "editor/dwg/entities.h"

namespace dwg {

/// SPLINE: a curve by its control points, or by the points that it passes through.
struct Spline {
    struct ControlPoint {
        Point3 point;
        /// Stored where the spline is weighted.
        double weight = 1;
        bool operator==(const ControlPoint&) const = default;
    };

    static constexpr std::uint32_t byControlPoints = 1, byFitPoints = 2;
    /// Which of the two is stored. Up to 2010 it is told so; from 2013 on the flags tell it.
    std::uint32_t scenario = byControlPoints;
    /// From 2013 on: the number that stands where the scenario stood, bit 0 of the flags for points that the curve
    /// passes through, and how knots come from them, 15 for knots that are given. What older drawings have is made to
    /// match.
    static constexpr std::uint32_t fitMethod = 1, usualFitFlags = 9, customKnots = 15;
    std::uint32_t storedScenario = byControlPoints, flags = 0, parametrization = customKnots;
    std::uint32_t degree = 3;
    double fitTolerance = 0;
    Point3 startTangent, endTangent;
    std::vector<Point3> fitPoints;
    bool rational = false, closed = false, periodic = false;
    double knotTolerance = 0, controlTolerance = 0;
    std::vector<double> knots;
    bool weighted = false;
    std::vector<ControlPoint> controlPoints;
    bool operator==(const Spline&) const = default;
};

struct Leader {
    bool unknown1 = false;
    /// 0 a text, 1 a tolerance, 2 an insertion, 3 nothing.
    std::uint16_t annotation = 0;
    /// 0 straight lines, 1 a spline.
    std::uint16_t path = 0;
    std::vector<Point3> points;
    Point3 origin, extrusion = zAxis, xDirection{1, 0, 0}, blockOffset;
    /// From R14 on.
    Point3 endOffset;
    /// Up to R14.
    double gap = 0.09;
    /// Of the annotation, up to 2007.
    double boxHeight = 0, boxWidth = 0;
    bool hook = false, arrow = true;
    /// Up to R14, but unknown4.
    std::uint16_t arrowType = 0;
    double arrowSize = 0.18;
    bool unknown2 = false, unknown3 = false;
    std::uint16_t unknown4 = 0;
    std::uint16_t color = 0;
    bool unknown5 = false, unknown6 = false;
    HandleRef annotationObject{handle_code::softOwner}, style{handle_code::hardPointer};
    bool operator==(const Leader&) const = default;
};

} // namespace dwg
