#pragma once

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace editor {

/// The keywords that a prompt offers in square brackets, "Specify center or [3P/Ttr]: " those two.
QStringList keywordsOf(const QString& prompt);

/// The command line of the window: what was printed above, the present prompt, its keywords to click and a line to type
/// in below. Arrow keys bring earlier lines back; names of commands are completed.
class CommandPanel : public QWidget {
    Q_OBJECT

public:
    explicit CommandPanel(QWidget* parent = nullptr);

    void append(const QString& text);
    void setPrompt(const QString& prompt);
    /// What the key Tab completes to; none while something else than a command is asked for.
    void setCommandNames(const QStringList& commands) { names = commands; }
    /// Enter alone, as the right button of the mouse gives it.
    void enter();
    /// Answers that hold blanks are asked for; otherwise a blank ends the answer like Enter.
    void setWholeLine(bool whole) { wholeLine = whole; }
    /// Key presses that reach the drawing view belong here.
    void takeKey(QKeyEvent* event);

signals:
    /// With the line feed that ends it.
    void entered(const QString& text);
    void cancelled();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void submit(const QString& text);
    void showKeywords(const QStringList& keywords);
    void complete();
    /// What a key does by itself; false where the line edit is to take it.
    bool handleKey(const QKeyEvent& key);

    QPlainTextEdit* history;
    QLabel* promptLabel;
    QHBoxLayout* keywordRow;
    QLineEdit* input;
    QStringList earlier;
    QStringList names;
    QString typed, completed; // what Tab began with, and what it made of it
    qsizetype recalled = 0;
    bool wholeLine = false;
};

} // namespace editor
