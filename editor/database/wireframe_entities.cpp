#include "editor/database/curves.h"
#include "editor/database/wireframe_builder.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <numbers>

namespace editor {

namespace {

constexpr double fullTurn = 2 * std::numbers::pi;
constexpr int piecesOfTurn = 72;
constexpr int frameOfCurve = 16; ///< bit of a vertex

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

void WireframeBuilder::wide(const Transform& to, dwg::Point2 from, dwg::Point2 end, double elevation, double bulge,
                            double startWidth, double endWidth) {
    if (!(startWidth > 0) && !(endWidth > 0))
        return;
    std::vector<AcGePoint3d> run{{from.x, from.y, elevation}};
    piece({}, from, end, elevation, bulge, run);
    std::vector<AcGePoint3d> outline, back;
    for (std::size_t i = 0; i < run.size(); ++i) {
        const AcGeVector3d along = (run[std::min(i + 1, run.size() - 1)] - run[i == 0 ? 0 : i - 1]).normal();
        const double part = static_cast<double>(i) / static_cast<double>(run.size() - 1);
        const AcGeVector3d aside =
            AcGeVector3d{-along.y, along.x, 0} * ((startWidth + (endWidth - startWidth) * part) / 2);
        outline.push_back(to.point(run[i] + aside));
        back.push_back(to.point(run[i] + aside * -1));
    }
    outline.insert(outline.end(), back.rbegin(), back.rend());
    outline.push_back(outline.front());
    stroke(std::move(outline), true);
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
        const dwg::Point2 &from = polyline.points[i], &end = polyline.points[(i + 1) % count];
        piece(plane, from, end, polyline.elevation, bulge, points);
        const bool hasOwnWidth = i < polyline.widths.size();
        wide(plane, from, end, polyline.elevation, bulge,
             hasOwnWidth ? polyline.widths[i].start : polyline.constantWidth,
             hasOwnWidth ? polyline.widths[i].end : polyline.constantWidth);
    }
    stroke(std::move(points));
}

void WireframeBuilder::draw(const dwg::Polyline2d& polyline, const Transform& to) {
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
    for (std::size_t i = 0; i + (isClosed ? 0 : 1) < vertices.size(); ++i) {
        const dwg::Vertex2d* const next = vertices[(i + 1) % vertices.size()];
        piece(plane, flat(vertices[i]), flat(next), polyline.elevation, vertices[i]->bulge, points);
        wide(plane, flat(vertices[i]), flat(next), polyline.elevation, vertices[i]->bulge, vertices[i]->startWidth,
             vertices[i]->endWidth);
    }
    stroke(std::move(points));
}

void WireframeBuilder::draw(const dwg::Polyline3d& polyline, const Transform& to) {
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

// Faces name their corners by number, from 1; a negative one begins an edge that isn't shown.
void WireframeBuilder::draw(const dwg::PolyfaceMesh& mesh, const Transform& to) {
    std::vector<AcGePoint3d> corners;
    for (const dwg::Handle part : mesh.vertices.parts) {
        if (const auto* const vertex = database.drawing.body<dwg::Vertex3d>({0, part}))
            corners.push_back(to.point(toPoint(vertex->position)));
    }
    for (const dwg::Handle part : mesh.vertices.parts) {
        const auto* const face = database.drawing.body<dwg::PolyfaceFace>({0, part});
        if (face == nullptr)
            continue;
        const auto count = static_cast<std::size_t>(std::find(face->vertices.begin(), face->vertices.end(), 0) -
                                                    face->vertices.begin());
        const auto cornerOf = [&](std::size_t index) {
            return static_cast<std::size_t>(std::abs(static_cast<int>(face->vertices[index % count]))) - 1;
        };
        for (std::size_t i = 0; i < count; ++i) {
            if (face->vertices[i] > 0 && cornerOf(i) < corners.size() && cornerOf(i + 1) < corners.size())
                stroke({corners[cornerOf(i)], corners[cornerOf(i + 1)]});
        }
    }
}

void WireframeBuilder::draw(const dwg::PolygonMesh& mesh, const Transform& to) {
    constexpr std::uint16_t closedInRows = 1, closedInColumns = 32;
    std::vector<AcGePoint3d> grid;
    for (const dwg::Handle part : mesh.vertices.parts) {
        const auto* const vertex = database.drawing.body<dwg::Vertex3d>({0, part});
        if (vertex != nullptr && (vertex->flags & frameOfCurve) == 0)
            grid.push_back(to.point(toPoint(vertex->position)));
    }
    const bool isSmooth = mesh.curveType != 0 && mesh.rowDensity > 0 && mesh.columnDensity > 0;
    const std::size_t rows = isSmooth ? mesh.rowDensity : mesh.rows;
    const std::size_t columns = isSmooth ? mesh.columnDensity : mesh.columns;
    if (rows == 0 || columns == 0 || grid.size() / rows < columns)
        return;
    const auto run = [&](std::size_t first, std::size_t step, std::size_t count, bool isClosed) {
        std::vector<AcGePoint3d> points;
        for (std::size_t i = 0; i < count; ++i)
            points.push_back(grid[first + i * step]);
        if (isClosed)
            points.push_back(points.front());
        stroke(std::move(points));
    };
    for (std::size_t row = 0; row < rows; ++row)
        run(row * columns, 1, columns, (mesh.flags & closedInColumns) != 0);
    for (std::size_t column = 0; column < columns; ++column)
        run(column, columns, rows, (mesh.flags & closedInRows) != 0);
}

void WireframeBuilder::draw(const dwg::Spline& body, const Transform& to) {
    std::vector<AcGePoint3d> points;
    if (!body.controlPoints.empty()) {
        BSpline spline{body.degree, body.knots, {}};
        for (const auto& control : body.controlPoints) {
            spline.controlPoints.push_back(toPoint(control.point));
            if (body.weighted)
                spline.weights.push_back(control.weight);
        }
        points = pointsOfSpline(spline);
    } else {
        std::ranges::transform(body.fitPoints, std::back_inserter(points), toPoint);
        points = pointsThrough(points, body.closed);
    }
    for (AcGePoint3d& point : points)
        point = to.point(point);
    stroke(std::move(points));
}

void WireframeBuilder::draw(const dwg::Leader& leader, const Transform& to) {
    std::vector<AcGePoint3d> points;
    std::ranges::transform(leader.points, std::back_inserter(points), toPoint);
    if (points.size() < 2)
        return;
    const AcGePoint3d tip = points[0];
    const AcGeVector3d away = points[1] - tip;
    const double scale = database.header.DIMSCALE > 0 ? database.header.DIMSCALE : 1;
    const double size = database.header.DIMASZ * scale;
    if (leader.path == 1)
        points = pointsThrough(points);
    for (AcGePoint3d& point : points)
        point = to.point(point);
    stroke(std::move(points));
    if (!leader.arrow || !(size > 0) || away.length() < 2 * size)
        return;
    constexpr double halfWidth = 1.0 / 6;
    const AcGeVector3d along = away.normal() * size;
    const AcGeVector3d aside = toVector(leader.extrusion).normal().crossProduct(along) * halfWidth;
    const AcGePoint3d foot = tip + along;
    stroke({to.point(tip), to.point(foot + aside), to.point(foot + aside * -1), to.point(tip)}, true);
}

void WireframeBuilder::drawEndless(const dwg::Ray& ray, const Transform& to, bool both) {
    const AcGePoint3d first = toPoint(ray.point);
    const std::size_t before = result.strokes.size();
    stroke({to.point(first), to.point(first + toVector(ray.direction))});
    if (result.strokes.size() == before)
        return;
    result.strokes.back().beyondEnd = true;
    result.strokes.back().beyondStart = both;
}

} // namespace editor
