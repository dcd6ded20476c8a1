#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace editor {

/// The command line of the window: what was printed above, the present prompt and a line to type in below.
class CommandPanel : public QWidget {
    Q_OBJECT

public:
    explicit CommandPanel(QWidget* parent = nullptr);

    void append(const QString& text);
    void setPrompt(const QString& prompt);
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
    /// What a key does by itself; false where the line edit is to take it.
    bool handleKey(const QKeyEvent& key);

    QPlainTextEdit* history;
    QLabel* promptLabel;
    QLineEdit* input;
    QStringList earlier;
    qsizetype recalled = 0;
    bool wholeLine = false;
};

} // namespace editor
