#pragma once

#include "tessaro/catalogue/Directory.h"

#include <QWidget>

class BrowserWindow;

/// Shows one preview larger than any list does, over the browser window, until the first key or mouse button. It takes
/// the mouse while it is open; a key that is held together with Alt does not count.
///
/// The window that opened it owns it, and is told by its command 269 that it is gone. Main thread.
class QuickPic : public QWidget {
public:
    static constexpr int kGoneCommand = 269;
    static constexpr int kWidth = 260, kHeight = 190;

    /// Opens in the middle of the owner. The picture is black until something is painted.
    QuickPic(QWidget* owner, BrowserWindow& window);

    /// Paints the Block's preview out of its drawing; where that can't be had, its picture in the Directory's large
    /// list, about twice its size. A Block without a picture of its own paints nothing.
    void Show(const Directory& directory, Block& block);
    const Picture& Shown() const { return picture; }

    void DestroyWindow();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    BrowserWindow& browser;
    Picture picture{kWidth, kHeight};
    bool open = true;
};
