#include "tessaro/browser/MyCEdit.h"

#include "tessaro/platform/UserInterface.h"

#include <QCoreApplication>
#include <QKeyEvent>

bool quickFindBusy = false;
bool quickFindNextBusy = false;

MyCEdit::MyCEdit(QWidget* parent) : QLineEdit(parent) {
    connect(this, &QLineEdit::textChanged, this, [this] { Run(quickFindBusy, onChange); });
}

void MyCEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Run(quickFindNextBusy, onReturn);
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

bool MyCEdit::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* const pressed = static_cast<QKeyEvent*>(event);
        const int key = pressed->key();
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Escape) {
            QCoreApplication::postEvent(parentWidget(), pressed->clone());
            return true;
        }
    }
    return QLineEdit::event(event);
}

void MyCEdit::Run(bool& busy, const std::function<void()>& action) {
    if (busy || !action)
        return;
    busy = true;
    {
        const platform::WaitCursor wait;
        action();
    }
    busy = false;
}
