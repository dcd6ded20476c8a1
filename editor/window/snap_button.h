#pragma once

#include "editor/window/drawing_view.h"

#include <QToolButton>

#include <array>

class QAction;

namespace editor {

/// The status bar's switch for running object snaps, with the kinds in its menu. It shows and sets the system variable
/// OSMODE.
class SnapButton : public QToolButton {
    Q_OBJECT

public:
    explicit SnapButton(QWidget* parent = nullptr);

    /// Takes over what the variable says now.
    void refresh();

private:
    void set(int bit, bool on);

    std::array<QAction*, 4> kinds{};
};

/// The nearest point of the kinds that OSMODE switches on, of an object of the current drawing: at most `reach` away,
/// the centre of a round object wherever the object is pointed at.
std::optional<Snap> runningSnap(AcDbObjectId object, const AcGePoint3d& near, double reach);

} // namespace editor
