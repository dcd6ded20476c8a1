#include "editor/window/drawing_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

constexpr double pickDistance = 6; // pixels, half the side of the pick box
constexpr double snapDistance = 10;
constexpr double snapMark = 6; // pixels, half the side of a mark
constexpr int restMilliseconds = 120;
constexpr double margin = 0.94;
constexpr double leastScale = 1e-9, mostScale = 1e9;

const QColor rubberColour(230, 170, 60);
const QColor markColour(90, 160, 255);
const QColor snapColour(80, 200, 90);

/// What a block shows, and where its base lies.
std::pair<Wireframe, AcGePoint3d> contentOf(AcDbObjectId block) {
    AcDbBlockTableRecord* record = nullptr;
    if (acdbOpenObject(record, block, AcDb::kForRead) != eOk)
        return {};
    const AcGePoint3d base = record->origin();
    record->close();
    return {wireframeOf(block), base};
}

} // namespace

DrawingView::DrawingView(QWidget* parent) : QWidget(parent) {
    setObjectName("drawingView");
    setAccessibleName("Drawing");
    setAccessibleDescription("The model space of the current drawing; commands are typed below");
    setMouseTracking(true);
    setCursor(Qt::BlankCursor);
    setMinimumSize(320, 200);
    setAttribute(Qt::WA_OpaquePaintEvent);
    settle.setSingleShot(true);
    settle.setInterval(restMilliseconds);
    connect(&settle, &QTimer::timeout, this, [this] { repaintScene(false); });
    setBackground(0);
}

void DrawingView::setBackground(std::uint32_t colourWord) {
    background = QColor(colourWord & 0xFF, (colourWord >> 8) & 0xFF, (colourWord >> 16) & 0xFF);
    repaintScene(false);
}

QColor DrawingView::contrast() const {
    return background.lightness() > 127 ? Qt::black : Qt::white;
}

void DrawingView::setSource(std::function<Wireframe()> function) {
    source = std::move(function);
    outdate();
}

void DrawingView::outdate() {
    isOutdated = true;
    repaintScene(false);
}

void DrawingView::bringUpToDate() {
    if (!isOutdated)
        return;
    isOutdated = false;
    scene = DrawingScene(source());
    if (fitted)
        fit();
}

void DrawingView::zoomExtents() {
    fitted = true;
    if (!isOutdated)
        fit();
    repaintScene(false);
}

void DrawingView::fit() {
    const Extents& extents = scene.extents();
    projection.size = size();
    if (extents.empty) {
        projection.centre = QPointF(width() / 2.0, height() / 2.0);
        projection.scale = 1;
    } else {
        const double spanX = extents.highest.x - extents.lowest.x;
        const double spanY = extents.highest.y - extents.lowest.y;
        projection.centre = QPointF(extents.lowest.x + spanX / 2, extents.lowest.y + spanY / 2);
        const double scale = margin * std::min(width() / std::max(spanX, 1e-9), height() / std::max(spanY, 1e-9));
        projection.scale = std::isfinite(scale) && scale > leastScale && scale < 1e6 ? scale : 1;
    }
}

View DrawingView::view() {
    bringUpToDate();
    return viewNow();
}

std::optional<View> DrawingView::chosenView() const {
    return fitted ? std::nullopt : std::optional(viewNow());
}

View DrawingView::viewNow() const {
    const QRectF seen = projection.visible();
    return {{projection.centre.x(), projection.centre.y(), 0}, seen.width(), seen.height()};
}

void DrawingView::setView(const View& part) {
    const double scale = std::min(width() / std::max(part.width, 1e-12), height() / std::max(part.height, 1e-12));
    if (!std::isfinite(scale) || !std::isfinite(part.center.x) || !std::isfinite(part.center.y))
        return;
    projection.scale = std::clamp(scale, leastScale, mostScale);
    projection.centre = {part.center.x, part.center.y};
    fitted = false;
    repaintScene(false);
}

