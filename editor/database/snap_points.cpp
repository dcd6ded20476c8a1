#include "editor/database/snap_points.h"

#include "editor/database/database_state.h"
#include "editor/database/transform.h"

#include <cmath>

namespace editor {

namespace {

constexpr double fullTurn = 2 * 3.14159265358979323846;
constexpr int deepestNesting = 16;
constexpr std::size_t mostPoints = 200'000;

class Collector {
public:
    Collector(const AcDbDatabase::Impl& of, SnapKind wanted) : database(of), kind(wanted) {}

    std::vector<AcGePoint3d> collect(const dwg::Object& entity) {
        add(entity, {}, 0);
        return std::move(points);
    }

private:
    void add(const dwg::Object& entity, const Transform& to, int depth) {
        if (points.size() < mostPoints)
            entity.body.visit([&](const auto& body) {
                if constexpr (requires { this->addBody(body, to, depth); })
                    addBody(body, to, depth);
            });
    }

    void put(const Transform& to, const AcGePoint3d& point) { points.push_back(to.point(point)); }

    static AcGePoint3d between(const AcGePoint3d& one, const AcGePoint3d& other) {
        return {(one.x + other.x) / 2, (one.y + other.y) / 2, (one.z + other.z) / 2};
    }

    void addPiece(const Transform& to, const AcGePoint3d& from, const AcGePoint3d& end) {
        if (kind == SnapKind::Middle)
            put(to, between(from, end));
    }

    void addBody(const dwg::Line& line, const Transform& to, int) {
        if (kind == SnapKind::End) {
            put(to, toPoint(line.start));
            put(to, toPoint(line.end));
        }
        addPiece(to, toPoint(line.start), toPoint(line.end));
    }

    void addBody(const dwg::Circle& circle, const Transform& to, int) {
        if (kind == SnapKind::Center)
            put(to.after(planeToWorld(circle.extrusion)), toPoint(circle.center));
    }

    void addBody(const dwg::Arc& arc, const Transform& to, int) {
        const Transform plane = to.after(planeToWorld(arc.extrusion));
        const auto at = [&](double angle) {
            return AcGePoint3d{arc.center.x + arc.radius * std::cos(angle), arc.center.y + arc.radius * std::sin(angle),
                               arc.center.z};
        };
        double sweep = std::fmod(arc.endAngle - arc.startAngle, fullTurn);
        if (sweep <= 0)
            sweep += fullTurn;
        if (kind == SnapKind::Center)
            put(plane, toPoint(arc.center));
        if (kind == SnapKind::Middle)
            put(plane, at(arc.startAngle + sweep / 2));
        if (kind == SnapKind::End) {
            put(plane, at(arc.startAngle));
            put(plane, at(arc.endAngle));
        }
    }

    void addBody(const dwg::Ellipse& ellipse, const Transform& to, int) {
        if (kind == SnapKind::Center)
            put(to, toPoint(ellipse.center));
    }

    // The middle of a round piece lies on its arc.
    void addBody(const dwg::LightweightPolyline& polyline, const Transform& to, int) {
        const Transform plane = to.after(planeToWorld(polyline.extrusion));
        const std::size_t count = polyline.points.size();
        const auto at = [&](std::size_t index) {
            return AcGePoint3d{polyline.points[index % count].x, polyline.points[index % count].y, polyline.elevation};
        };
        const bool isClosed = (polyline.flags & dwg::LightweightPolyline::closed) != 0;
        for (std::size_t index = 0; index < count; ++index) {
            if (kind == SnapKind::End)
                put(plane, at(index));
            if (kind != SnapKind::Middle || (index + 1 == count && !isClosed))
                continue;
            const double bulge = index < polyline.bulges.size() ? polyline.bulges[index] : 0;
            const AcGePoint3d from = at(index), end = at(index + 1), middle = between(from, end);
            put(plane, {middle.x + (end.y - from.y) * bulge / 2, middle.y - (end.x - from.x) * bulge / 2, middle.z});
        }
    }

    void addBody(const dwg::Text& text, const Transform& to, int) {
        if (kind == SnapKind::Insertion)
            put(to.after(planeToWorld(text.text.extrusion)),
                {text.text.insertion.x, text.text.insertion.y, text.text.elevation});
    }

    void addBody(const dwg::MultilineText& text, const Transform& to, int) {
        if (kind == SnapKind::Insertion)
            put(to, toPoint(text.insertion));
    }

    void addBody(const dwg::PointEntity& point, const Transform& to, int) {
        if (kind == SnapKind::End)
            put(to, toPoint(point.position));
    }

    void addBody(const dwg::Insert& insert, const Transform& to, int depth) {
        const Transform plane = to.after(planeToWorld(insert.extrusion));
        if (kind == SnapKind::Insertion)
            put(plane, toPoint(insert.position));
        const dwg::Object* const record = database.live(insert.block.value);
        const auto* const block = record == nullptr ? nullptr : record->as<dwg::BlockHeader>();
        if (block == nullptr || depth >= deepestNesting)
            return;
        const AcGePoint3d base = toPoint(block->basePoint);
        const Transform inside = plane.moved(toPoint(insert.position))
                                     .turned(insert.rotation)
                                     .scaled(toVector(insert.scale))
                                     .moved({-base.x, -base.y, -base.z});
        for (const dwg::Handle handle : block->entities) {
            if (const dwg::Object* const entity = database.live(handle); entity != nullptr && entity->isEntity())
                add(*entity, inside, depth + 1);
        }
    }

    const AcDbDatabase::Impl& database;
    const SnapKind kind;
    std::vector<AcGePoint3d> points;
};

} // namespace

std::vector<AcGePoint3d> snapPoints(AcDbObjectId entity, SnapKind kind) {
    if (entity.database == nullptr)
        return {};
    const AcDbDatabase::Impl& database = *entity.database->impl();
    const dwg::Object* const object = database.live(entity.handle);
    return object == nullptr || !object->isEntity() ? std::vector<AcGePoint3d>()
                                                    : Collector(database, kind).collect(*object);
}

} // namespace editor
