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
    /// Names that an answer at the command prompt is completed to.
    void setCommandNames(const QStringList& names);
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
    /// What a key does by itself; false where the line edit is to take it.
    bool handleKey(const QKeyEvent& key);

    QPlainTextEdit* history;
    QLabel* promptLabel;
    QHBoxLayout* keywordRow;
    QLineEdit* input;
    QStringList earlier;
    qsizetype recalled = 0;
    bool wholeLine = false;
};

} // namespace editor
