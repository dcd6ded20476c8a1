#include "editor/window/command_panel.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace editor {

namespace {
constexpr int historyLines = 5000;
constexpr qsizetype recallLimit = 200;
} // namespace

CommandPanel::CommandPanel(QWidget* parent)
    : QWidget(parent), history(new QPlainTextEdit(this)), promptLabel(new QLabel(this)), input(new QLineEdit(this)) {
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    history->setObjectName("commandHistory");
    history->setReadOnly(true);
    history->setMaximumBlockCount(historyLines);
    history->setFont(fixed);
    history->setFocusPolicy(Qt::ClickFocus);
    history->setFrameShape(QFrame::NoFrame);
    promptLabel->setObjectName("commandPrompt");
    promptLabel->setFont(fixed);
    input->setObjectName("commandInput");
    input->setFont(fixed);
    input->setFrame(false);
    input->installEventFilter(this);

    auto* line = new QHBoxLayout;
    line->setContentsMargins(6, 2, 6, 4);
    line->addWidget(promptLabel);
    line->addWidget(input, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(history, 1);
    layout->addLayout(line);
    setFocusProxy(input);
}

void CommandPanel::append(const QString& text) {
    QTextCursor end = history->textCursor();
    end.movePosition(QTextCursor::End);
    end.insertText(text);
    history->setTextCursor(end);
    history->ensureCursorVisible();
}

void CommandPanel::setPrompt(const QString& prompt) {
    promptLabel->setText(prompt.trimmed());
}

void CommandPanel::takeKey(QKeyEvent* event) {
    input->setFocus();
    // The key isn't sent on: what the line edit leaves unused would come back to the window.
    if (!handleKey(*event) && !event->text().isEmpty() && event->text().at(0).isPrint())
        input->insert(event->text());
}

void CommandPanel::submit(const QString& text) {
    if (!text.isEmpty() && (earlier.isEmpty() || earlier.last() != text))
        earlier << text;
    if (earlier.size() > recallLimit)
        earlier.removeFirst();
    recalled = earlier.size();
    input->clear();
    emit entered(text + '\n');
}

bool CommandPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched != input || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    return handleKey(*static_cast<QKeyEvent*>(event));
}

bool CommandPanel::handleKey(const QKeyEvent& key) {
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        submit(input->text());
        return true;
    case Qt::Key_Space:
        // A blank inside an expression or a quoted path belongs to it.
        if (wholeLine || input->text().startsWith('(') || input->text().startsWith('"'))
            return false;
        submit(input->text());
        return true;
    case Qt::Key_Escape:
        input->clear();
        emit cancelled();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down: {
        const qsizetype wanted = recalled + (key.key() == Qt::Key_Up ? -1 : 1);
        if (wanted < 0 || wanted > earlier.size())
            return true;
        recalled = wanted;
        input->setText(wanted == earlier.size() ? QString() : earlier[wanted]);
        return true;
    }
    default:
        return false;
    }
}

} // namespace editor
