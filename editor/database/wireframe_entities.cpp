#include "editor/database/text_lines.h"
#include "editor/database/wireframe_builder.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace editor {

namespace {

constexpr double fullTurn = 2 * std::numbers::pi;
constexpr int piecesOfTurn = 72;
/// Width of an average letter to its height.
constexpr double letterWidth = 0.9;

/// The angle from start on, counter-clockwise, to end; a whole turn for equal ones.
double sweepOf(double start, double end) {
    double sweep = std::fmod(end - start, fullTurn);
    if (sweep <= 0)
        sweep += fullTurn;
    return sweep;
}

} // namespace

void WireframeBuilder::arc(const Transform& to, AcGePoint3d center, const AcGeVector3d& xAxis,
                           const AcGeVector3d& yAxis, double start, double sweep,
                           std::vector<AcGePoint3d>& points) const {
    if (!std::isfinite(start) || !std::isfinite(sweep))
        return;
    const int pieces = std::max(2, static_cast<int>(std::ceil(std::abs(sweep) / fullTurn * piecesOfTurn)));
    for (int i = 0; i <= pieces; ++i) {
        const double angle = start + sweep * i / pieces;
        points.push_back(to.point(center + xAxis * std::cos(angle) + yAxis * std::sin(angle)));
    }
}

void WireframeBuilder::piece(const Transform& to, dwg::Point2 from, dwg::Point2 end, double elevation, double bulge,
                             std::vector<AcGePoint3d>& points) const {
    const double dx = end.x - from.x, dy = end.y - from.y;
    const double chord = std::hypot(dx, dy);
    if (bulge == 0 || chord == 0 || !std::isfinite(bulge)) {
        points.push_back(to.point({end.x, end.y, elevation}));
        return;
    }
    // The bulge is the tangent of a quarter of the arc's angle, positive for a counter-clockwise arc.
    const double sweep = 4 * std::atan(bulge);
    const double distance = (1 - bulge * bulge) / (4 * bulge);
    const AcGePoint3d center{(from.x + end.x) / 2 - dy * distance, (from.y + end.y) / 2 + dx * distance, elevation};
    const double radius = std::hypot(from.x - center.x, from.y - center.y);
    const double start = std::atan2(from.y - center.y, from.x - center.x);
    std::vector<AcGePoint3d> run;
    arc(to, center, {radius, 0, 0}, {0, radius, 0}, start, sweep, run);
    if (!run.empty())
        points.insert(points.end(), run.begin() + 1, run.end());
}

void WireframeBuilder::draw(const dwg::Line& line, const Transform& to) {
    stroke({to.point(toPoint(line.start)), to.point(toPoint(line.end))});
}

void WireframeBuilder::draw(const dwg::Circle& circle, const Transform& to) {
    std::vector<AcGePoint3d> points;
    arc(to.after(planeToWorld(circle.extrusion)), toPoint(circle.center), {circle.radius, 0, 0}, {0, circle.radius, 0},
        0, fullTurn, points);
    stroke(std::move(points));
}

void WireframeBuilder::draw(const dwg::Arc& body, const Transform& to) {
    std::vector<AcGePoint3d> points;
    arc(to.after(planeToWorld(body.extrusion)), toPoint(body.center), {body.radius, 0, 0}, {0, body.radius, 0},
        body.startAngle, sweepOf(body.startAngle, body.endAngle), points);
    stroke(std::move(points));
}

void WireframeBuilder::draw(const dwg::Ellipse& ellipse, const Transform& to) {
    const AcGeVector3d major = toVector(ellipse.majorAxis);
    const AcGeVector3d minor = toVector(ellipse.extrusion).normal().crossProduct(major) * ellipse.axisRatio;
    std::vector<AcGePoint3d> points;
    arc(to, toPoint(ellipse.center), major, minor, ellipse.startAngle, sweepOf(ellipse.startAngle, ellipse.endAngle),
        points);
    stroke(std::move(points));
}

void WireframeBuilder::draw(const dwg::PointEntity& point, const Transform& to) {
    stroke({to.point(toPoint(point.position))});
}

void WireframeBuilder::draw(const dwg::Solid& solid, const Transform& to) {
    const Transform plane = to.after(planeToWorld(solid.extrusion));
    std::vector<AcGePoint3d> points;
    for (const std::size_t corner : {0u, 1u, 3u, 2u, 0u})
        points.push_back(plane.point({solid.corners[corner].x, solid.corners[corner].y, solid.elevation}));
    stroke(std::move(points), true);
}

void WireframeBuilder::draw(const dwg::Face3d& face, const Transform& to) {
    for (std::size_t edge = 0; edge < face.corners.size(); ++edge) {
        if ((face.invisibleEdges >> edge & 1) == 0)
            stroke({to.point(toPoint(face.corners[edge])),
                    to.point(toPoint(face.corners[(edge + 1) % face.corners.size()]))});
    }
}

