#include "tessaro/browser/ListView.h"
#include "tessaro/browser/QtText.h"

#include <QApplication>
#include <QHelpEvent>
#include <QScreen>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr std::size_t kTipLimit = 80;

/// The window in which the tip stands that is shown; null for none.
QWidget* TipWindow() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->inherits("QTipLabel"))
            return window;
    return nullptr;
}

/// Puts the tip below the row, in its middle, as far as the screen goes.
void CentreTip(const QRect& row, const QRect& screen) {
    QWidget* const tip = TipWindow();
    if (tip == nullptr)
        return;
    const int x = row.center().x() - tip->width() / 2;
    const bool fitsBelow = row.bottom() + 1 + tip->height() <= screen.bottom();
    tip->move(std::clamp(x, screen.left(), std::max(screen.left(), screen.right() - tip->width())),
              fitsBelow ? row.bottom() + 1 : row.top() - tip->height());
}

} // namespace

std::wstring ListView::ToolTipText(int id) const {
    if (id == 0)
        return {};
    std::wstring text = rows.Text(id - 1, 0);
    const std::wstring more = rows.Text(id - 1, 2);
    if (!more.empty())
        text += L" / " + more;
    return text.substr(0, kTipLimit);
}

bool ListView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QAbstractItemView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    QRect bounds;
    const int id = OnToolHitTest(help->pos(), bounds);
    const QString text = id < 0 ? QString() : ToQt(ToolTipText(id));
    if (text.isEmpty()) {
        QToolTip::hideText();
    } else {
        QToolTip::showText(help->globalPos(), Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text, viewport(),
                           bounds);
        const QRect seen = bounds.intersected(viewport()->rect());
        CentreTip({viewport()->mapToGlobal(seen.topLeft()), seen.size()}, screen()->geometry());
    }
    event->accept();
    return true;
}
