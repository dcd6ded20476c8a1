#include "tessaro/browser/MyCEdit.h"

#include "tessaro/platform/UserInterface.h"

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
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Tab) {
        event->ignore();
        return;
    }
    QLineEdit::keyPressEvent(event);
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
