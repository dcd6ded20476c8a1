#pragma once

#include <QPointer>
#include <QWidget>

/// A tip that lies over a cell whose text is cut off and shows the whole of it. Both lists hold one; nothing brings it
/// up yet.
class CTitleTip {
public:
    CTitleTip();
    ~CTitleTip();
    CTitleTip(const CTitleTip&) = delete;
    CTitleTip& operator=(const CTitleTip&) = delete;

    /// Makes the window; it stays hidden.
    bool Create(QWidget* tipParent);
    /// Shows the tip over `cell` (in the parent's coordinates) where the text does not fit; nothing while the tip is
    /// visible or no window has the focus.
    void Show(const QRect& cell, const QString& text, int xOffset = 0);
    bool IsVisible() const;
    /// The tip's window; null before Create.
    QWidget* Window() const;

private:
    class TipWindow;
    QWidget* parent = nullptr;
    QPointer<QWidget> made; ///< the window; goes with its parent at the latest
    TipWindow* window = nullptr;
};
