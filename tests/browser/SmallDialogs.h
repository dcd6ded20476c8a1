#pragma once

#include "tests/browser/BrowserFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QTimer>

#include <functional>
#include <stdexcept>

/// What the tests of the dialogs beside the main one have in common.
namespace small_dialogs {

/// When the modal dialog of that object name is up, the action is carried out on it.
inline void WhenOpen(const QString& name, const std::function<void(QDialog&)>& action) {
    QTimer::singleShot(5, [name, action] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || dialog->objectName() != name)
            WhenOpen(name, action);
        else
            action(*dialog);
    });
}

/// Answers every message box with "OK" and keeps what they said.
class AllMessages {
public:
    AllMessages() {
        QObject::connect(&timer, &QTimer::timeout, [this] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            texts << box->text();
            box->button(QMessageBox::Ok)->click();
        });
        timer.start(5);
    }
    QStringList texts;

private:
    QTimer timer;
};

template <class T> T& Child(QDialog& dialog, const char* name) {
    T* const child = dialog.findChild<T*>(QString::fromLatin1(name));
    if (child == nullptr)
        throw std::runtime_error(name);
    return *child;
}

inline void Click(QDialog& dialog, const char* button) {
    Child<QAbstractButton>(dialog, button).click();
}

inline bool IsOn(QDialog& dialog, const char* button) {
    return Child<QAbstractButton>(dialog, button).isChecked();
}

} // namespace small_dialogs