void WireframeBuilder::draw(const dwg::LightweightPolyline& polyline, const Transform& to) {
    if (polyline.points.empty())
        return;
    const Transform plane = to.after(planeToWorld(polyline.extrusion));
    const std::size_t count = polyline.points.size();
    std::vector<AcGePoint3d> points{plane.point({polyline.points[0].x, polyline.points[0].y, polyline.elevation})};
    const bool isClosed = (polyline.flags & dwg::LightweightPolyline::closed) != 0;
    for (std::size_t i = 0; i + (isClosed ? 0 : 1) < count; ++i) {
        const double bulge = i < polyline.bulges.size() ? polyline.bulges[i] : 0;
        piece(plane, polyline.points[i], polyline.points[(i + 1) % count], polyline.elevation, bulge, points);
    }
    stroke(std::move(points));
}

void WireframeBuilder::draw(const dwg::Polyline2d& polyline, const Transform& to) {
    constexpr std::uint8_t frameOfCurve = 16;
    const Transform plane = to.after(planeToWorld(polyline.extrusion));
    std::vector<const dwg::Vertex2d*> vertices;
    for (const dwg::Handle part : polyline.vertices.parts) {
        const auto* const vertex = database.drawing.body<dwg::Vertex2d>({0, part});
        if (vertex != nullptr && (vertex->flags & frameOfCurve) == 0)
            vertices.push_back(vertex);
    }
    if (vertices.empty())
        return;
    const auto flat = [](const dwg::Vertex2d* vertex) { return dwg::Point2{vertex->position.x, vertex->position.y}; };
    std::vector<AcGePoint3d> points{plane.point({flat(vertices[0]).x, flat(vertices[0]).y, polyline.elevation})};
    const bool isClosed = (polyline.flags & 1) != 0;
    for (std::size_t i = 0; i + (isClosed ? 0 : 1) < vertices.size(); ++i)
        piece(plane, flat(vertices[i]), flat(vertices[(i + 1) % vertices.size()]), polyline.elevation,
              vertices[i]->bulge, points);
    stroke(std::move(points));
}

void WireframeBuilder::draw(const dwg::Polyline3d& polyline, const Transform& to) {
    constexpr std::uint8_t frameOfCurve = 16;
    std::vector<AcGePoint3d> points;
    for (const dwg::Handle part : polyline.vertices.parts) {
        const auto* const vertex = database.drawing.body<dwg::Vertex3d>({0, part});
        if (vertex != nullptr && (vertex->flags & frameOfCurve) == 0)
            points.push_back(to.point(toPoint(vertex->position)));
    }
    if ((polyline.closeFlags & 1) != 0 && points.size() > 1)
        points.push_back(points.front());
    stroke(std::move(points));
}

void WireframeBuilder::draw(const dwg::TextFields& fields, const std::wstring& content, const Transform& to) {
    constexpr std::uint16_t backwards = 2, upsideDown = 4;
    const Transform plane = to.after(planeToWorld(fields.extrusion))
                                .moved({fields.insertion.x, fields.insertion.y, fields.elevation})
                                .turned(fields.rotation);
    const double across = fields.height * letterWidth * fields.widthFactor;
    const AcGeVector3d along = plane.vector({(fields.generation & backwards) != 0 ? -across : across, 0, 0});
    const double height = (fields.generation & upsideDown) != 0 ? -fields.height : fields.height;
    const AcGeVector3d up = plane.vector({height * std::tan(fields.oblique), height, 0});
    text(plainText(content), plane.origin, along, up);
}

void WireframeBuilder::draw(const dwg::MultilineText& body, const Transform& to) {
    constexpr double linePitch = 5.0 / 3;
    const double across = body.height * letterWidth;
    const bool wraps = body.rectangleWidth > across && across > 0;
    const auto limit = wraps ? static_cast<std::size_t>(std::min(body.rectangleWidth / across, 10000.0)) : 0;
    const std::vector<std::wstring> lines = linesOfParagraph(body.value, limit);
    const AcGeVector3d right = toVector(body.xDirection).normal();
    const AcGeVector3d upwards = toVector(body.extrusion).normal().crossProduct(right);
    const double pitch = body.height * linePitch * body.lineSpacingFactor;
    const double whole = body.height + pitch * static_cast<double>(lines.size() - 1);
    // Attachments 1 to 9 go by rows from the top left.
    const int attachment = body.attachment >= 1 && body.attachment <= 9 ? body.attachment - 1 : 0;
    const int row = attachment / 3;
    const double drop = whole * row / 2;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const double width = across * static_cast<double>(lines[i].size());
        const double left = -width * (attachment % 3) / 2;
        const double baseline = drop - body.height - pitch * static_cast<double>(i);
        const AcGePoint3d position = toPoint(body.insertion) + right * left + upwards * baseline;
        text(lines[i], to.point(position), to.vector(right * across), to.vector(upwards * body.height));
    }
}

} // namespace editor
