#include "tessaro/browser/CTitleTip.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace {
constexpr int kTextMargin = 3;
}

/// The tip's window. It holds the mouse while it is up and gives every press, and each move that leaves the cell, to
/// what lies beneath.
class CTitleTip::TipWindow : public QWidget {
public:
    explicit TipWindow(QWidget* tipParent)
        : QWidget(tipParent, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint), owner(tipParent) {
        setObjectName(QStringLiteral("ZTitleTip"));
        setAttribute(Qt::WA_ShowWithoutActivating);
        setPalette(QToolTip::palette());
        setMouseTracking(true);
    }

    void Bring(const QRect& display, const QRect& kept, const QString& newText) {
        titleRect = kept;
        text = newText;
        setFont(owner->font());
        setGeometry(display);
        show();
        raise();
        grabMouse();
        grabKeyboard();
    }

    void Dismiss() {
        releaseKeyboard();
        releaseMouse();
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), palette().color(QPalette::ToolTipBase));
        painter.setPen(palette().color(QPalette::ToolTipText));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
        painter.drawText(1, 1 + fontMetrics().ascent(), text);
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        if (titleRect.contains(event->position().toPoint()))
            return;
        const QPoint place = event->globalPosition().toPoint();
        Dismiss();
        HandOn(place, event);
    }

    void mousePressEvent(QMouseEvent* event) override {
        const QPoint place = event->globalPosition().toPoint();
        Dismiss();
        HandOn(place, event);
    }

    void keyPressEvent(QKeyEvent* event) override {
        Dismiss();
        QCoreApplication::postEvent(owner, event->clone());
    }

    /// Input that means nothing to the tip ends it, and goes nowhere, once no widget has the focus any more.
    bool event(QEvent* event) override {
        const bool other = event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::KeyRelease ||
                           event->type() == QEvent::Wheel || event->type() == QEvent::MouseButtonDblClick;
        if (!other || !isVisible() || QApplication::focusWidget() != nullptr)
            return QWidget::event(event);
        Dismiss();
        return true;
    }

private:
    void HandOn(QPoint place, const QMouseEvent* event) {
        QWidget* target = QApplication::widgetAt(place);
        if (target == nullptr || target == this)
            target = owner;
        QCoreApplication::postEvent(target, new QMouseEvent(event->type(), target->mapFromGlobal(QPointF(place)), place,
                                                            event->button(), event->buttons(), event->modifiers()));
    }

    QWidget* const owner;
    QRect titleRect; ///< where the mouse may be without the tip going, in the tip's coordinates
    QString text;
};

CTitleTip::CTitleTip() = default;
CTitleTip::~CTitleTip() {
    delete made;
}

bool CTitleTip::Create(QWidget* tipParent) {
    delete made;
    parent = tipParent;
    window = new TipWindow(tipParent);
    made = window;
    return true;
}

void CTitleTip::Show(const QRect& cell, const QString& text, int xOffset) {
    if (made == nullptr || window->isVisible() || QApplication::focusWidget() == nullptr)
        return;
    const QRect kept(-1 - xOffset, -1, cell.width() + 1, cell.height() + 2);
    const QPoint corner = parent->mapToGlobal(cell.topLeft());
    const QRect display(corner.x() + xOffset, corner.y(), parent->fontMetrics().horizontalAdvance(text) + kTextMargin,
                        cell.height());
    if (display.right() <= corner.x() + cell.width() - 1 - xOffset)
        return;
    window->Bring(display, kept, text);
}

bool CTitleTip::IsVisible() const {
    return made != nullptr && made->isVisible();
}

QWidget* CTitleTip::Window() const {
    return made;
}
