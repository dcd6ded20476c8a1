#include "editor/window/drawing_scene.h"

#include "editor/database/colours.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

constexpr double smallestText = 2.5;  // pixels; below it a line stands for it
constexpr double largestText = 20000; // pixels
constexpr double smallestDash = 3;    // pixels of a whole pattern
constexpr double mostDashes = 5000;   // of one run
constexpr double closest = 0.4;       // pixels between points that are told apart
constexpr double farthest = 1e6;      // pixels from the middle that a painter still takes
constexpr double foreignStrength = 0.5;

QRectF boundsOf(const std::vector<QPointF>& points, std::size_t first) {
    double left = points[first].x(), right = left, low = points[first].y(), high = low;
    for (std::size_t i = first + 1; i < points.size(); ++i) {
        left = std::min(left, points[i].x());
        right = std::max(right, points[i].x());
        low = std::min(low, points[i].y());
        high = std::max(high, points[i].y());
    }
    return {left, low, right - left, high - low};
}

// QRectF::intersects takes no rectangle without a width or a height.
bool meet(const QRectF& a, const QRectF& b) {
    return a.left() <= b.right() && b.left() <= a.right() && a.top() <= b.bottom() && b.top() <= a.bottom();
}

double distanceToPiece(const QPointF& point, const QPointF& a, const QPointF& b) {
    const QPointF along = b - a;
    const double square = QPointF::dotProduct(along, along);
    const double part = square == 0 ? 0 : std::clamp(QPointF::dotProduct(point - a, along) / square, 0.0, 1.0);
    const QPointF away = point - (a + along * part);
    return std::hypot(away.x(), away.y());
}

QColor blended(const QColor& front, const QColor& back, double strength) {
    const auto mix = [strength](int a, int b) {
        return static_cast<int>(std::lround(a * strength + b * (1 - strength)));
    };
    return {mix(front.red(), back.red()), mix(front.green(), back.green()), mix(front.blue(), back.blue())};
}

// A painter's own clipping loses far-away points to overflow.
QPointF within(const QPointF& point) {
    return {std::clamp(point.x(), -farthest, farthest), std::clamp(point.y(), -farthest, farthest)};
}

} // namespace

QRectF Projection::visible() const {
    const double width = size.width() / scale, height = size.height() / scale;
    return {centre.x() - width / 2, centre.y() - height / 2, width, height};
}

DrawingScene::DrawingScene(const Wireframe& wireframe) : patterns(wireframe.patterns), box(wireframe.extents()) {
    std::size_t total = 0;
    for (const Stroke& stroke : wireframe.strokes)
        total += stroke.points.size();
    points.reserve(total);
    runs.reserve(wireframe.strokes.size());
    for (const Stroke& stroke : wireframe.strokes) {
        if (stroke.points.empty())
            continue;
        Run run;
        run.first = points.size();
        run.count = stroke.points.size();
        for (const AcGePoint3d& point : stroke.points)
            points.emplace_back(point.x, point.y);
        run.bounds = boundsOf(points, run.first);
        run.colour = stroke.colour;
        run.filled = stroke.filled;
        run.foreign = stroke.foreign;
        run.pattern = stroke.pattern;
        run.entity = stroke.entity;
        runs.push_back(run);
    }
    for (const TextItem& item : wireframe.texts) {
        // Letters reach below the baseline and, at worst, are twice as wide as the average.
        const AcGePoint3d start = item.position + item.up * -0.4 + item.along * -1;
        const AcGeVector3d across = item.along * (2.0 * static_cast<double>(item.content.size()) + 2);
        const AcGeVector3d up = item.up * 1.8;
        std::vector<QPointF> corners;
        for (const AcGePoint3d& corner : {start, start + across, start + up, start + across + up})
            corners.emplace_back(corner.x, corner.y);
        lines.push_back({item, boundsOf(corners, 0), {}});
    }
}

QColor DrawingScene::colourOf(std::uint16_t index, bool foreign, const Style& style) const {
    if (style.only)
        return *style.only;
    QColor colour = style.background.lightness() > 127 ? Qt::black : Qt::white;
    if (index != colourForeground) {
        const Rgb rgb = colourOfIndex(index);
        colour = {rgb.red, rgb.green, rgb.blue};
    }
    return foreign ? blended(colour, style.background, foreignStrength) : colour;
}

QList<qreal> DrawingScene::dashesOf(std::uint32_t pattern, double scale) const {
    QList<qreal> dashes;
    double length = 0;
    for (const double dash : patterns[pattern]) {
        dashes << std::max(dash * scale, 1.0);
        length += dash * scale;
    }
    return length < smallestDash || dashes.size() % 2 != 0 ? QList<qreal>() : dashes;
}

