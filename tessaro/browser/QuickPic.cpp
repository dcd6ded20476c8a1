#include "tessaro/browser/QuickPic.h"

#include "tessaro/browser/painting/PaintPreview.h"
#include "tessaro/browser/preview/PictureContext.h"
#include "tessaro/host/BrowserWindow.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

namespace {

/// A list's picture stands one pixel inside of a fresh bitmap; what is enlarged of it goes one past its end.
constexpr int kFrame = 1;
constexpr PixelBox kFromList{1, 1, 131, 97};

Picture FramedListPicture(const ImageList& pictures, int slot) {
    Picture framed(kLargeWidth + 2 * kFrame, kLargeHeight + 2 * kFrame);
    const Picture drawn = pictures.Draw(slot);
    PictureContext(framed).StretchPicture({kFrame, kFrame, drawn.width, drawn.height}, drawn,
                                          {0, 0, drawn.width, drawn.height});
    return framed;
}

/// What the frame of such a window adds to its width and height.
QSize FrameOf(const QWidget& popup) {
    const int border = popup.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &popup);
    const int caption = popup.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &popup);
    return {2 * border, caption + 2 * border};
}

} // namespace

QuickPic::QuickPic(QWidget* owner, BrowserWindow& window)
    : QWidget(owner, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                         Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint),
      browser(window) {
    setObjectName(QStringLiteral("QuickPic"));
    setWindowTitle(QStringLiteral("QuickPic"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(kWidth, kHeight);
    const QSize outer = QSize(kWidth, kHeight) + FrameOf(*this);
    const QRect middle = owner->frameGeometry();
    move(middle.left() + middle.width() / 2 - outer.width() / 2,
         middle.top() + middle.height() / 2 - outer.height() / 2);
    show();
    activateWindow();
    setFocus();
    grabMouse();
}

void QuickPic::Show(const Directory& directory, Block& block) {
    if (block.imageIndex != 0) {
        PictureContext context(picture);
        if (!PaintPreview(directory, block, context, 0, 0, 1, true))
            context.StretchPicture({0, 0, kWidth, kHeight}, FramedListPicture(*directory.largeImages, block.imageIndex),
                                   kFromList);
    }
    setAccessibleName(QString::fromStdWString(block.name));
    repaint();
}

void QuickPic::DestroyWindow() {
    if (!open)
        return;
    open = false;
    releaseMouse();
    browser.PostCommand(kGoneCommand);
    hide();
}

void QuickPic::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawImage(0, 0, QImage(picture.pixels.data(), kWidth, kHeight, kWidth * 3, QImage::Format_RGB888));
}

void QuickPic::keyPressEvent(QKeyEvent* event) {
    // The key that opened the popup may still repeat; with Alt a key belongs to the system.
    if (event->isAutoRepeat() || event->key() == Qt::Key_Alt || event->modifiers().testFlag(Qt::AltModifier)) {
        event->ignore();
        return;
    }
    DestroyWindow();
}

void QuickPic::mousePressEvent(QMouseEvent*) {
    DestroyWindow();
}

void QuickPic::closeEvent(QCloseEvent* event) {
    DestroyWindow();
    event->accept();
}
