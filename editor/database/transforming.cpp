#include "editor/database/transforming.h"

#include "editor/database/flat_map.h"
#include "editor/database/object_state.h"
#include "editor/database/transforming_curves.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace editor {

using namespace dwg::object_type;

namespace {

/// The ellipse of two conjugate radii; `start` and `end` are angles from the first one.
std::optional<dwg::Ellipse> ellipseOf(const AcGePoint3d& center, const AcGeVector3d& first, const AcGeVector3d& second,
                                      double start, double end) {
    const auto at = [&](double angle) {
        const double cosine = std::cos(angle), sine = std::sin(angle);
        return AcGeVector3d{first.x * cosine + second.x * sine, first.y * cosine + second.y * sine,
                            first.z * cosine + second.z * sine};
    };
    const AcGeVector3d cross = first.crossProduct(second);
    if (!(cross.length() > 0))
        return std::nullopt;
    double toMajor = 0;
    if (!isOrthogonal(first, second) || first.length() < second.length() * (1 - tolerance))
        toMajor = std::atan2(2 * first.dotProduct(second), first.dotProduct(first) - second.dotProduct(second)) / 2;
    const AcGeVector3d major = at(toMajor), minor = at(toMajor + fullTurn / 4);
    dwg::Ellipse ellipse;
    ellipse.center = fromPoint(center);
    ellipse.majorAxis = fromVector(major);
    ellipse.extrusion = fromVector(unit(cross));
    ellipse.axisRatio = std::min(1.0, minor.length() / major.length());
    const bool whole = isNear(std::abs(end - start), fullTurn);
    ellipse.startAngle = whole ? 0 : std::remainder(start - toMajor, fullTurn);
    if (ellipse.startAngle < 0)
        ellipse.startAngle += fullTurn;
    ellipse.endAngle = ellipse.startAngle + (whole ? fullTurn : end > start ? end - start : end - start + fullTurn);
    return ellipse;
}

bool carry(dwg::Object&, dwg::Line& line, const Transform& by) {
    const AcGeVector3d extrusion = by.vector(toVector(line.extrusion));
    if (!(extrusion.length() > 0))
        return false;
    line.start = movedPoint(by, line.start);
    line.end = movedPoint(by, line.end);
    line.thickness *= extrusion.length();
    line.extrusion = fromVector(unit(extrusion));
    return true;
}

bool carry(dwg::Object&, dwg::PointEntity& point, const Transform& by) {
    const AcGeVector3d extrusion = by.vector(toVector(point.extrusion));
    if (!(extrusion.length() > 0))
        return false;
    point.position = movedPoint(by, point.position);
    point.thickness *= extrusion.length();
    point.extrusion = fromVector(unit(extrusion));
    return true;
}

/// Circles and arcs alike: true where the entity stays what it is.
template <class Round> bool carryRound(Round& round, const FlatMap& flat) {
    if (!flat.isSimilarity())
        return false;
    round.center = flat.point(round.center);
    round.radius *= flat.factor();
    round.thickness = flat.thickness(round.thickness);
    round.extrusion = flat.extrusion();
    return true;
}

template <class Round>
bool stretchRound(dwg::Object& object, const Round& round, const FlatMap& flat, double start, double end) {
    auto stretched = ellipseOf(flat.worldPoint(round.center), flat.worldX() * round.radius,
                               flat.worldY() * round.radius, start, end);
    // An ellipse has no thickness.
    if (!stretched || round.thickness != 0)
        return false;
    object.type = ellipse;
    object.body = *stretched;
    return true;
}

bool carry(dwg::Object& object, dwg::Circle& circle, const Transform& by) {
    const FlatMap flat(by, circle.extrusion);
    if (!flat.isUsable())
        return false;
    return carryRound(circle, flat) || stretchRound(object, dwg::Circle(circle), flat, 0, fullTurn);
}

bool carry(dwg::Object& object, dwg::Arc& arc, const Transform& by) {
    const FlatMap flat(by, arc.extrusion);
    if (!flat.isUsable())
        return false;
    if (!carryRound(arc, flat))
        return stretchRound(object, dwg::Arc(arc), flat, arc.startAngle, arc.endAngle);
    const auto turned = [&](double angle) {
        const double sum = std::fmod(angle + flat.turn(), fullTurn);
        return sum < 0 ? sum + fullTurn : sum;
    };
    arc.startAngle = turned(arc.startAngle);
    arc.endAngle = turned(arc.endAngle);
    return true;
}

bool carry(dwg::Object&, dwg::Ellipse& ellipse, const Transform& by) {
    const AcGeVector3d major = toVector(ellipse.majorAxis);
    const AcGeVector3d minor = toVector(ellipse.extrusion).normal().crossProduct(major) * ellipse.axisRatio;
    const auto moved = ellipseOf(by.point(toPoint(ellipse.center)), by.vector(major), by.vector(minor),
                                 ellipse.startAngle, ellipse.endAngle);
    if (!moved)
        return false;
    ellipse = *moved;
    return true;
}

bool carry(dwg::Object&, dwg::Solid& solid, const Transform& by) {
    const FlatMap flat(by, solid.extrusion);
    if (!flat.isUsable())
        return false;
    const double elevation = solid.elevation;
    solid.elevation = flat.elevation(solid.corners[0], elevation);
    for (dwg::Point2& corner : solid.corners)
        corner = flat.point(corner, elevation);
    solid.thickness = flat.thickness(solid.thickness);
    solid.extrusion = flat.extrusion();
    return true;
}

bool carry(dwg::Object&, dwg::Face3d& face, const Transform& by) {
    for (dwg::Point3& corner : face.corners)
        corner = movedPoint(by, corner);
    return true;
}

bool carry(dwg::Object&, dwg::Ray& ray, const Transform& by) {
    const AcGeVector3d direction = by.vector(toVector(ray.direction));
    if (!(direction.length() > 0))
        return false;
    ray.point = movedPoint(by, ray.point);
    ray.direction = fromVector(unit(direction));
    return true;
}

bool carry(dwg::Object&, dwg::LightweightPolyline& polyline, const Transform& by) {
    const FlatMap flat(by, polyline.extrusion);
    const auto isSet = [](double value) { return value != 0; };
    const bool isRound = std::ranges::any_of(polyline.bulges, isSet) || polyline.constantWidth != 0 ||
                         std::ranges::any_of(polyline.widths, [](const auto& w) { return w.start != 0 || w.end != 0; });
    if (!flat.isUsable() || polyline.points.empty() || (isRound && !flat.isSimilarity()))
        return false;
    const double elevation = polyline.elevation;
    polyline.elevation = flat.elevation(polyline.points[0], elevation);
    for (dwg::Point2& point : polyline.points)
        point = flat.point(point, elevation);
    for (auto& width : polyline.widths)
        width = {width.start * flat.factor(), width.end * flat.factor()};
    polyline.constantWidth *= flat.factor();
    polyline.thickness = flat.thickness(polyline.thickness);
    polyline.extrusion = flat.extrusion();
    return true;
}

bool carryText(dwg::TextFields& text, const Transform& by) {
    const FlatMap flat(by, text.extrusion);
    if (!flat.isUsable())
        return false;
    const double elevation = text.elevation;
    const AcGeVector3d along = flat.direction(std::cos(text.rotation), std::sin(text.rotation));
    const double lean = text.rotation + fullTurn / 4 - text.oblique;
    const AcGeVector3d upright = flat.direction(std::cos(lean), std::sin(lean)) * (1 / std::cos(text.oblique));
    const double length = along.length();
    // The map keeps the sense of turning, so the upright lies to the left of the baseline.
    const double rise = (along.x * upright.y - along.y * upright.x) / length;
    if (!(rise > 0) || !std::isfinite(rise))
        return false;
    text.elevation = flat.elevation(text.insertion, elevation);
    text.insertion = flat.point(text.insertion, elevation);
    text.alignment = flat.point(text.alignment, elevation);
    text.rotation = std::atan2(along.y, along.x);
    if (text.rotation < 0)
        text.rotation += fullTurn;
    const double oblique = std::atan2(along.dotProduct(upright) / length, rise);
    text.oblique = std::abs(oblique) < tolerance ? 0 : oblique;
    text.height *= rise;
    if (!isNear(length, rise))
        text.widthFactor *= length / rise;
    text.thickness = flat.thickness(text.thickness);
    text.extrusion = flat.extrusion();
    return true;
}

bool carry(dwg::Object&, dwg::Text& text, const Transform& by) {
    return carryText(text.text, by);
}

bool carry(dwg::Object&, dwg::Attribute& attribute, const Transform& by) {
    return carryText(attribute.text, by);
}

bool carry(dwg::Object&, dwg::AttributeDefinition& definition, const Transform& by) {
    return carryText(definition.attribute.text, by);
}

bool carry(dwg::Object&, dwg::MultilineText& text, const Transform& by) {
    const AcGeVector3d x = toVector(text.xDirection).normal();
    const AcGeVector3d y = toVector(text.extrusion).normal().crossProduct(x);
    const AcGeVector3d along = by.vector(x), up = by.vector(y);
    const AcGeVector3d cross = along.crossProduct(up);
    if (!(cross.length() > 0) || !isNear(along.length(), up.length()) || !isOrthogonal(along, up))
        return false;
    const double factor = along.length();
    text.insertion = movedPoint(by, text.insertion);
    text.xDirection = fromVector(unit(along));
    text.extrusion = fromVector(unit(cross));
    for (double* const size : {&text.rectangleWidth, &text.height, &text.extentsHeight, &text.extentsWidth})
        *size *= factor;
    return true;
}

bool carry(dwg::Object&, dwg::Insert& insert, const Transform& by) {
    const Transform plane = planeToWorld(insert.extrusion);
    const Transform turned = plane.turned(insert.rotation);
    AcGeVector3d x = by.vector(turned.x);
    const AcGeVector3d y = by.vector(turned.y), z = by.vector(turned.z);
    if (!(x.length() > 0 && y.length() > 0 && z.length() > 0) || !isOrthogonal(x, y) || !isOrthogonal(x, z) ||
        !isOrthogonal(y, z))
        return false;
    // A mirror image keeps the sense of its plane and turns a factor's sign.
    const bool isMirrored = x.crossProduct(y).dotProduct(z) < 0;
    const AcGePoint3d position = by.point(plane.point(toPoint(insert.position)));
    insert.scale = {insert.scale.x * x.length() * (isMirrored ? -1 : 1), insert.scale.y * y.length(),
                    insert.scale.z * z.length()};
    insert.columnSpacing *= x.length() * (isMirrored ? -1 : 1);
    insert.rowSpacing *= y.length();
    if (isMirrored)
        x = x * -1;
    insert.extrusion = fromVector(unit(z));
    const Transform image = planeToWorld(insert.extrusion);
    const AcGeVector3d from = position - AcGePoint3d::kOrigin;
    insert.position = {from.dotProduct(image.x), from.dotProduct(image.y), from.dotProduct(image.z)};
    insert.rotation = std::atan2(x.dotProduct(image.y), x.dotProduct(image.x));
    if (std::abs(insert.rotation) < tolerance)
        insert.rotation = 0;
    if (insert.rotation < 0)
        insert.rotation += fullTurn;
    return true;
}

bool carry(dwg::Object&, dwg::Hatch& hatch, const Transform& by) {
    return carryHatch(hatch, by);
}

bool carry(dwg::Object&, dwg::Spline& spline, const Transform& by) {
    return carrySpline(spline, by);
}

bool carry(dwg::Object&, dwg::Leader& leader, const Transform& by) {
    return carryLeader(leader, by);
}

/// Vertices lie in world coordinates; their polyline has nothing to carry over.
bool carry(dwg::Object&, dwg::Polyline3d&, const Transform&) {
    return true;
}

bool carry(dwg::Object&, dwg::PolyfaceMesh&, const Transform&) {
    return true;
}

bool carry(dwg::Object&, dwg::PolygonMesh&, const Transform&) {
    return true;
}

bool carry(dwg::Object&, dwg::Vertex3d& vertex, const Transform& by) {
    vertex.position = movedPoint(by, vertex.position);
    return true;
}

bool carry(dwg::Object&, dwg::PolyfaceFace&, const Transform&) {
    return true;
}

bool carry(dwg::Object&, dwg::SequenceEnd&, const Transform&) {
    return true;
}

} // namespace

