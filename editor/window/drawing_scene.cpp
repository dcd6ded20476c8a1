#include "editor/window/drawing_scene.h"

#include "editor/database/colours.h"
#include "editor/database/text_lines.h"
#include "editor/window/clipping.h"

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
constexpr double farthest = 20000;    // pixels from the corner that a painter is given
constexpr double foreignStrength = 0.5;
constexpr double endless = 1e300;

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
bool isFar(const QPointF& point) {
    return !(std::abs(point.x()) < farthest && std::abs(point.y()) < farthest);
}

// Beyond it no clipping is exact to a pixel any more.
QPointF within(const QPointF& point) {
    constexpr double most = 1e12;
    return {std::clamp(point.x(), -most, most), std::clamp(point.y(), -most, most)};
}

// Around the surface, so that what lies along the box's sides isn't seen.
QRectF boxAround(const Projection& projection) {
    return QRectF(QPointF(0, 0), projection.size).adjusted(-100, -100, 100, 100);
}

// The font gives the shapes at a fixed size; a text's own directions give size, slope and mirroring.
const QFont& letterFont() {
    static const QFont font = [] {
        QFont made("Sans");
        made.setPixelSize(64);
        return made;
    }();
    return font;
}

struct LetterSizes {
    double capital = 46, average = 40;
};

