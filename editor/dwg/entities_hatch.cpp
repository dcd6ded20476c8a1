#include "editor/dwg/objects_stream.h"

#include <algorithm>

/// Hatches.
namespace dwg {

namespace {

// The least bits that an element takes, for counts that can't be.
constexpr std::size_t leastNumber = 2, leastRawPoint = 128, leastGradientColor = 14, leastEdge = 8, leastPath = 6,
                      leastPatternLine = 12;

template <class Stream> void transferGradient(Stream& s, Hatch& body) {
    s.bl(body.gradient);
    s.bl(body.reserved);
    s.bd(body.gradientAngle);
    s.bd(body.gradientShift);
    s.bl(body.singleColor);
    s.bd(body.gradientTint);
    s.sizeBl(body.gradientColors, leastGradientColor);
    for (Hatch::GradientColor& one : body.gradientColors) {
        s.bd(one.shift);
        s.cmc(one.color);
    }
    s.t(body.gradientName);
}

template <class Stream> void transferSplineEdge(Stream& s, Hatch::Edge& edge) {
    s.bl(edge.degree);
    s.b(edge.rational);
    s.b(edge.periodic);
    s.sizeBl(edge.knots, leastNumber);
    s.sizeBl(edge.controlPoints, leastRawPoint);
    for (double& knot : edge.knots)
        s.bd(knot);
    for (Hatch::ControlPoint& control : edge.controlPoints) {
        s.rd2(control.point);
        if (edge.rational)
            s.bd(control.weight);
    }
    if (!s.since(Release::r2010))
        return;
    s.sizeBl(edge.fitPoints, leastRawPoint);
    for (Point2& point : edge.fitPoints)
        s.rd2(point);
    if (!edge.fitPoints.empty()) {
        s.rd2(edge.startTangent);
        s.rd2(edge.endTangent);
    }
}

template <class Stream> void transferTurn(Stream& s, Hatch::Edge& edge) {
    s.bd(edge.radiusOrRatio);
    s.bd(edge.startAngle);
    s.bd(edge.endAngle);
    s.b(edge.counterclockwise);
}

template <class Stream> void transferEdge(Stream& s, Hatch::Edge& edge) {
    s.rc(edge.kind);
    switch (edge.kind) {
    case Hatch::Edge::line:
        s.rd2(edge.first);
        s.rd2(edge.second);
        break;
    case Hatch::Edge::arc:
        s.rd2(edge.first);
        transferTurn(s, edge);
        break;
    case Hatch::Edge::ellipse:
        s.rd2(edge.first);
        s.rd2(edge.second);
        transferTurn(s, edge);
        break;
    case Hatch::Edge::spline:
        transferSplineEdge(s, edge);
        break;
    default:
        if constexpr (Stream::reading)
            s.data.fail();
    }
}

template <class Stream> void transferPath(Stream& s, Hatch::Path& path) {
    s.bl(path.flags);
    if ((path.flags & Hatch::Path::isPolyline) != 0) {
        s.b(path.hasBulges);
        s.b(path.closed);
        s.sizeBl(path.vertices, leastRawPoint);
        for (Hatch::Vertex& vertex : path.vertices) {
            s.rd2(vertex.point);
            if (path.hasBulges)
                s.bd(vertex.bulge);
        }
    } else {
        s.sizeBl(path.edges, leastEdge);
        for (Hatch::Edge& edge : path.edges)
            transferEdge(s, edge);
    }
    s.sizeOfItems(path.boundaries);
}

template <class Stream> void transferPattern(Stream& s, Hatch& body) {
    s.bd(body.angle);
    s.bd(body.scale);
    s.b(body.doubled);
    s.sizeBs(body.lines, leastPatternLine);
    for (Hatch::PatternLine& line : body.lines) {
        s.bd(line.angle);
        s.bd2(line.base);
        s.bd2(line.offset);
        s.sizeBs(line.dashes, leastNumber);
        for (double& dash : line.dashes)
            s.bd(dash);
    }
}

bool isDerived(const Hatch::Path& path) {
    return (path.flags & Hatch::Path::isDerived) != 0;
}

} // namespace

template <class Stream> void transfer(Stream& s, Hatch& body, std::uint16_t) {
    if (s.since(Release::r2004))
        transferGradient(s, body);
    s.bd(body.elevation);
    s.bd3(body.extrusion);
    s.t(body.name);
    s.b(body.solid);
    s.b(body.associative);
    s.sizeBl(body.paths, leastPath);
    for (Hatch::Path& path : body.paths)
        transferPath(s, path);
    s.bs(body.style);
    s.bs(body.patternType);
    if (!body.solid)
        transferPattern(s, body);
    if (std::ranges::any_of(body.paths, isDerived))
        s.bd(body.pixelSize);
    s.sizeBl(body.seeds, leastRawPoint);
    for (Point2& seed : body.seeds)
        s.rd2(seed);
    for (Hatch::Path& path : body.paths) {
        for (HandleRef& boundary : path.boundaries)
            s.h(boundary);
    }
}

DWG_INSTANTIATE_TRANSFER(Hatch);

} // namespace dwg
