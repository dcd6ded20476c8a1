#pragma once

#include "editor/application/button_bar.h"

#include <QToolBar>

class QHBoxLayout;

namespace editor {

/// The ribbon: panels of large buttons with their names, each panel with its caption below. The window's own actions
/// come first, the buttons of applications in a panel of their own, which is there when it has any.
class Ribbon : public QToolBar {
    Q_OBJECT

public:
    explicit Ribbon(QWidget* parent);

    void addPanel(const QString& caption, const QList<QAction*>& actions);
    void showButtons(const std::vector<Button>& buttons);

signals:
    /// The command of an application's button, as the command line takes it.
    void chosen(const QString& command);

private:
    QWidget* makePanel(const QString& caption, QHBoxLayout*& row);

    QHBoxLayout* panels;
    QWidget* addIns;
    QHBoxLayout* addInRow = nullptr;
};

/// The toolbar for buttons of applications: pictures only, the names as tips. It is there when it has any.
class ButtonToolBar : public QToolBar {
    Q_OBJECT

public:
    explicit ButtonToolBar(QWidget* parent);

    void showButtons(const std::vector<Button>& buttons);

signals:
    void chosen(const QString& command);
};

} // namespace editor