void DrawingView::setPrompt(const Prompt& prompt) {
    rubberBand = prompt.base;
    rectangle = prompt.rectangle;
    selecting = prompt.kind == Prompt::Kind::Selection;
    picking = selecting || prompt.kind == Prompt::Kind::Point;
    takesPoints =
        prompt.kind == Prompt::Kind::Point || prompt.kind == Prompt::Kind::Number || prompt.kind == Prompt::Kind::Angle;
    ghost = prompt.ghost;
    if (ghost) {
        const auto [content, base] = contentOf(ghost->block);
        ghostScene = DrawingScene(content);
        ghostBase = base;
    }
    update();
}

void DrawingView::endPrompt() {
    rubberBand.reset();
    ghost.reset();
    ghostScene = DrawingScene();
    picking = selecting = rectangle = takesPoints = false;
    snap.reset();
    update();
}

void DrawingView::highlight(std::vector<AcDbObjectId> objects) {
    marked = std::move(objects);
    repaintScene(false);
}

AcDbObjectId DrawingView::objectAt(const AcGePoint3d& point) {
    bringUpToDate();
    return scene.objectAt(projection.toSurface(point.x, point.y), projection, pickDistance);
}

void DrawingView::repaintScene(bool moving) {
    rough = moving;
    if (moving)
        settle.start();
    picture = QPixmap();
    update();
}

void DrawingView::paintPicture() {
    bringUpToDate();
    const qreal ratio = devicePixelRatioF();
    picture = QPixmap(size() * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(background);
    QPainter painter(&picture);
    scene.paint(painter, projection, {background, !rough});
    if (!marked.empty())
        scene.paint(painter, projection, {background, !rough, markColour}, marked);
    paintAxes(painter);
}

void DrawingView::paintAxes(QPainter& painter) const {
    // The usual mark of the axes' directions in the lower left corner.
    const QPointF corner(28.5, height() - 28.5);
    painter.setPen(QPen(QColor(200, 90, 90), 1));
    painter.drawLine(corner, corner + QPointF(34, 0));
    painter.drawText(corner + QPointF(38, 4), "X");
    painter.setPen(QPen(QColor(70, 160, 70), 1));
    painter.drawLine(corner, corner - QPointF(0, 34));
    painter.drawText(corner + QPointF(-4, -38), "Y");
}

void DrawingView::paintRubberBand(QPainter& painter) const {
    const QPointF base = projection.toSurface(rubberBand->x, rubberBand->y);
    painter.setPen(QPen(rubberColour, 1, Qt::DashLine));
    painter.setBrush(Qt::NoBrush);
    if (rectangle)
        painter.drawRect(QRectF(base, *pointer).normalized());
    else
        painter.drawLine(base, *pointer);
}

void DrawingView::paintGhost(QPainter& painter) const {
    // The scene is painted about its base with the pointer in the middle of the surface.
    Projection about = projection;
    about.centre = {ghostBase.x, ghostBase.y};
    const QPointF middle(projection.size.width() / 2, projection.size.height() / 2);
    const double furthest = std::hypot(projection.size.width(), projection.size.height());
    about.size = {4 * furthest, 4 * furthest};
    const QPointF wide(2 * furthest, 2 * furthest);
    painter.save();
    painter.translate(*pointer);
    painter.rotate(-ghost->rotation * 180 / M_PI);
    painter.scale(ghost->scale.x, ghost->scale.y);
    painter.translate(-wide);
    painter.setOpacity(0.6);
    ghostScene.paint(painter, about, {background, true});
    painter.restore();
}

void DrawingView::paintPointer(QPainter& painter) const {
    const QPointF place(std::floor(pointer->x()) + 0.5, std::floor(pointer->y()) + 0.5);
    painter.setRenderHint(QPainter::Antialiasing, false);
    QColor colour = contrast();
    colour.setAlpha(150);
    painter.setPen(QPen(colour, 1));
    painter.setBrush(Qt::NoBrush);
    if (!selecting) {
        painter.drawLine(QPointF(0, place.y()), QPointF(width(), place.y()));
        painter.drawLine(QPointF(place.x(), 0), QPointF(place.x(), height()));
    }
    if (!picking || selecting)
        painter.drawRect(
            QRectF(place.x() - pickDistance, place.y() - pickDistance, 2 * pickDistance, 2 * pickDistance));
}

std::optional<Snap> DrawingView::snapAt(const QPointF& place) const {
    if (!takesPoints || !snapper)
        return std::nullopt;
    const QPointF point = projection.toDrawing(place);
    return snapper({point.x(), point.y(), 0}, snapDistance / projection.scale);
}

// Each kind has its shape: a square, a triangle, a circle, two squares.
void DrawingView::paintSnap(QPainter& painter) const {
    const QPointF place = projection.toSurface(snap->point.x, snap->point.y);
    const QRectF square(place.x() - snapMark, place.y() - snapMark, 2 * snapMark, 2 * snapMark);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(snapColour, 2));
    painter.setBrush(Qt::NoBrush);
    switch (snap->kind) {
    case SnapKind::End:
        painter.drawRect(square);
        break;
    case SnapKind::Middle:
        painter.drawPolygon(QPolygonF({square.bottomLeft(), square.bottomRight(), {place.x(), square.top()}}));
        break;
    case SnapKind::Center:
        painter.drawEllipse(square);
        break;
    case SnapKind::Insertion:
        painter.drawRect(QRectF(square.topLeft(), place));
        painter.drawRect(QRectF(place, square.bottomRight()));
        break;
    }
}

