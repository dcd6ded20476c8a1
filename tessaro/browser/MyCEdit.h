#pragma once

#include <QLineEdit>

#include <functional>

/// Guards against a search running inside itself.
extern bool quickFindBusy;
extern bool quickFindNextBusy;

/// The Quick Find box. It keeps Return for itself, so that Enter looks for the next match and never presses the default
/// button; Tab and Escape are posted to its parent and act on the dialog.
class MyCEdit : public QLineEdit {
public:
    explicit MyCEdit(QWidget* parent);

    std::function<void()> onChange; ///< each change of the text, under the wait cursor
    std::function<void()> onReturn; ///< likewise

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Run(bool& busy, const std::function<void()>& action);
};