void DrawingScene::paintRun(QPainter& painter, const Projection& projection, const Run& run,
                            std::vector<QPointF>& piece) const {
    piece.clear();
    const QPointF* const first = points.data() + run.first;
    for (std::size_t i = 0; i < run.count; ++i) {
        const QPointF place = within(projection.toSurface(first[i].x(), first[i].y()));
        const bool isLast = i + 1 == run.count;
        if (!piece.empty() && !isLast && std::abs(place.x() - piece.back().x()) < closest &&
            std::abs(place.y() - piece.back().y()) < closest)
            continue;
        piece.push_back(place);
    }
    if (run.filled)
        painter.drawPolygon(piece.data(), static_cast<int>(piece.size()));
    else if (piece.size() == 1)
        painter.drawEllipse(piece.front(), 1, 1);
    else
        painter.drawPolyline(piece.data(), static_cast<int>(piece.size()));
}

void DrawingScene::paintLine(QPainter& painter, const Projection& projection, const Line& line,
                             const QColor& colour) const {
    const TextItem& item = line.item;
    const double pixels = item.height() * projection.scale;
    const QPointF origin = projection.toSurface(item.position.x, item.position.y);
    if (pixels > largestText)
        return;
    if (pixels < smallestText) {
        const AcGePoint3d end = item.position + item.along * static_cast<double>(item.content.size());
        painter.setPen(QPen(colour, 1));
        painter.drawLine(within(origin), within(projection.toSurface(end.x, end.y)));
        return;
    }
    // The font gives the shapes at a fixed size; the item's own directions give size, slope and mirroring.
    static const QFont font = [] {
        QFont made("Sans");
        made.setPixelSize(64);
        return made;
    }();
    static const QFontMetricsF metrics(font);
    const double capital = metrics.capHeight() > 0 ? metrics.capHeight() : 46;
    const double average = std::max(1.0, metrics.averageCharWidth());
    if (line.letters.isEmpty())
        line.letters.addText(0, 0, font, QString::fromStdWString(item.content));
    const double scale = projection.scale;
    const QTransform toPlace(item.along.x * scale / average, -item.along.y * scale / average,
                             -item.up.x * scale / capital, item.up.y * scale / capital, origin.x(), origin.y());
    painter.fillPath(toPlace.map(line.letters), colour);
}

void DrawingScene::paint(QPainter& painter, const Projection& projection, const Style& style) const {
    paint(painter, projection, style, {});
}

void DrawingScene::paint(QPainter& painter, const Projection& projection, const Style& style,
                         std::span<const AcDbObjectId> objects) const {
    const QRectF seen = projection.visible();
    const auto isWanted = [&](AcDbObjectId entity) {
        return objects.empty() || std::ranges::find(objects, entity) != objects.end();
    };
    painter.setRenderHint(QPainter::Antialiasing, style.antialiased);
    std::vector<QPointF> piece;
    QPen pen(Qt::white, 1);
    pen.setCosmetic(true);
    const Run* before = nullptr;
    for (const Run& run : runs) {
        if (!meet(run.bounds, seen) || !isWanted(run.entity))
            continue;
        if (before == nullptr || before->colour != run.colour || before->foreign != run.foreign ||
            before->pattern != run.pattern || before->filled != run.filled) {
            const QColor colour = colourOf(run.colour, run.foreign, style);
            pen.setColor(colour);
            const double longest = std::max(run.bounds.width(), run.bounds.height());
            const QList<qreal> dashes = run.pattern == 0 ? QList<qreal>() : dashesOf(run.pattern, projection.scale);
            double length = 0;
            for (const qreal dash : dashes)
                length += dash;
            if (dashes.isEmpty() || longest * projection.scale / length > mostDashes)
                pen.setStyle(Qt::SolidLine);
            else
                pen.setDashPattern(dashes);
            painter.setPen(pen);
            painter.setBrush(run.filled ? QBrush(colour) : QBrush(Qt::NoBrush));
            before = &run;
        }
        paintRun(painter, projection, run, piece);
    }
    for (const Line& line : lines)
        if (meet(line.bounds, seen) && isWanted(line.item.entity))
            paintLine(painter, projection, line, colourOf(line.item.colour, line.item.foreign, style));
}

AcDbObjectId DrawingScene::objectAt(const QPointF& point, const Projection& projection, double reach) const {
    const QPointF there = projection.toDrawing(point);
    const double span = reach / projection.scale;
    const QRectF around(there.x() - span, there.y() - span, 2 * span, 2 * span);
    double nearest = reach;
    AcDbObjectId found;
    const auto offer = [&](double distance, AcDbObjectId entity) {
        if (distance <= nearest) {
            nearest = distance;
            found = entity;
        }
    };
    for (const Run& run : runs) {
        if (!meet(run.bounds, around))
            continue;
        const QPointF* const first = points.data() + run.first;
        for (std::size_t i = 0; i < run.count; ++i) {
            const QPointF& from = first[i == 0 ? 0 : i - 1];
            offer(distanceToPiece(point, projection.toSurface(from.x(), from.y()),
                                  projection.toSurface(first[i].x(), first[i].y())),
                  run.entity);
        }
    }
    for (const Line& line : lines) {
        if (!meet(line.bounds, around))
            continue;
        const TextItem& item = line.item;
        const AcGePoint3d end = item.position + item.along * static_cast<double>(item.content.size());
        offer(distanceToPiece(point, projection.toSurface(item.position.x, item.position.y),
                              projection.toSurface(end.x, end.y)),
              item.entity);
    }
    return found;
}

} // namespace editor
