#pragma once

#include <QImage>
#include <QPushButton>

#include <functional>

class QPainter;
class QStyleOptionButton;

/// Shows and picks the view of the block list: a click on its left part asks for the next view, its arrow or the key
/// Down opens a menu.
class ViewButton : public QPushButton {
public:
    explicit ViewButton(QWidget* parent);

    int view = 3; ///< 0 large icons, 1 small icons, 2 list, 3 report

    std::function<bool()> hasDirectory = [] { return false; };  ///< whether a directory is current
    std::function<bool()> hasLargeImages = [] { return true; }; ///< whether its large pictures are used
    std::function<void(int view)> setView = [](int) {};         ///< a view was picked in the menu

    /// The picture of a view, 22 by 20.
    QImage ViewPicture(int pictureView) const;
    /// True where the press at x opens the menu.
    bool IsOnArrow(int x) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void DrawItem(QPainter& painter, QStyleOptionButton& item);
    void OpenMenu(Qt::MouseButton button);

    QImage images; ///< four pictures side by side, see-through where the artwork is magenta
};
