#include "editor/window/drawing_view.h"

#include "editor/database/colours.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

constexpr double pickDistance = 6; // pixels

double distanceToPiece(const QPointF& point, const QPointF& a, const QPointF& b) {
    const QPointF along = b - a;
    const double square = QPointF::dotProduct(along, along);
    const double part = square == 0 ? 0 : std::clamp(QPointF::dotProduct(point - a, along) / square, 0.0, 1.0);
    const QPointF away = point - (a + along * part);
    return std::hypot(away.x(), away.y());
}

} // namespace

DrawingView::DrawingView(QWidget* parent) : QWidget(parent) {
    setObjectName("drawingView");
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
    setMinimumSize(320, 200);
    setBackground(0);
}

void DrawingView::setBackground(std::uint32_t colourWord) {
    background = QColor(colourWord & 0xFF, (colourWord >> 8) & 0xFF, (colourWord >> 16) & 0xFF);
    update();
}

void DrawingView::setWireframe(Wireframe wireframe) {
    shown = std::move(wireframe);
    if (fitted)
        zoomExtents();
    update();
}

void DrawingView::zoomExtents() {
    const Extents extents = shown.extents();
    fitted = true;
    if (extents.empty) {
        centre = QPointF(width() / 2.0, height() / 2.0);
        scale = 1;
    } else {
        const double spanX = extents.highest.x - extents.lowest.x;
        const double spanY = extents.highest.y - extents.lowest.y;
        centre = QPointF(extents.lowest.x + spanX / 2, extents.lowest.y + spanY / 2);
        scale = 0.94 * std::min(width() / std::max(spanX, 1e-9), height() / std::max(spanY, 1e-9));
        if (!std::isfinite(scale) || scale > 1e6)
            scale = 1;
    }
    update();
}

void DrawingView::setRubberBand(const std::optional<AcGePoint3d>& base) {
    rubberBand = base;
    update();
}

AcDbObjectId DrawingView::objectAt(const AcGePoint3d& point) const {
    const QPointF at = toScreen(point);
    double nearest = pickDistance;
    AcDbObjectId found;
    const auto offer = [&](double distance, AcDbObjectId entity) {
        if (distance <= nearest) {
            nearest = distance;
            found = entity;
        }
    };
    for (const Stroke& stroke : shown.strokes)
        for (std::size_t i = 0; i < stroke.points.size(); ++i)
            offer(distanceToPiece(at, toScreen(stroke.points[i]),
                                  toScreen(stroke.points[std::max<std::size_t>(i, 1) - 1])),
                  stroke.entity);
    for (const TextItem& text : shown.texts) {
        const AcGePoint3d end = text.position + text.along * static_cast<double>(text.content.size());
        offer(distanceToPiece(at, toScreen(text.position), toScreen(end)), text.entity);
    }
    return found;
}

QPointF DrawingView::toScreen(const AcGePoint3d& point) const {
    return {width() / 2.0 + (point.x - centre.x()) * scale, height() / 2.0 - (point.y - centre.y()) * scale};
}

AcGePoint3d DrawingView::toDrawing(const QPointF& point) const {
    return {centre.x() + (point.x() - width() / 2.0) / scale, centre.y() - (point.y() - height() / 2.0) / scale, 0};
}

QColor DrawingView::colourOf(std::uint16_t index) const {
    if (index == colourForeground)
        return background.lightness() > 127 ? Qt::black : Qt::white;
    const Rgb rgb = colourOfIndex(index);
    return {rgb.red, rgb.green, rgb.blue};
}

void DrawingView::drawAxes(QPainter& painter) const {
    // The usual mark of the axes' directions in the lower left corner.
    const QPointF corner(28.5, height() - 28.5);
    painter.setPen(QPen(QColor(200, 90, 90), 1));
    painter.drawLine(corner, corner + QPointF(34, 0));
    painter.drawText(corner + QPointF(38, 4), "X");
    painter.setPen(QPen(QColor(90, 180, 90), 1));
    painter.drawLine(corner, corner - QPointF(0, 34));
    painter.drawText(corner + QPointF(-4, -38), "Y");
}

void DrawingView::drawText(QPainter& painter, const TextItem& item) const {
    const double pixels = item.height() * scale;
    if (pixels < 2 || pixels > 20000)
        return;
    // The font gives the shapes at a fixed size; the item's own directions give size, slope and mirroring.
    QFont font("Sans");
    font.setPixelSize(64);
    const QFontMetricsF metrics(font);
    const double capital = metrics.capHeight() > 0 ? metrics.capHeight() : 46;
    const double average = std::max(1.0, metrics.averageCharWidth());
    QPainterPath path;
    path.addText(0, 0, font, QString::fromStdWString(item.content));
    const QPointF origin = toScreen(item.position);
    const QTransform toPlace(item.along.x * scale / average, -item.along.y * scale / average,
                             -item.up.x * scale / capital, item.up.y * scale / capital, origin.x(), origin.y());
    painter.fillPath(toPlace.map(path), colourOf(item.colour));
}

void DrawingView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), background);
    painter.setRenderHint(QPainter::Antialiasing);
    QPolygonF piece;
    for (const Stroke& stroke : shown.strokes) {
        piece.clear();
        for (const AcGePoint3d& point : stroke.points)
            piece << toScreen(point);
        const QColor colour = colourOf(stroke.colour);
        painter.setPen(QPen(colour, 1));
        if (stroke.filled) {
            painter.setBrush(colour);
            painter.drawPolygon(piece);
        } else if (piece.size() == 1) {
            painter.drawEllipse(piece.first(), 1, 1);
        } else {
            painter.setBrush(Qt::NoBrush);
            painter.drawPolyline(piece);
        }
    }
    for (const TextItem& item : shown.texts)
        drawText(painter, item);
    drawAxes(painter);
    if (rubberBand) {
        painter.setPen(QPen(QColor(230, 200, 90), 1, Qt::DashLine));
        painter.drawLine(toScreen(*rubberBand), pointer);
    }
}

void DrawingView::wheelEvent(QWheelEvent* event) {
    const double factor = std::pow(1.0015, event->angleDelta().y());
    const double wanted = scale * factor;
    if (wanted < 1e-9 || wanted > 1e9)
        return;
    const AcGePoint3d under = toDrawing(event->position());
    scale = wanted;
    const AcGePoint3d now = toDrawing(event->position());
    centre += QPointF(under.x - now.x, under.y - now.y);
    fitted = false;
    update();
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        const AcGePoint3d point = toDrawing(event->position());
        emit pointPicked(point.x, point.y);
    } else if (event->button() == Qt::MiddleButton) {
        dragStart = event->position();
    }
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
    pointer = event->position();
    if (event->buttons() & Qt::MiddleButton) {
        const QPointF moved = event->position() - dragStart;
        dragStart = event->position();
        centre += QPointF(-moved.x() / scale, moved.y() / scale);
        fitted = false;
        update();
    } else if (rubberBand) {
        update();
    }
    const AcGePoint3d point = toDrawing(pointer);
    emit pointerMoved(point.x, point.y);
}

void DrawingView::resizeEvent(QResizeEvent*) {
    if (fitted)
        zoomExtents();
}

} // namespace editor
