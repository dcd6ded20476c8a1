#include "tests/browser/Answers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

namespace {

/// Calls again and again until the function has found what it waits for.
void Until(const std::function<bool()>& step) {
    QTimer::singleShot(5, [step] {
        if (!step())
            Until(step);
    });
}

QString Described(const QAction& action, const QString& path) {
    QString text = path + action.text();
    if (action.isSeparator())
        text = QStringLiteral("-");
    if (action.isChecked())
        text += QLatin1Char('*');
    return action.isEnabled() || action.isSeparator() ? text : QLatin1Char('[') + text + QLatin1Char(']');
}

QAction* Visit(QMenu& menu, const QString& path, const QString& entry, QStringList& texts) {
    QAction* found = nullptr;
    for (QAction* action : menu.actions()) {
        texts << Described(*action, path);
        if (path + action->text() == entry)
            found = action;
        if (action->menu() != nullptr)
            if (QAction* inside = Visit(*action->menu(), action->text() + QLatin1Char('/'), entry, texts))
                found = inside;
    }
    return found;
}

} // namespace

MessageAnswer::MessageAnswer(const QString& button) : text(std::make_shared<QString>()) {
    Until([kept = text, button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr)
            return false;
        *kept = box->text();
        for (QAbstractButton* choice : box->buttons())
            if (choice->text().remove(QLatin1Char('&')) == button)
                choice->click();
        return true;
    });
}

MenuAnswer::MenuAnswer(const QString& entry) : texts(std::make_shared<QStringList>()) {
    QTimer::singleShot(0, [kept = texts, entry] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr)
            return;
        QAction* picked = Visit(*menu, {}, entry, *kept);
        menu->close();
        if (picked != nullptr)
            picked->trigger();
    });
}

void AnswerFolderPicker(const QString& path) {
    Until([path] {
        auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            return false;
        EXPECT_EQ(dialog->windowTitle(), "Select Directory");
        if (path.isEmpty()) {
            dialog->reject();
            return true;
        }
        dialog->setDirectory(path);
        dialog->selectFile(path);
        static_cast<QDialog*>(dialog)->done(QDialog::Accepted);
        return true;
    });
}