const LetterSizes& letterSizes() {
    static const LetterSizes sizes = [] {
        const QFontMetricsF metrics(letterFont());
        return LetterSizes{metrics.capHeight() > 0 ? metrics.capHeight() : 46,
                           std::max(1.0, metrics.averageCharWidth())};
    }();
    return sizes;
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
        run.edgeless = stroke.edgeless;
        run.beyondStart = stroke.beyondStart;
        run.beyondEnd = stroke.beyondEnd;
        if (run.beyondEnd)
            run.bounds = {-endless, -endless, 2 * endless, 2 * endless};
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
        const QRectF bounds = boundsOf(corners, 0);
        const std::size_t first = item.continued && !lines.empty() ? lines.back().first : lines.size();
        // What is aligned to its middle or end may begin further left.
        const double room = item.anchor * std::max(bounds.width(), bounds.height());
        Line& line = lines.emplace_back();
        line.item = item;
        line.bounds = bounds.adjusted(-room, -room, room, room);
        line.first = first;
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

void DrawingScene::prepare(QPainter& painter, QPen& pen, const Projection& projection, const Run& run,
                           const Style& style) const {
    const QColor colour = colourOf(run.colour, run.foreign, style);
    pen.setColor(colour);
    const double longest = std::max(run.bounds.width(), run.bounds.height());
    const QList<qreal> dashes = run.pattern == 0 ? QList<qreal>() : dashesOf(run.pattern, projection.scale);
    double length = 0;
    for (const qreal dash : dashes)
        length += dash;
    if (dashes.isEmpty() || (!run.beyondEnd && longest * projection.scale / length > mostDashes))
        pen.setStyle(Qt::SolidLine);
    else
        pen.setDashPattern(dashes);
    painter.setPen(run.edgeless ? QPen(Qt::NoPen) : pen);
    painter.setBrush(run.filled ? QBrush(colour) : QBrush(Qt::NoBrush));
}

void DrawingScene::paintRun(QPainter& painter, const Projection& projection, const Run& run,
                            std::vector<QPointF>& piece) const {
    piece.clear();
    const QPointF* const first = points.data() + run.first;
    for (std::size_t i = 0; i < run.count; ++i) {
        const QPointF place = projection.toSurface(first[i].x(), first[i].y());
        if (isFar(place) || run.beyondEnd)
            return paintFarRun(painter, projection, run);
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

void DrawingScene::paintFarRun(QPainter& painter, const Projection& projection, const Run& run) const {
    const QRectF around = boxAround(projection);
    if (run.filled) {
        std::vector<QPointF> places;
        for (std::size_t i = 0; i < run.count; ++i)
            places.push_back(within(projection.toSurface(points[run.first + i].x(), points[run.first + i].y())));
        const std::vector<QPointF> area = clippedArea(places, around);
        painter.drawPolygon(area.data(), static_cast<int>(area.size()));
        return;
    }
    for (std::size_t i = 1; i < run.count; ++i) {
        const QLineF whole = segment(projection, run, i);
        if (const auto part = clippedLine(whole.p1(), whole.p2(), around, run.beyondStart, run.beyondEnd))
            painter.drawLine(*part);
    }
}

QLineF DrawingScene::segment(const Projection& projection, const Run& run, std::size_t index) const {
    const QPointF &from = points[run.first + (index == 0 ? 0 : index - 1)], &to = points[run.first + index];
    return {within(projection.toSurface(from.x(), from.y())), within(projection.toSurface(to.x(), to.y()))};
}

void DrawingScene::setLine(std::size_t index) const {
    if (lines[index].width >= 0)
        return;
    const std::size_t first = lines[index].first;
    static const QFontMetricsF metrics(letterFont());
    double expected = 0, whole = 0;
    std::size_t end = first;
    for (; end < lines.size() && lines[end].first == first; ++end) {
        const TextItem& item = lines[end].item;
        lines[end].width = item.along.length() * metrics.horizontalAdvance(QString::fromStdWString(item.content)) /
                           letterSizes().average;
        whole += lines[end].width;
        expected += item.along.length() * static_cast<double>(item.content.size());
    }
    // What is behind it moves with the width of what is ahead of it.
    double moved = lines[first].item.anchor * (expected - whole);
    for (std::size_t at = first; at < end; ++at) {
        const TextItem& item = lines[at].item;
        lines[at].place = item.position + item.along.normal() * moved;
        moved += lines[at].width - item.along.length() * static_cast<double>(item.content.size());
    }
}

void DrawingScene::paintLine(QPainter& painter, const Projection& projection, std::size_t index,
                             const QColor& colour) const {
    setLine(index);
    const Line& line = lines[index];
    const TextItem& item = line.item;
    const double pixels = item.height() * projection.scale;
    const auto at = [&](double along, double up) {
        const AcGePoint3d point = line.place + item.along.normal() * (along * line.width) + item.up * up;
        return projection.toSurface(point.x, point.y);
    };
    const auto drawAlong = [&](double up) {
        if (const auto part = clippedLine(at(0, up), at(1, up), boxAround(projection)))
            painter.drawLine(*part);
    };
    if (pixels > largestText || !std::isfinite(pixels))
        return;
    painter.setPen(QPen(colour, 1));
    if (pixels < smallestText)
        return drawAlong(0);
    if (line.letters.isEmpty())
        line.letters.addText(0, 0, letterFont(), QString::fromStdWString(item.content));
    const double scale = projection.scale;
    const auto [capital, average] = letterSizes();
    const QPointF origin = at(0, 0);
    const QTransform toPlace(item.along.x * scale / average, -item.along.y * scale / average,
                             -item.up.x * scale / capital, item.up.y * scale / capital, origin.x(), origin.y());
    painter.fillPath(toPlace.map(line.letters), colour);
    constexpr std::pair<std::uint8_t, double> marks[] = {
        {TextRun::underlined, -0.2}, {TextRun::overlined, 1.2}, {TextRun::struckThrough, 0.4}};
    for (const auto& [mark, height] : marks) {
        if ((item.marks & mark) != 0)
            drawAlong(height);
    }
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
        if (before == nullptr || !before->looksLike(run)) {
            prepare(painter, pen, projection, run, style);
            before = &run;
        }
        paintRun(painter, projection, run, piece);
    }
    for (std::size_t index = 0; index < lines.size(); ++index) {
        const TextItem& item = lines[index].item;
        if (meet(lines[index].bounds, seen) && isWanted(item.entity))
            paintLine(painter, projection, index, colourOf(item.colour, item.foreign, style));
    }
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
        for (std::size_t i = 0; i < run.count; ++i) {
            QLineF piece = segment(projection, run, i);
            if (run.beyondEnd)
                piece =
                    clippedLine(piece.p1(), piece.p2(), boxAround(projection), run.beyondStart, true).value_or(piece);
            offer(distanceToPiece(point, piece.p1(), piece.p2()), run.entity);
        }
    }
    for (std::size_t index = 0; index < lines.size(); ++index) {
        const Line& line = lines[index];
        if (!meet(line.bounds, around))
            continue;
        setLine(index);
        const AcGePoint3d end = line.place + line.item.along.normal() * line.width;
        offer(distanceToPiece(point, projection.toSurface(line.place.x, line.place.y),
                              projection.toSurface(end.x, end.y)),
              line.item.entity);
    }
    return found;
}

} // namespace editor