bool transformEntity(dwg::Object& object, const Transform& by) {
    dwg::Body carried = object.body;
    const std::uint16_t type = object.type;
    const bool done = carried.visit([&](auto& body) {
        if constexpr (requires { carry(object, body, by); }) {
            if (!carry(object, body, by))
                return false;
            // A stretched circle has put its ellipse in place itself.
            if (object.type == type)
                object.body = std::move(body);
            return true;
        } else {
            return false;
        }
    });
    if (done)
        object.changed();
    return done;
}

namespace {

/// The vertices of a flat polyline lie in its plane.
bool carryFlatPolyline(EntityTree& tree, dwg::Polyline2d polyline, const Transform& by) {
    const FlatMap flat(by, polyline.extrusion);
    const auto isRound = [](const dwg::Object& part) {
        const auto* const vertex = part.as<dwg::Vertex2d>();
        return vertex != nullptr && (vertex->bulge != 0 || vertex->startWidth != 0 || vertex->endWidth != 0);
    };
    const bool needsSimilarity = polyline.startWidth != 0 || polyline.endWidth != 0 || polyline.curveType != 0 ||
                                 std::ranges::any_of(tree.parts, isRound);
    if (!flat.isUsable() || (needsSimilarity && !flat.isSimilarity()))
        return false;
    polyline.elevation = flat.point(dwg::Point3{0, 0, polyline.elevation}).z;
    polyline.startWidth *= flat.factor();
    polyline.endWidth *= flat.factor();
    polyline.thickness = flat.thickness(polyline.thickness);
    polyline.extrusion = flat.extrusion();
    tree.whole.body = std::move(polyline);
    tree.whole.changed();
    for (dwg::Object& part : tree.parts) {
        if (auto* const vertex = part.as<dwg::Vertex2d>()) {
            vertex->position = flat.point(vertex->position);
            vertex->startWidth *= flat.factor();
            vertex->endWidth *= flat.factor();
            vertex->tangent += flat.turn();
        }
        part.changed();
    }
    return true;
}

} // namespace

bool transformTree(EntityTree& tree, const Transform& by) {
    if (const auto* const polyline = tree.whole.as<dwg::Polyline2d>())
        return carryFlatPolyline(tree, *polyline, by);
    EntityTree moved = tree;
    if (!transformEntity(moved.whole, by) ||
        !std::ranges::all_of(moved.parts, [&](dwg::Object& part) { return transformEntity(part, by); }))
        return false;
    tree = std::move(moved);
    return true;
}

} // namespace editor
