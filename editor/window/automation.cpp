#include "editor/window/automation.h"

#include "editor/window/automation_controls.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPointer>
#include <QSpinBox>

#include <functional>
#include <map>

namespace editor {

namespace {

using Words = const QStringList&;

void later(QWidget& widget, std::function<void()> function) {
    QMetaObject::invokeMethod(&widget, std::move(function), Qt::QueuedConnection);
}

ActionResult missing(const QString& name) {
    return ActionResult::again("there is no \"" + name + "\"");
}

void sendMouse(QWidget& widget, QEvent::Type type, const QPoint& place, Qt::MouseButton button) {
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent event(type, place, widget.mapToGlobal(place), button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

void clickAt(const QPointer<QWidget>& widget, const QPoint& place, Qt::MouseButton button) {
    sendMouse(*widget, QEvent::MouseButtonPress, place, button);
    if (widget)
        sendMouse(*widget, QEvent::MouseButtonRelease, place, button);
}

void sendKey(QWidget& widget, QKeyCombination keys) {
    const QPointer<QWidget> alive = &widget;
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, keys.key(), keys.keyboardModifiers());
        if (alive)
            QApplication::sendEvent(&widget, &event);
    }
}

ActionResult click(QWidget& window, Words words) {
    if (words.size() != 1)
        return ActionResult::failed("click needs one name");
    if (QAction* const entry = menuEntry(window, words[0])) {
        if (!entry->isEnabled())
            return ActionResult::again("\"" + words[0] + "\" is disabled");
        if (auto* const popup = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            popup->setActiveAction(entry);
            later(*popup, [popup] { sendKey(*popup, Qt::Key_Return); });
        } else {
            later(window, [entry = QPointer(entry)] {
                if (entry)
                    entry->trigger();
            });
        }
        return ActionResult::done();
    }
    QWidget* const control = controlOrButton(window, words[0]);
    if (control == nullptr)
        return missing(words[0]);
    if (!control->isEnabled())
        return ActionResult::again("\"" + words[0] + "\" is disabled");
    later(*control, [control] {
        if (auto* const button = qobject_cast<QAbstractButton*>(control))
            button->click();
        else
            clickAt(control, control->rect().center(), Qt::LeftButton);
    });
    return ActionResult::done();
}

// What follows "ROW in LIST".
using RowAction = std::function<void(QAbstractItemView& list, const QModelIndex& row)>;

ActionResult onRow(QWidget& window, Words words, const RowAction& function) {
    if (words.size() != 3 || words[1] != "in")
        return ActionResult::failed("expected: ROW in LIST");
    QWidget* const control = controlNamed(window, words[2]);
    if (control == nullptr)
        return missing(words[2]);
    if (!control->isEnabled())
        return ActionResult::again("\"" + words[2] + "\" is disabled");
    if (auto* const box = qobject_cast<QComboBox*>(control)) {
        const int index = box->findText(words[0]);
        if (index < 0)
            return ActionResult::again("\"" + words[2] + "\" has no row \"" + words[0] + "\"");
        later(*box, [box, index] {
            box->setCurrentIndex(index);
            QMetaObject::invokeMethod(box, "activated", Q_ARG(int, index));
        });
        return ActionResult::done();
    }
    auto* const list = qobject_cast<QAbstractItemView*>(control);
    if (list == nullptr)
        return ActionResult::failed("\"" + words[2] + "\" is no list");
    const QModelIndex row = rowOf(*list, words[0]);
    if (!row.isValid())
        return ActionResult::again("\"" + words[2] + "\" has no row \"" + words[0] + "\"");
    later(*list, [list, row = QPersistentModelIndex(row), function] {
        if (!row.isValid())
            return;
        list->scrollTo(row);
        function(*list, row);
    });
    return ActionResult::done();
}

// A press near the left end: the middle of a wide row may lie in the next column.
QPoint placeOn(const QAbstractItemView& list, const QModelIndex& row) {
    const QRect place = list.visualRect(row).intersected(list.viewport()->rect());
    return {place.left() + std::min(place.width() / 2, 24), place.center().y()};
}

ActionResult select(QWidget& window, Words words) {
    return onRow(window, words, [](QAbstractItemView& list, const QModelIndex& row) {
        list.setFocus();
        list.selectionModel()->setCurrentIndex(row, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    });
}

ActionResult doubleClick(QWidget& window, Words words) {
    return onRow(window, words, [](QAbstractItemView& list, const QModelIndex& row) {
        const QPoint place = placeOn(list, row);
        const QPointer<QWidget> viewport = list.viewport();
        clickAt(viewport, place, Qt::LeftButton);
        if (viewport)
            sendMouse(*viewport, QEvent::MouseButtonDblClick, place, Qt::LeftButton);
        if (viewport)
            sendMouse(*viewport, QEvent::MouseButtonRelease, place, Qt::LeftButton);
    });
}

ActionResult rightClick(QWidget& window, Words words) {
    return onRow(window, words, [](QAbstractItemView& list, const QModelIndex& row) {
        const QPoint place = placeOn(list, row);
        const QPointer<QWidget> viewport = list.viewport();
        clickAt(viewport, place, Qt::RightButton);
        if (!viewport)
            return;
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
    });
}

void typeInto(QLineEdit& edit, const QString& text) {
    edit.setFocus();
    edit.selectAll();
    if (text.isEmpty())
        edit.del();
    else
        edit.insert(text);
}

ActionResult setControl(QWidget& window, Words words) {
    if (words.size() != 2)
        return ActionResult::failed("expected: set NAME TEXT");
    QWidget* const control = controlOrButton(window, words[0]);
    if (control == nullptr)
        return missing(words[0]);
    if (!control->isEnabled())
        return ActionResult::again("\"" + words[0] + "\" is disabled");
    const QString& text = words[1];
    if (auto* const edit = qobject_cast<QLineEdit*>(control)) {
        later(*edit, [edit, text] { typeInto(*edit, text); });
    } else if (auto* const box = qobject_cast<QComboBox*>(control)) {
        if (!box->isEditable())
            return onRow(window, {text, "in", words[0]}, {});
        later(*box, [box, text] { typeInto(*box->lineEdit(), text); });
    } else if (auto* const spin = qobject_cast<QSpinBox*>(control)) {
        later(*spin, [spin, text] { spin->setValue(text.toInt()); });
    } else if (auto* const plain = qobject_cast<QPlainTextEdit*>(control)) {
        later(*plain, [plain, text] { plain->setPlainText(text); });
    } else if (auto* const button = qobject_cast<QAbstractButton*>(control); button && button->isCheckable()) {
        if (text != "on" && text != "off")
            return ActionResult::failed("a check box is set \"on\" or \"off\"");
        later(*button, [button, on = text == "on"] {
            if (button->isChecked() != on)
                button->click();
        });
    } else {
        return ActionResult::failed("\"" + words[0] + "\" takes no text");
    }
    return ActionResult::done();
}

ActionResult pressKey(QWidget& window, Words words) {
    const QKeySequence keys = words.size() == 1 ? QKeySequence(words[0]) : QKeySequence();
    if (keys.count() != 1)
        return ActionResult::failed("key needs one key, such as \"Escape\" or \"Ctrl+A\"");
    QWidget* const popup = QApplication::activePopupWidget();
    QWidget* const focus = window.focusWidget();
    QWidget& target = popup != nullptr ? *popup : focus != nullptr ? *focus : window;
    later(target, [&target, keys] { sendKey(target, keys[0]); });
    return ActionResult::done();
}

// The window with the small windows of its own that stand over it.
QPixmap picture(QWidget& window) {
    QPixmap shown = window.grab();
    QPainter painter(&shown);
    for (QWidget* const child : window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (child->isWindow() && child->isVisible() && !child->isModal())
            painter.drawPixmap(child->mapToGlobal(QPoint()) - window.mapToGlobal(QPoint()), child->grab());
    }
    return shown;
}

ActionResult grab(QWidget& window, Words words) {
    if (words.size() != 1)
        return ActionResult::failed("grab needs a file name");
    return picture(window).save(words[0]) ? ActionResult::done()
                                          : ActionResult::failed("\"" + words[0] + "\" can't be written");
}

ActionResult answer(QWidget& window, Words words) {
    if (words.size() != 1)
        return ActionResult::failed("answer needs one text");
    if (auto* const files = qobject_cast<QFileDialog*>(&window)) {
        auto* const name = files->findChild<QLineEdit*>("fileNameEdit");
        if (name == nullptr)
            return missing("fileNameEdit");
        later(*files, [files, name, text = words[0]] {
            name->setText(text);
            QMetaObject::invokeMethod(files, "accept");
        });
        return ActionResult::done();
    }
    if (auto* const input = qobject_cast<QInputDialog*>(&window)) {
        later(*input, [input, text = words[0]] {
            if (input->inputMode() == QInputDialog::IntInput)
                input->setIntValue(text.toInt());
            else
                input->setTextValue(text);
            input->accept();
        });
        return ActionResult::done();
    }
    if (qobject_cast<QMessageBox*>(&window) != nullptr)
        return click(window, words);
    return ActionResult::again("the window asks nothing");
}

ActionResult closeWindow(QWidget& window, Words) {
    later(window, [&window] { window.close(); });
    return ActionResult::done();
}

ActionResult waitUntil(QWidget& window, Words words) {
    if (words.size() != 2)
        return ActionResult::failed("expected: wait-until NAME TEXT");
    const QWidget* const control = controlOrButton(window, words[0]);
    if (control == nullptr)
        return missing(words[0]);
    return controlText(*control).contains(words[1])
               ? ActionResult::done()
               : ActionResult::again("\"" + words[0] + "\" does not say \"" + words[1] + "\"");
}

// The columns of a row, or what a control says, go to the transcript through the caller's reason.
ActionResult expect(QWidget& window, Words words) {
    if (words.size() != 2)
        return ActionResult::failed("expected: expect NAME TEXT");
    QWidget* const control = controlOrButton(window, words[0]);
    if (control == nullptr)
        return ActionResult::failed("there is no \"" + words[0] + "\"");
    const QString said = controlText(*control);
    return said.contains(words[1]) ? ActionResult::done()
                                   : ActionResult::failed("\"" + words[0] + "\" says \"" + said.left(400) + "\"");
}

} // namespace

std::optional<WindowAction> WindowAction::parse(const QString& line) {
    QStringList words;
    for (qsizetype at = 0; at < line.size();) {
        if (line[at].isSpace()) {
            ++at;
            continue;
        }
        QString word;
        if (line[at] == '"') {
            for (++at; at < line.size() && line[at] != '"'; ++at) {
                if (line[at] == '\\' && at + 1 < line.size() && (line[at + 1] == '"' || line[at + 1] == '\\'))
                    ++at;
                word += line[at];
            }
            if (at++ >= line.size())
                return std::nullopt;
        } else {
            while (at < line.size() && !line[at].isSpace())
                word += line[at++];
        }
        words << word;
    }
    if (words.isEmpty())
        return std::nullopt;
    WindowAction action;
    action.verb = words.takeFirst();
    action.words = words;
    return action;
}

ActionResult act(QWidget& window, const WindowAction& action) {
    static const std::map<QString, ActionResult (*)(QWidget&, Words)> verbs = {{"click", click},
                                                                               {"select", select},
                                                                               {"double-click", doubleClick},
                                                                               {"right-click", rightClick},
                                                                               {"set", setControl},
                                                                               {"key", pressKey},
                                                                               {"grab", grab},
                                                                               {"answer", answer},
                                                                               {"close", closeWindow},
                                                                               {"wait-until", waitUntil},
                                                                               {"expect", expect}};
    const auto found = verbs.find(action.verb);
    if (found == verbs.end())
        return ActionResult::failed("\"" + action.verb + "\" is no action");
    return found->second(window, action.words);
}

QString windowText(const QWidget& window) {
    QStringList texts;
    if (!window.windowTitle().isEmpty())
        texts << window.windowTitle();
    for (const QLabel* const label : window.findChildren<QLabel*>()) {
        if (label->isVisible() && !label->text().isEmpty())
            texts << label->text();
    }
    return texts.join(": ");
}

} // namespace editor
