#include "editor/window/automation_controls.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTextEdit>

namespace editor {

namespace {

QAction* entryOf(const QWidget& menu, const QString& caption) {
    for (QAction* const action : menu.actions()) {
        if (!action->isSeparator() && plainCaption(action->text()) == caption)
            return action;
    }
    return nullptr;
}

} // namespace

QString plainCaption(QString text) {
    text.replace("&&", QChar(0x1F));
    text.remove('&');
    text.replace(QChar(0x1F), "&");
    return text.replace('\n', ' ').section('\t', 0, 0).trimmed();
}

QWidget* controlNamed(QWidget& window, const QString& name) {
    if (window.objectName() == name)
        return &window;
    for (QWidget* const control : window.findChildren<QWidget*>(name)) {
        if (control->isVisible())
            return control;
    }
    return nullptr;
}

QWidget* controlOrButton(QWidget& window, const QString& name) {
    if (QWidget* const control = controlNamed(window, name))
        return control;
    for (QAbstractButton* const button : window.findChildren<QAbstractButton*>()) {
        if (button->isVisible() && plainCaption(button->text()) == name)
            return button;
    }
    return nullptr;
}

QAction* menuEntry(QWidget& window, const QString& caption) {
    if (const QWidget* const popup = QApplication::activePopupWidget())
        return entryOf(*popup, caption);
    for (const QMenuBar* const bar : window.findChildren<QMenuBar*>()) {
        for (const QAction* const top : bar->actions()) {
            if (QAction* const entry = top->menu() != nullptr ? entryOf(*top->menu(), caption) : nullptr)
                return entry;
        }
    }
    return nullptr;
}

QString controlText(const QWidget& control) {
    if (const auto* const label = qobject_cast<const QLabel*>(&control))
        return label->text();
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&control))
        return plainCaption(button->text());
    if (const auto* const edit = qobject_cast<const QLineEdit*>(&control))
        return edit->text();
    if (const auto* const box = qobject_cast<const QComboBox*>(&control))
        return box->currentText();
    if (const auto* const edit = qobject_cast<const QPlainTextEdit*>(&control))
        return edit->toPlainText();
    if (const auto* const edit = qobject_cast<const QTextEdit*>(&control))
        return edit->toPlainText();
    if (const auto* const group = qobject_cast<const QGroupBox*>(&control))
        return group->title();
    if (const auto* const bar = qobject_cast<const QProgressBar*>(&control))
        return bar->text();
    const auto* const list = qobject_cast<const QAbstractItemView*>(&control);
    if (list == nullptr || list->model() == nullptr)
        return control.windowTitle();
    QString rows;
    for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row) {
        for (int column = 0; column < list->model()->columnCount(list->rootIndex()); ++column)
            rows += list->model()->index(row, column, list->rootIndex()).data().toString() + '\t';
        rows += '\n';
    }
    return rows;
}

QModelIndex rowOf(const QAbstractItemView& list, const QString& text) {
    const QAbstractItemModel* const model = list.model();
    for (int row = 0; model != nullptr && row < model->rowCount(list.rootIndex()); ++row) {
        const QModelIndex index = model->index(row, 0, list.rootIndex());
        if (index.data().toString() == text)
            return index;
    }
    return {};
}

} // namespace editor
