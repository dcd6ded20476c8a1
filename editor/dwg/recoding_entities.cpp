#include "editor/dwg/recoding_fields.h"

/// Entities and views that nobody here looks into.
namespace dwg::recoding {

namespace {

template <class Stream> void transferGradient(Stream& s, HatchFields& f) {
    constexpr std::size_t leastColor = 2 + 2 + 2 + 8;
    s.bl(f.gradient);
    s.bl(f.reserved);
    s.bd(f.gradientAngle);
    s.bd(f.gradientShift);
    s.bl(f.singleColor);
    s.bd(f.gradientTint);
    s.sizeBl(f.gradientColors, leastColor);
    for (HatchFields::GradientColor& one : f.gradientColors) {
        s.bd(one.shift);
        s.cmc(one.color);
    }
    s.t(f.gradientName);
}

template <class Stream> void transferSplineEdge(Stream& s, HatchFields::Edge& edge) {
    s.bl(edge.degree);
    s.b(edge.rational);
    s.b(edge.periodic);
    s.sizeBl(edge.knots, 2);
    s.sizeBl(edge.controlPoints, 128);
    for (double& knot : edge.knots)
        s.bd(knot);
    for (auto& [point, weight] : edge.controlPoints) {
        s.rd2(point);
        if (edge.rational)
            s.bd(weight);
    }
    if (!s.since(Release::r2010))
        return;
    s.sizeBl(edge.fitPoints, 128);
    for (Point2& point : edge.fitPoints)
        s.rd2(point);
    if (!edge.fitPoints.empty()) {
        s.rd2(edge.startTangent);
        s.rd2(edge.endTangent);
    }
}

template <class Stream> void transferEdge(Stream& s, HatchFields::Edge& edge) {
    enum Kind : std::uint8_t { line = 1, arc = 2, ellipse = 3, spline = 4 };
    s.rc(edge.kind);
    switch (edge.kind) {
    case line:
        s.rd2(edge.first);
        s.rd2(edge.second);
        break;
    case ellipse:
        s.rd2(edge.first);
        s.rd2(edge.second);
        s.bd(edge.radiusOrRatio);
        s.bd(edge.startAngle);
        s.bd(edge.endAngle);
        s.b(edge.counterclockwise);
        break;
    case arc:
        s.rd2(edge.first);
        s.bd(edge.radiusOrRatio);
        s.bd(edge.startAngle);
        s.bd(edge.endAngle);
        s.b(edge.counterclockwise);
        break;
    case spline:
        transferSplineEdge(s, edge);
        break;
    default:
        if constexpr (Stream::reading)
            s.data.fail();
    }
}

template <class Stream> void transferPath(Stream& s, HatchFields::Path& path) {
    s.bl(path.flags);
    if ((path.flags & HatchFields::Path::isPolyline) != 0) {
        s.b(path.bulges);
        s.b(path.closed);
        s.sizeBl(path.points, 128);
        for (auto& [point, bulge] : path.points) {
            s.rd2(point);
            if (path.bulges)
                s.bd(bulge);
        }
    } else {
        s.sizeBl(path.edges, 8);
        for (HatchFields::Edge& edge : path.edges)
            transferEdge(s, edge);
    }
    s.bl(path.boundaries);
}

template <class Stream> void transferPattern(Stream& s, HatchFields& f) {
    s.bd(f.angle);
    s.bd(f.scale);
    s.b(f.doubled);
    // The number is a short one.
    auto count = static_cast<std::uint16_t>(f.lines.size());
    s.bs(count);
    if constexpr (Stream::reading)
        f.lines.resize(count <= s.data.remaining() / 12 ? count : 0);
    for (HatchFields::Line& line : f.lines) {
        s.bd(line.angle);
        s.bd2(line.base);
        s.bd2(line.offset);
        auto dashes = static_cast<std::uint16_t>(line.dashes.size());
        s.bs(dashes);
        if constexpr (Stream::reading)
            line.dashes.resize(dashes <= s.data.remaining() / 2 ? dashes : 0);
        for (double& dash : line.dashes)
            s.bd(dash);
    }
}

} // namespace

template <class Stream> void transferFields(Stream& s, HatchFields& f) {
    if (s.since(Release::r2004))
        transferGradient(s, f);
    s.bd(f.elevation);
    s.bd3(f.extrusion);
    s.t(f.name);
    s.b(f.solid);
    s.b(f.associative);
    s.sizeBl(f.paths, 2 + 2 + 2);
    for (HatchFields::Path& path : f.paths)
        transferPath(s, path);
    s.bs(f.style);
    s.bs(f.patternType);
    if (!f.solid)
        transferPattern(s, f);
    bool derived = false;
    for (const HatchFields::Path& path : f.paths)
        derived = derived || (path.flags & HatchFields::Path::isDerived) != 0;
    if (derived)
        s.bd(f.pixelSize);
    s.sizeBl(f.seeds, 128);
    for (Point2& seed : f.seeds)
        s.rd2(seed);
    s.referencesToEnd(f.boundaries);
}

template <class Stream> void transferFields(Stream& s, ViewportFields& f) {
    s.bd3(f.center);
    s.bd(f.width);
    s.bd(f.height);
    if (s.since(Release::r2000)) {
        s.bd3(f.target);
        s.bd3(f.direction);
        for (double* number : {&f.twist, &f.viewHeight, &f.lens, &f.front, &f.back, &f.snapAngle})
            s.bd(*number);
        for (Point2* point : {&f.viewCenter, &f.snapBase, &f.snapSpacing, &f.gridSpacing})
            s.rd2(*point);
        s.bs(f.circleZoom);
        if (s.since(Release::r2007))
            s.bs(f.gridMajor);
        s.sizeOfItems(f.frozen);
        s.bl(f.status);
        s.t(f.styleSheet);
        s.rc(f.renderMode);
        s.b(f.ucsAtOrigin);
        s.b(f.ucsPerViewport);
        s.bd3(f.ucsOrigin);
        s.bd3(f.ucsX);
        s.bd3(f.ucsY);
        s.bd(f.ucsElevation);
        s.bs(f.orthographic);
        if (s.since(Release::r2004))
            s.bs(f.shadeMode);
    }
    if (s.since(Release::r2007)) {
        s.b(f.defaultLights);
        s.rc(f.lighting);
        s.bd(f.brightness);
        s.bd(f.contrast);
        s.cmc(f.ambient);
    }
    if (s.until(Release::r14)) {
        s.h(f.header);
        return;
    }
    for (HandleRef& layer : f.frozen)
        s.h(layer);
    s.h(f.boundary);
    if (s.until(Release::r2000))
        s.h(f.header);
    s.h(f.namedUcs);
    s.h(f.baseUcs);
    if (s.since(Release::r2007))
        for (HandleRef* reference : {&f.background, &f.visualStyle, &f.shadeStyle, &f.sun})
            s.h(*reference);
}

template <class Stream> void transferFields(Stream& s, ViewFields& f) {
    s.bd(f.height);
    s.bd(f.width);
    s.rd2(f.center);
    s.bd3(f.target);
    s.bd3(f.direction);
    for (double* number : {&f.twist, &f.lens, &f.front, &f.back})
        s.bd(*number);
    for (bool& flag : f.mode)
        s.b(flag);
    if (s.since(Release::r2000))
        s.rc(f.renderMode);
    if (s.since(Release::r2007)) {
        s.b(f.defaultLights);
        s.rc(f.lighting);
        s.bd(f.brightness);
        s.bd(f.contrast);
        s.cmc(f.ambient);
    }
    s.b(f.inPaperSpace);
    if (s.since(Release::r2000))
        s.b(f.hasUcs);
    if (f.hasUcs) {
        for (Point3* point : {&f.ucsOrigin, &f.ucsX, &f.ucsY})
            s.bd3(*point);
        s.bd(f.ucsElevation);
        s.bs(f.orthographic);
    }
    if (s.since(Release::r2007)) {
        s.b(f.cameraPlotted);
        for (HandleRef* reference : {&f.background, &f.visualStyle, &f.sun})
            s.h(*reference);
    }
    if (f.hasUcs) {
        s.h(f.baseUcs);
        s.h(f.namedUcs);
    }
    if (s.since(Release::r2007))
        s.h(f.liveSection);
}

namespace {

/// From 2013 on flags tell the scenario, and the number itself is always the same.
template <class Stream> void transferScenario(Stream& s, SplineFields& f) {
    constexpr std::uint32_t fitMethod = 1, usualFitFlags = 9, customKnots = 15;
    if (!s.since(Release::r2013)) {
        s.bl(f.scenario);
        return;
    }
    if constexpr (Stream::writing) {
        if (f.flags == 0 && f.parametrization == 0) {
            const bool fits = f.scenario == SplineFields::byFitPoints;
            f.flags = fits ? usualFitFlags : 0;
            f.parametrization = fits ? 0 : customKnots;
        }
    }
    std::uint32_t stored = SplineFields::byControlPoints;
    s.bl(stored);
    s.bl(f.flags);
    s.bl(f.parametrization);
    if constexpr (Stream::reading) {
        f.scenario = (f.flags & fitMethod) != 0 ? SplineFields::byFitPoints : stored;
        if (f.parametrization == customKnots)
            f.scenario = SplineFields::byControlPoints;
    }
}

} // namespace

template <class Stream> void transferFields(Stream& s, SplineFields& f) {
    transferScenario(s, f);
    s.bl(f.degree);
    if (f.scenario == SplineFields::byFitPoints) {
        s.bd(f.fitTolerance);
        s.bd3(f.startTangent);
        s.bd3(f.endTangent);
        s.sizeBl(f.fitPoints, 6);
    } else {
        s.b(f.rational);
        s.b(f.closed);
        s.b(f.periodic);
        s.bd(f.knotTolerance);
        s.bd(f.controlTolerance);
        s.sizeBl(f.knots, 2);
        s.sizeBl(f.controlPoints, 6);
        s.b(f.weighted);
    }
    for (double& knot : f.knots)
        s.bd(knot);
    for (auto& [point, weight] : f.controlPoints) {
        s.bd3(point);
        if (f.weighted)
            s.bd(weight);
    }
    for (Point3& point : f.fitPoints)
        s.bd3(point);
}

template <class Stream> void transferFields(Stream& s, LeaderFields& f) {
    s.b(f.unknown1);
    s.bs(f.annotation);
    s.bs(f.path);
    s.sizeBl(f.points, 6);
    for (Point3& point : f.points)
        s.bd3(point);
    for (Point3* point : {&f.origin, &f.extrusion, &f.xDirection, &f.blockOffset})
        s.bd3(*point);
    if (s.since(Release::r14))
        s.bd3(f.endOffset);
    if (s.until(Release::r14))
        s.bd(f.gap);
    if (s.until(Release::r2007)) {
        s.bd(f.boxHeight);
        s.bd(f.boxWidth);
    }
    s.b(f.hook);
    s.b(f.arrow);
    if (s.until(Release::r14)) {
        s.bs(f.arrowType);
        s.bd(f.arrowSize);
        s.b(f.unknown2);
        s.b(f.unknown3);
        s.bs(f.unknown4);
        s.bs(f.color);
    } else {
        s.bs(f.unknown4);
    }
    s.b(f.unknown5);
    s.b(f.unknown6);
    s.h(f.annotationObject);
    s.h(f.style);
}

template <class Stream> void transferFields(Stream& s, ToleranceFields& f) {
    if (s.until(Release::r14)) {
        s.bs(f.unknown);
        s.bd(f.height);
        s.bd(f.gap);
    }
    s.bd3(f.insertion);
    s.bd3(f.xDirection);
    s.bd3(f.extrusion);
    s.t(f.text);
    s.h(f.style);
}

template <class Stream> void transferFields(Stream& s, ImageFields& f) {
    constexpr std::uint16_t rectangle = 1;
    s.bl(f.version);
    for (Point3& point : f.frame)
        s.bd3(point);
    s.rd2(f.size);
    s.bs(f.display);
    s.b(f.clipped);
    s.rc(f.brightness);
    s.rc(f.contrast);
    s.rc(f.fade);
    if (s.since(Release::r2010))
        s.b(f.clipOutside);
    s.bs(f.boundaryType);
    if (f.boundaryType == rectangle)
        f.boundary.resize(2);
    else
        s.sizeBl(f.boundary, 128);
    for (Point2& point : f.boundary)
        s.rd2(point);
    s.h(f.definition);
    s.h(f.reactor);
}

DWG_INSTANTIATE_FIELDS(HatchFields);
DWG_INSTANTIATE_FIELDS(ViewportFields);
DWG_INSTANTIATE_FIELDS(ViewFields);
DWG_INSTANTIATE_FIELDS(SplineFields);
DWG_INSTANTIATE_FIELDS(LeaderFields);
DWG_INSTANTIATE_FIELDS(ToleranceFields);
DWG_INSTANTIATE_FIELDS(ImageFields);

} // namespace dwg::recoding
