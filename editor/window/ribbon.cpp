#include "editor/window/ribbon.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QToolButton>

namespace editor {

namespace {

constexpr QSize pictureSize(32, 32);

QIcon iconOf(const Button& button) {
    return QPixmap::fromImage(QImage::fromData(button.picture.data(), static_cast<int>(button.picture.size()), "PNG"));
}

QString qtText(const std::wstring& text) {
    return QString::fromStdWString(text);
}

QToolButton* largeButton(QWidget* parent) {
    auto* const button = new QToolButton(parent);
    button->setAutoRaise(true);
    button->setIconSize(pictureSize);
    button->setMinimumHeight(56);
    return button;
}

} // namespace

Ribbon::Ribbon(QWidget* parent) : QToolBar("Ribbon", parent) {
    setObjectName("ribbon");
    setMovable(false);
    auto* const content = new QWidget(this);
    panels = new QHBoxLayout(content);
    panels->setContentsMargins(4, 2, 4, 0);
    addIns = makePanel("Add-ins", addInRow);
    addIns->setObjectName("ribbonAddIns");
    addIns->hide();
    panels->addStretch();
    addWidget(content);
}

QWidget* Ribbon::makePanel(const QString& caption, QHBoxLayout*& row) {
    auto* const panel = new QWidget(this);
    auto* const column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 8, 0);
    column->setSpacing(1);
    row = new QHBoxLayout;
    row->setSpacing(2);
    column->addLayout(row);
    auto* const label = new QLabel(caption, panel);
    label->setAlignment(Qt::AlignHCenter);
    label->setForegroundRole(QPalette::PlaceholderText);
    column->addWidget(label);
    panels->addWidget(panel);
    return panel;
}

void Ribbon::addPanel(const QString& caption, const QList<QAction*>& actions) {
    QHBoxLayout* row = nullptr;
    QWidget* const panel = makePanel(caption, row);
    for (QAction* const action : actions) {
        QToolButton* const button = largeButton(panel);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        button->setDefaultAction(action);
        row->addWidget(button);
    }
    panels->removeWidget(panel);
    panels->insertWidget(panels->indexOf(addIns), panel);
}

void Ribbon::showButtons(const std::vector<Button>& buttons) {
    // A button may be taken out by what it started.
    for (QToolButton* const old : addIns->findChildren<QToolButton*>()) {
        old->hide();
        old->setParent(nullptr);
        old->deleteLater();
    }
    for (const Button& button : buttons) {
        QToolButton* const made = largeButton(addIns);
        made->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        made->setIcon(iconOf(button));
        made->setText(qtText(button.title));
        made->setToolTip(qtText(button.title));
        connect(made, &QToolButton::clicked, this, [this, command = qtText(button.command)] { emit chosen(command); });
        addInRow->addWidget(made);
    }
    addIns->setVisible(!buttons.empty());
}

ButtonToolBar::ButtonToolBar(QWidget* parent) : QToolBar("Applications", parent) {
    setObjectName("applicationBar");
    setIconSize(pictureSize);
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    hide();
}

void ButtonToolBar::showButtons(const std::vector<Button>& buttons) {
    for (QAction* const old : actions()) {
        removeAction(old);
        old->deleteLater();
    }
    for (const Button& button : buttons) {
        QAction* const action = addAction(iconOf(button), qtText(button.title));
        connect(action, &QAction::triggered, this, [this, command = qtText(button.command)] { emit chosen(command); });
    }
    setVisible(!buttons.empty());
}

} // namespace editor
