#pragma once

#include "editor/application/services.h"
#include "editor/window/automation.h"

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <deque>
#include <functional>
#include <string>
#include <vector>

class QEventLoop;

namespace editor {

class Console;
class MainWindow;

/// The user of a batch run: a script's lines. Its lines of text answer the command line; its lines that begin with ">"
/// act on the modal window that is up, or on the main window where none is. A modal window that no such line answers is
/// closed, and the run fails.
class BatchUser : public QObject, public UserInput {
    Q_OBJECT

public:
    BatchUser(const QString& script, MainWindow& mainWindow, Console& console);
    ~BatchUser() override;

    UserEvent next(const Prompt& prompt) override;
    const std::vector<std::wstring>& faults() const { return faultTexts; }

private:
    struct Line {
        int number;
        QString text;
        bool isAction() const { return text.startsWith('>'); }
    };

    bool actionIsNext() const { return !lines.empty() && lines.front().isAction(); }
    void poll();
    void perform(QWidget& window);
    ActionResult attempt(QWidget& window, const WindowAction& action);
    ActionResult waitFor(const WindowAction& action);
    ActionResult waitForIdle(QWidget& window);
    void finishLine();
    void closeUnanswered(QWidget& window);
    void fault(const QString& text);

    MainWindow& main;
    Console& console;
    std::deque<Line> lines;
    std::vector<std::wstring> faultTexts;
    QTimer timer;
    QEventLoop* loop = nullptr; // of a prompt that waits for actions on the main window
    bool lineBegun = false;
    QElapsedTimer sinceLine; // since the line in front was begun
    QImage lastLook;
    QElapsedTimer sinceLook; // since the window changed its look
    QPointer<QWidget> modal;
    bool modalTouched = false;
    int closings = 0;
    QElapsedTimer sinceModal; // since it came up, was acted on, or was told to close
};

} // namespace editor
