#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>

#include <functional>
#include <stdexcept>

namespace tests {

/// The browser's window as a user has it: what it shows, and what mouse and keyboard do to it. Its controls are known
/// by their names alone.
class Window {
public:
    /// `idle` tells whether the worker has nothing to do.
    Window(QDialog& shown, std::function<bool()> idle) : dialog(shown), workerIsIdle(std::move(idle)) {}

    QDialog& Dialog() const { return dialog; }
    /// Throws std::runtime_error where the window has no such control.
    template <class T = QAbstractButton> T& Control(const char* name) const {
        T* const control = dialog.findChild<T*>(QString::fromLatin1(name), Qt::FindDirectChildrenOnly);
        if (control == nullptr)
            throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }
    bool Has(const char* name) const {
        return dialog.findChild<QWidget*>(QString::fromLatin1(name), Qt::FindDirectChildrenOnly) != nullptr;
    }
    bool IsEnabled(const char* name) const { return Control<QWidget>(name).isEnabled(); }
    QAbstractItemView& Blocks() const { return Control<QAbstractItemView>("blockList"); }
    QAbstractItemView& Directories() const { return Control<QAbstractItemView>("directoryList"); }
    QString Properties() const { return Control<QLabel>("properties").text(); }
    QLineEdit& QuickFind() const { return Control<QLineEdit>("quickFind"); }

    /// A click of the left mouse button.
    void Press(const char* button) const;
    void Type(QWidget& control, const QString& text) const;
    /// Puts a text into a combo box as typing does.
    void Set(const char* box, const QString& text) const;

    static int Rows(const QAbstractItemView& list) { return list.model()->rowCount(); }
    static QString Cell(const QAbstractItemView& list, int row, int column);
    /// The texts of a column with a blank behind each.
    static QString Column(const QAbstractItemView& list, int column);
    static int Selected(const QAbstractItemView& list);
    static void Click(QAbstractItemView& list, int row, Qt::KeyboardModifiers modifiers = {});
    static void DoubleClick(QAbstractItemView& list, int row);
    static void ClickHeading(const QAbstractItemView& list, int column);
    /// A press of the right mouse button in the list; comes back when its menu is gone.
    static void RightClick(QAbstractItemView& list);

    /// Waits until the worker has read all directories and the current one shows that many blocks. A directory that is
    /// shown at the very end of another's pass would leave the worker's queue with it.
    bool WaitLoaded(int blocks) const;
    static bool WaitFor(const std::function<bool()>& condition);

private:
    QDialog& dialog;
    const std::function<bool()> workerIsIdle;
};

} // namespace tests
