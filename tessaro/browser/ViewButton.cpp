#include "tessaro/browser/ViewButton.h"

#include "tessaro/browser/CrispPicture.h"
#include "tessaro/browser/ViewPictures.xpm"

#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

#include <array>

namespace {

constexpr int kPictureWidth = 22;
constexpr int kPictureHeight = 20;
constexpr int kArrowGap = 4;
constexpr QRgb kTransparent = qRgb(0xFF, 0, 0xFF);

int ArrowWidth(const QWidget* widget) {
    return widget->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, widget);
}

} // namespace

ViewButton::ViewButton(QWidget* parent)
    : QPushButton(QStringLiteral("3"), parent), images(QImage(viewPictures).convertToFormat(QImage::Format_ARGB32)) {
    for (int y = 0; y < images.height(); ++y)
        for (int x = 0; x < images.width(); ++x)
            if (images.pixel(x, y) == kTransparent)
                images.setPixel(x, y, 0);
}

QImage ViewButton::ViewPicture(int pictureView) const {
    return images.copy(pictureView * kPictureWidth, 0, kPictureWidth, kPictureHeight);
}

bool ViewButton::IsOnArrow(int x) const {
    return x > width() - ArrowWidth(this) - kArrowGap;
}

void ViewButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOptionButton item;
    initStyleOption(&item);
    DrawItem(painter, item);
}

void ViewButton::DrawItem(QPainter& painter, QStyleOptionButton& item) {
    item.text.clear();
    style()->drawControl(QStyle::CE_PushButtonBevel, &item, &painter, this);

    QStyleOption arrow;
    arrow.initFrom(this);
    const int arrowWidth = ArrowWidth(this);
    arrow.rect = QRect(width() - arrowWidth, -1, arrowWidth, height() + 1).adjusted(3, 3, -5, -3);
    style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, &painter, this);
    painter.setPen(QPen(palette().color(QPalette::Mid), 0));
    painter.drawLine(width() - arrowWidth - 1, 5, width() - arrowWidth - 1, height() - 6);
    if (hasFocus() && item.state.testFlag(QStyle::State_KeyboardFocusChange)) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = rect().adjusted(2, 2, -2, -2);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }

    painter.setOpacity(isEnabled() ? 1.0 : 0.5);
    DrawCrisp(painter, {2, 2}, ViewPicture(view));
}

void ViewButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down && hasDirectory())
        OpenMenu(Qt::LeftButton);
    else
        QPushButton::keyPressEvent(event);
}

void ViewButton::mousePressEvent(QMouseEvent* event) {
    const bool known = event->button() == Qt::LeftButton || event->button() == Qt::RightButton;
    if (!known || !hasDirectory() || !IsOnArrow(event->position().toPoint().x())) {
        QPushButton::mousePressEvent(event);
        return;
    }
    OpenMenu(event->button());
}

void ViewButton::OpenMenu(Qt::MouseButton button) {
    constexpr std::array names{"Large Icons", "Small Icons", "List", "Report"};
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("viewMenu"));
    for (int id = hasLargeImages() ? 0 : 1; id < 4; ++id) {
        QAction* entry = menu.addAction(QString::fromLatin1(names[static_cast<std::size_t>(id)]));
        entry->setData(id);
        entry->setCheckable(true);
        entry->setChecked(id == view);
    }
    // The right button's menu is placed by client coordinates as if they were the screen's; this is what users know.
    const QPoint place = button == Qt::LeftButton ? mapToGlobal(QPoint(0, height()))
                                                  : QPoint(width() - menu.sizeHint().width(), height());
    const QAction* chosen = menu.exec(place);
    // A menu that is dismissed gives 0, which is the large view.
    view = chosen == nullptr ? 0 : chosen->data().toInt();
    setView(view);
    repaint();
}
