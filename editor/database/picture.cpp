#include "editor/database/picture.h"

#include "editor/database/canvas.h"
#include "editor/database/stroke_font.h"

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

constexpr int margin = 3;
constexpr int smallestSide = 16;
/// Text below this height in pixels is a line.
constexpr double smallestText = 3;

/// World to pixels: the extents fill the canvas but for the margin.
class View {
public:
    View(const Extents& extents, int width, int height) : lowest(extents.lowest) {
        const double across = std::max(extents.highest.x - extents.lowest.x, 0.0);
        const double up = std::max(extents.highest.y - extents.lowest.y, 0.0);
        const double roomAcross = width - 1 - 2 * margin, roomUp = height - 1 - 2 * margin;
        if (across > 0 || up > 0)
            scale =
                std::min(across > 0 ? roomAcross / across : roomUp / up, up > 0 ? roomUp / up : roomAcross / across);
        columns = std::clamp(static_cast<int>(std::ceil(across * scale)) + 1 + 2 * margin, smallestSide, width);
        rows = std::clamp(static_cast<int>(std::ceil(up * scale)) + 1 + 2 * margin, smallestSide, height);
        left = (columns - 1 - across * scale) / 2;
        bottom = (rows - 1 - up * scale) / 2;
    }

    Canvas::Position operator()(const AcGePoint3d& point) const {
        return {left + (point.x - lowest.x) * scale, bottom + (point.y - lowest.y) * scale};
    }

    AcGePoint3d lowest;
    double scale = 1;
    double left = 0, bottom = 0;
    int columns = 0, rows = 0;
};

// The two points of a line without an end, moved out of the picture.
void extend(std::vector<Canvas::Position>& positions, const View& view, bool both) {
    const Canvas::Position from = positions.front(), to = positions.back();
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    if (!(length > 0))
        return;
    const double far =
        std::hypot(view.columns, view.rows) + std::hypot(from.x - view.columns / 2.0, from.y - view.rows / 2.0);
    const double x = (to.x - from.x) / length * far, y = (to.y - from.y) / length * far;
    positions.back() = {from.x + x, from.y + y};
    if (both)
        positions.front() = {from.x - x, from.y - y};
}

void draw(Canvas& canvas, const View& view, const Stroke& stroke) {
    const auto index = static_cast<std::uint8_t>(stroke.colour);
    std::vector<Canvas::Position> positions;
    for (const AcGePoint3d& point : stroke.points)
        positions.push_back(view(point));
    if (stroke.beyondEnd)
        extend(positions, view, stroke.beyondStart);
    if (stroke.filled)
        canvas.fill(positions, index);
    if (stroke.edgeless)
        return;
    for (std::size_t i = 0; i + 1 < positions.size(); ++i)
        canvas.line(positions[i], positions[i + 1], index);
    if (positions.size() == 1)
        canvas.line(positions[0], positions[0], index);
}

void draw(Canvas& canvas, const View& view, const TextItem& text) {
    const auto index = static_cast<std::uint8_t>(text.colour);
    const auto place = [&](double x, double y) { return view(text.position + text.along * x + text.up * y); };
    if (text.height() * view.scale < smallestText) {
        canvas.line(place(0, 0.5), place(static_cast<double>(text.content.size()), 0.5), index);
        return;
    }
    for (const auto& stroke : strokesOfText(text.content)) {
        for (std::size_t i = 0; i + 1 < stroke.size(); ++i)
            canvas.line(place(stroke[i].x, stroke[i].y), place(stroke[i + 1].x, stroke[i + 1].y), index);
    }
}

} // namespace

std::string pictureOf(const Wireframe& wireframe, int width, int height) {
    const Extents extents = wireframe.extents();
    if (extents.empty || !std::isfinite(extents.lowest.x + extents.lowest.y + extents.highest.x + extents.highest.y))
        return {};
    const View view(extents, std::max(width, smallestSide), std::max(height, smallestSide));
    Canvas canvas(view.columns, view.rows);
    for (const Stroke& stroke : wireframe.strokes)
        draw(canvas, view, stroke);
    for (const TextItem& text : wireframe.texts)
        draw(canvas, view, text);
    return canvas.bitmap();
}

std::string pictureOfModelSpace(const AcDbDatabase& database) {
    return pictureOf(wireframeOfModelSpace(database));
}

} // namespace editor
