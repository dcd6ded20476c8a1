#pragma once

#include "editor/database/wireframe.h"

#include <QColor>
#include <QWidget>

#include <optional>

namespace editor {

/// Shows the model space of a drawing from above: the wheel zooms at the pointer, the middle button drags, a click with
/// the left button picks a point. Holds a copy of the wireframe, never the drawing.
class DrawingView : public QWidget {
    Q_OBJECT

public:
    explicit DrawingView(QWidget* parent = nullptr);

    /// Red in the low byte, as the host tells its colours.
    void setBackground(std::uint32_t colourWord);
    void setWireframe(Wireframe wireframe);
    /// The whole drawing, with a small margin.
    void zoomExtents();
    /// A line is drawn from here to the pointer until it is taken away.
    void setRubberBand(const std::optional<AcGePoint3d>& base);
    /// The object whose drawing passes nearest to the point, within a few pixels; null without one.
    AcDbObjectId objectAt(const AcGePoint3d& point) const;

signals:
    void pointPicked(double x, double y);
    void pointerMoved(double x, double y);

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QPointF toScreen(const AcGePoint3d& point) const;
    AcGePoint3d toDrawing(const QPointF& point) const;
    QColor colourOf(std::uint16_t index) const;
    void drawAxes(QPainter& painter) const;
    void drawText(QPainter& painter, const TextItem& item) const;

    Wireframe shown;
    QColor background;
    double scale = 1;   // pixels a drawing unit
    QPointF centre;     // drawing coordinates at the middle of the view
    bool fitted = true; // nothing was zoomed or dragged since the last fit
    QPointF pointer;
    QPointF dragStart;
    std::optional<AcGePoint3d> rubberBand;
};

} // namespace editor
