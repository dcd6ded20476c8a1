#include "editor/application/selecting.h"

#include "editor/application/drawing.h"
#include "editor/database/wireframe.h"

#include <algorithm>
#include <unordered_map>

namespace editor {

namespace {

struct Box {
    double left, right, low, high;

    bool holds(const AcGePoint3d& point) const {
        return point.x >= left && point.x <= right && point.y >= low && point.y <= high;
    }

    /// Whether a straight piece comes into the box: cut down by the four edges, something is left of it.
    bool meets(const AcGePoint3d& from, const AcGePoint3d& end) const {
        double start = 0, stop = 1;
        const auto cut = [&](double along, double room) {
            if (along == 0)
                return room >= 0;
            const double at = room / along;
            if (along < 0)
                start = std::max(start, at);
            else
                stop = std::min(stop, at);
            return start <= stop;
        };
        const double x = end.x - from.x, y = end.y - from.y;
        return cut(-x, from.x - left) && cut(x, right - from.x) && cut(-y, from.y - low) && cut(y, high - from.y);
    }
};

struct Relation {
    bool inside = true, touched = false;
};

// A line without an end is never inside.
void relateEndless(Relation& relation, const Box& box, const Stroke& stroke) {
    constexpr double far = 1e9;
    const AcGePoint3d &from = stroke.points.front(), &to = stroke.points.back();
    relation.inside = false;
    relation.touched =
        relation.touched || box.meets(stroke.beyondStart ? from + (to - from) * -far : from, from + (to - from) * far);
}

void relate(Relation& relation, const Box& box, const std::vector<AcGePoint3d>& points) {
    for (std::size_t index = 0; index < points.size(); ++index) {
        relation.inside = relation.inside && box.holds(points[index]);
        relation.touched = relation.touched || box.meets(points[index], points[index == 0 ? 0 : index - 1]);
    }
}

} // namespace

std::vector<AcDbObjectId> entitiesInBox(AcDbDatabase& database, const AcGePoint3d& corner, const AcGePoint3d& opposite,
                                        bool crossing) {
    const Box box{std::min(corner.x, opposite.x), std::max(corner.x, opposite.x), std::min(corner.y, opposite.y),
                  std::max(corner.y, opposite.y)};
    const Wireframe wireframe = wireframeOfModelSpace(database);
    std::unordered_map<std::uint64_t, Relation> relations;
    for (const Stroke& stroke : wireframe.strokes) {
        if (stroke.beyondEnd)
            relateEndless(relations[stroke.entity.handle], box, stroke);
        else
            relate(relations[stroke.entity.handle], box, stroke.points);
    }
    for (const TextItem& text : wireframe.texts) {
        const AcGePoint3d end = text.position + text.along * static_cast<double>(text.content.size());
        relate(relations[text.entity.handle], box, {text.position, end, end + text.up, text.position + text.up});
    }
    std::vector<AcDbObjectId> found;
    for (const AcDbObjectId entity : modelSpaceEntities(database)) {
        const auto relation = relations.find(entity.handle);
        if (relation != relations.end() && (relation->second.inside || (crossing && relation->second.touched)))
            found.push_back(entity);
    }
    return found;
}

} // namespace editor
