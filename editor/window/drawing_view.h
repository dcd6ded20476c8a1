#pragma once

#include "editor/application/services.h"
#include "editor/database/snap_points.h"
#include "editor/window/drawing_scene.h"

#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace editor {

/// A point of an object that the pointer is drawn to.
struct Snap {
    AcGePoint3d point;
    SnapKind kind = SnapKind::End;
};
/// The point that is meant near another one, at most `reach` drawing units away; nothing where there is none.
using Snapper = std::function<std::optional<Snap>(const AcGePoint3d& near, double reach)>;

/// Shows the model space of a drawing from above: the wheel zooms at the pointer, the middle button drags (a double
/// click of it shows the whole drawing), a click with the left button picks a point. Holds copies of what it draws,
/// never the drawing; it takes them from its source when it is painted or asked for the first time after a change, so
/// that a change costs whoever makes it nothing.
///
/// The drawing itself is painted once for each view into a picture; pointer, cross-hair, rubber band and ghost are
/// painted over it. While the view moves it is painted without smoothing, which follows when it rests.
class DrawingView : public QWidget {
    Q_OBJECT

public:
    explicit DrawingView(QWidget* parent = nullptr);

    /// Red in the low byte, as the host tells its colours.
    void setBackground(std::uint32_t colourWord);
    /// What gives the wireframe that is to be seen; it is out of date at first.
    void setSource(std::function<Wireframe()> function);
    /// The source has something else to give by now.
    void outdate();
    /// The whole drawing, with a small margin.
    void zoomExtents();
    View view();
    /// The view that was zoomed or dragged to; nothing while it is the whole drawing.
    std::optional<View> chosenView() const;
    /// Shows all of that part of the model, and what else fits the widget's shape.
    void setView(const View& part);
    /// What a prompt shows at the pointer: a line or a rectangle from its base, a ghost.
    void setPrompt(const Prompt& prompt);
    void endPrompt();
    /// Asked while a prompt takes points: what it gives is marked, and picked in place of the point under the pointer.
    void setSnapper(Snapper function) { snapper = std::move(function); }
    void highlight(std::vector<AcDbObjectId> objects);
    /// The object whose drawing passes nearest to the point, within a few pixels; null without one.
    AcDbObjectId objectAt(const AcGePoint3d& point);

signals:
    void pointPicked(double x, double y, double z);
    void pointerMoved(double x, double y);
    /// The right button: Enter.
    void entered();

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void bringUpToDate();
    /// Shows all of the scene, which is up to date.
    void fit();
    View viewNow() const;
    /// The picture is to be painted anew; roughly while the view moves.
    void repaintScene(bool moving);
    void paintPicture();
    void paintPointer(QPainter& painter) const;
    void paintRubberBand(QPainter& painter) const;
    void paintGhost(QPainter& painter) const;
    void paintAxes(QPainter& painter) const;
    void paintSnap(QPainter& painter) const;
    std::optional<Snap> snapAt(const QPointF& place) const;
    QColor contrast() const;

    std::function<Wireframe()> source;
    bool isOutdated = false;
    DrawingScene scene;
    DrawingScene ghostScene;
    std::optional<Ghost> ghost;
    AcGePoint3d ghostBase;
    std::vector<AcDbObjectId> marked;
    QColor background;
    Projection projection;
    bool fitted = true; ///< nothing was zoomed or dragged since the last fit
    QPixmap picture;    ///< null where it is to be painted
    bool rough = false;
    QTimer settle;
    std::optional<QPointF> pointer;
    QPointF dragStart;
    std::optional<AcGePoint3d> rubberBand;
    bool rectangle = false;
    bool picking = false; ///< a point is asked for, or a selection
    bool selecting = false;
    bool takesPoints = false; ///< a point, or a number or an angle by one
    Snapper snapper;
    std::optional<Snap> snap; ///< under the pointer
};

} // namespace editor