void DrawingView::paintEvent(QPaintEvent*) {
    if (picture.isNull())
        paintPicture();
    QPainter painter(this);
    painter.drawPixmap(0, 0, picture);
    if (!pointer)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    if (ghost)
        paintGhost(painter);
    if (rubberBand)
        paintRubberBand(painter);
    paintPointer(painter);
    if (snap)
        paintSnap(painter);
}

void DrawingView::wheelEvent(QWheelEvent* event) {
    const double wanted = projection.scale * std::pow(1.0015, event->angleDelta().y());
    if (wanted < leastScale || wanted > mostScale)
        return;
    const QPointF under = projection.toDrawing(event->position());
    projection.scale = wanted;
    projection.centre += under - projection.toDrawing(event->position());
    fitted = false;
    repaintScene(true);
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        const QPointF under = projection.toDrawing(event->position());
        const auto meant = snapAt(event->position());
        const AcGePoint3d point = meant ? meant->point : AcGePoint3d{under.x(), under.y(), 0};
        emit pointPicked(point.x, point.y, point.z);
    } else if (event->button() == Qt::MiddleButton) {
        dragStart = event->position();
        setCursor(Qt::ClosedHandCursor);
    } else if (event->button() == Qt::RightButton) {
        emit entered();
    }
}

void DrawingView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton)
        zoomExtents();
    else
        mousePressEvent(event);
}

void DrawingView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton)
        setCursor(Qt::BlankCursor);
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
    pointer = event->position();
    if (event->buttons() & Qt::MiddleButton) {
        const QPointF moved = event->position() - dragStart;
        dragStart = event->position();
        projection.centre += QPointF(-moved.x() / projection.scale, moved.y() / projection.scale);
        fitted = false;
        repaintScene(true);
    }
    snap = event->buttons() == Qt::NoButton ? snapAt(*pointer) : std::nullopt;
    update();
    const QPointF point = projection.toDrawing(*pointer);
    emit pointerMoved(point.x(), point.y());
}

void DrawingView::leaveEvent(QEvent*) {
    pointer.reset();
    snap.reset();
    update();
}

void DrawingView::resizeEvent(QResizeEvent*) {
    projection.size = size();
    if (fitted)
        fit();
    repaintScene(false);
}

} // namespace editor
