#include "editor/window/snap_button.h"

#include "editor/application/editor.h"
#include "editor/application/object_snaps.h"

#include <QMenu>
#include <QSignalBlocker>

namespace editor {

namespace {

int snapMode() {
    const auto value = Editor::instance() != nullptr ? Editor::instance()->variables().get(L"OSMODE") : std::nullopt;
    return value ? std::get<int>(*value) : 0;
}

} // namespace

SnapButton::SnapButton(QWidget* parent) : QToolButton(parent) {
    setObjectName("objectSnap");
    setText("Object Snap");
    setToolTip("Draws picked points to those of objects (F3)");
    setCheckable(true);
    setAutoRaise(true);
    setFocusPolicy(Qt::NoFocus);
    setShortcut(Qt::Key_F3);
    setPopupMode(QToolButton::MenuButtonPopup);
    auto* const menu = new QMenu(this);
    menu->setObjectName("objectSnapKinds");
    for (std::size_t index = 0; index < kinds.size(); ++index) {
        kinds[index] = menu->addAction(QString::fromWCharArray(snapModes[index].name));
        kinds[index]->setCheckable(true);
        connect(kinds[index], &QAction::toggled, this, [this, index](bool on) { set(snapModes[index].bit, on); });
    }
    setMenu(menu);
    connect(this, &QToolButton::toggled, this, [this](bool on) { set(snapSwitchedOff, !on); });
    refresh();
}

void SnapButton::refresh() {
    const int mode = snapMode();
    const QSignalBlocker quiet(this);
    setChecked((mode & snapSwitchedOff) == 0);
    for (std::size_t index = 0; index < kinds.size(); ++index) {
        const QSignalBlocker quietKind(kinds[index]);
        kinds[index]->setChecked((mode & snapModes[index].bit) != 0);
    }
}

void SnapButton::set(int bit, bool on) {
    const int mode = snapMode();
    if (Editor::instance() != nullptr)
        Editor::instance()->variables().set(L"OSMODE", on ? mode | bit : mode & ~bit);
    refresh();
}

std::optional<Snap> runningSnap(AcDbObjectId object, const AcGePoint3d& near, double reach) {
    const int mode = snapMode();
    std::optional<Snap> best;
    if (object.isNull() || (mode & snapSwitchedOff) != 0)
        return best;
    const auto distance = [&near](const AcGePoint3d& point) {
        return (AcGePoint3d{point.x, point.y, 0} - AcGePoint3d{near.x, near.y, 0}).length();
    };
    double nearest = reach;
    std::optional<Snap> centre;
    for (const SnapMode& candidate : snapModes) {
        if ((mode & candidate.bit) == 0)
            continue;
        const std::vector<AcGePoint3d> points = snapPoints(object, candidate.kind);
        if (candidate.kind == SnapKind::Center && points.size() == 1)
            centre = Snap{points[0], candidate.kind};
        for (const AcGePoint3d& point : points) {
            if (distance(point) <= nearest) {
                nearest = distance(point);
                best = Snap{point, candidate.kind};
            }
        }
    }
    return best ? best : centre;
}

} // namespace editor
