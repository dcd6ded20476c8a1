#include "editor/window/command_panel.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QToolButton>
#include <QVBoxLayout>

namespace editor {

namespace {
constexpr int historyLines = 5000;
constexpr qsizetype recallLimit = 200;
constexpr qsizetype lineLimit = 2000; // characters of a line; the layout of an endless one would take minutes

QString withShortLines(const QString& text) {
    if (text.size() <= lineLimit)
        return text;
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines) {
        if (line.size() > lineLimit)
            line = line.left(lineLimit) + QStringLiteral("...");
    }
    return lines.join(QLatin1Char('\n'));
}
} // namespace

QStringList keywordsOf(const QString& prompt) {
    static const QRegularExpression brackets(QStringLiteral("\\[([^\\[\\]]*)\\]"));
    const QString inside = brackets.match(prompt).captured(1);
    QStringList keywords;
    for (const QString& part : inside.split(QLatin1Char('/'), Qt::SkipEmptyParts))
        keywords << part.trimmed();
    keywords.removeAll(QString());
    return keywords;
}

CommandPanel::CommandPanel(QWidget* parent)
    : QWidget(parent), history(new QPlainTextEdit(this)), promptLabel(new QLabel(this)), keywordRow(new QHBoxLayout),
      input(new QLineEdit(this)) {
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
    keywordRow->setSpacing(2);
    line->addLayout(keywordRow);
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
    end.insertText(withShortLines(text));
    history->setTextCursor(end);
    history->ensureCursorVisible();
}

void CommandPanel::setPrompt(const QString& prompt) {
    promptLabel->setText(prompt.trimmed());
    showKeywords(keywordsOf(prompt));
}

void CommandPanel::showKeywords(const QStringList& keywords) {
    while (QLayoutItem* item = keywordRow->takeAt(0)) {
        // A button may be the sender of the click that is being answered.
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
    for (const QString& keyword : keywords) {
        auto* button = new QToolButton(this);
        button->setText(keyword);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::NoFocus);
        button->setToolTip("Answer \"" + keyword + "\"");
        connect(button, &QToolButton::clicked, this, [this, keyword] { submit(keyword); });
        keywordRow->addWidget(button);
    }
}

void CommandPanel::complete() {
    // Tab after Tab goes through the names that begin like what was typed.
    const QString shown = input->text();
    const bool goesOn = !completed.isEmpty() && shown == completed;
    if (!goesOn)
        typed = shown;
    QStringList matches;
    for (const QString& name : names)
        if (name.startsWith(typed, Qt::CaseInsensitive))
            matches << name;
    if (typed.isEmpty() || matches.isEmpty())
        return;
    const qsizetype next = goesOn ? (matches.indexOf(completed) + 1) % matches.size() : 0;
    completed = matches[next];
    input->setText(completed);
}

void CommandPanel::enter() {
    submit(input->text());
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
    case Qt::Key_Tab:
        complete();
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
