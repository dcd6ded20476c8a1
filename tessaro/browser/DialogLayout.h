#pragma once

#include <QFont>
#include <QRect>
#include <QSize>

#include <map>
#include <string>
#include <vector>

/// Where everything stands in the browser window, in dialog units: a quarter of the font's average character width and
/// an eighth of its height.
struct DialogUnits {
    int baseX = 4;
    int baseY = 8;

    explicit DialogUnits(const QFont& font);
    DialogUnits(int x, int y) : baseX(x), baseY(y) {}
    int X(int units) const { return (units * baseX + 2) / 4; }
    int Y(int units) const { return (units * baseY + 4) / 8; }
    /// Edges are rounded, so that what touches in units touches in pixels.
    QRect Pixels(const QRect& units) const;
};

/// The window's font.
QFont DialogFont();

struct ControlPlace {
    const char* name; ///< the control's object name
    QRect units;
};
/// In tab order. A combo box's rectangle holds its open list.
const std::vector<ControlPlace>& ControlPlaces();
constexpr QSize kDialogUnits{520, 346};
/// Height of a closed combo box, in units.
constexpr int kClosedCombo = 14;

struct DialogLayout {
    QSize size;
    std::map<std::string, QRect> places;
};
/// In pixels. On a desktop that is narrower than the window 20 pixels are taken off the right edge, whatever the
/// excess.
DialogLayout LayOutDialog(const DialogUnits& units, int desktopWidth);
