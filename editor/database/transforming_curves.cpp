#include "editor/database/transforming_curves.h"

#include "editor/database/flat_map.h"

namespace editor {

namespace {

dwg::Point2 direction(const FlatMap& flat, const dwg::Point2& own) {
    const AcGeVector3d turned = flat.direction(own.x, own.y);
    return {turned.x, turned.y};
}

void carryEdge(dwg::Hatch::Edge& edge, const FlatMap& flat, double elevation) {
    const auto move = [&](dwg::Point2& point) { point = flat.point(point, elevation); };
    switch (edge.kind) {
    case dwg::Hatch::Edge::line:
        move(edge.first);
        move(edge.second);
        break;
    case dwg::Hatch::Edge::arc: {
        move(edge.first);
        edge.radiusOrRatio *= flat.factor();
        const double turn = edge.counterclockwise ? flat.turn() : -flat.turn();
        edge.startAngle += turn;
        edge.endAngle += turn;
        break;
    }
    case dwg::Hatch::Edge::ellipse:
        move(edge.first);
        edge.second = direction(flat, edge.second);
        break;
    default:
        for (dwg::Hatch::ControlPoint& control : edge.controlPoints)
            move(control.point);
        for (dwg::Point2& point : edge.fitPoints)
            move(point);
        edge.startTangent = direction(flat, edge.startTangent);
        edge.endTangent = direction(flat, edge.endTangent);
    }
}

} // namespace

bool carryHatch(dwg::Hatch& hatch, const Transform& by) {
    const FlatMap flat(by, hatch.extrusion);
    if (!flat.isUsable() || !flat.isSimilarity())
        return false;
    const double elevation = hatch.elevation;
    hatch.elevation = flat.elevation({}, elevation);
    hatch.extrusion = flat.extrusion();
    hatch.associative = false;
    for (dwg::Hatch::Path& path : hatch.paths) {
        for (dwg::Hatch::Vertex& vertex : path.vertices)
            vertex.point = flat.point(vertex.point, elevation);
        for (dwg::Hatch::Edge& edge : path.edges)
            carryEdge(edge, flat, elevation);
        path.boundaries.clear();
    }
    for (dwg::Hatch::PatternLine& line : hatch.lines) {
        line.angle += flat.turn();
        line.base = flat.point(line.base, elevation);
        line.offset = direction(flat, line.offset);
        for (double& dash : line.dashes)
            dash *= flat.factor();
    }
    for (dwg::Point2& seed : hatch.seeds)
        seed = flat.point(seed, elevation);
    hatch.angle += flat.turn();
    hatch.scale *= flat.factor();
    hatch.pixelSize *= flat.factor();
    hatch.gradientAngle += flat.turn();
    return true;
}

bool carrySpline(dwg::Spline& spline, const Transform& by) {
    for (dwg::Spline::ControlPoint& control : spline.controlPoints)
        control.point = movedPoint(by, control.point);
    for (dwg::Point3& point : spline.fitPoints)
        point = movedPoint(by, point);
    for (dwg::Point3* const tangent : {&spline.startTangent, &spline.endTangent}) {
        const AcGeVector3d moved = by.vector(toVector(*tangent));
        if (moved.length() > 0)
            *tangent = fromVector(unit(moved));
    }
    return true;
}

bool carryLeader(dwg::Leader& leader, const Transform& by) {
    const AcGeVector3d x = toVector(leader.xDirection);
    const AcGeVector3d y = toVector(leader.extrusion).crossProduct(x);
    const AcGeVector3d along = by.vector(x), up = by.vector(y);
    const AcGeVector3d cross = along.crossProduct(up);
    if (!(cross.length() > 0) || !isNear(along.length() * y.length(), up.length() * x.length()) ||
        !isOrthogonal(along, up))
        return false;
    for (dwg::Point3& point : leader.points)
        point = movedPoint(by, point);
    leader.origin = movedPoint(by, leader.origin);
    for (dwg::Point3* const offset : {&leader.blockOffset, &leader.endOffset})
        *offset = fromVector(by.vector(toVector(*offset)));
    const double factor = along.length() / x.length();
    leader.boxHeight *= factor;
    leader.boxWidth *= factor;
    leader.xDirection = fromVector(unit(along));
    leader.extrusion = fromVector(unit(cross));
    constexpr std::uint16_t none = 3;
    leader.annotation = none;
    leader.annotationObject.value = 0;
    return true;
}

} // namespace editor
