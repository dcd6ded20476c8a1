#include "editor/window/batch.h"

#include "editor/application/console.h"
#include "editor/window/main_window.h"

#include <QApplication>
#include <QDialog>
#include <QEventLoop>

#include <cstdio>
#include <cstdlib>

namespace editor {

namespace {

constexpr int pollInterval = 20;
constexpr int patience = 15000;      // for a control or row that is not there yet
constexpr int waitLimit = 120000;    // for what a wait-until line waits for
constexpr int idleTime = 700;        // a window that looked the same for this long is idle
constexpr int unansweredTime = 3000; // for a window that no line has acted on
constexpr int closingTime = 30000;   // for a window that a line has acted on, or that was told to close
constexpr int closingsTried = 3;

} // namespace

BatchUser::BatchUser(const QString& script, MainWindow& mainWindow, Console& theConsole)
    : main(mainWindow), console(theConsole) {
    int number = 0;
    QStringList all = script.split('\n');
    if (all.last().isEmpty())
        all.removeLast();
    for (QString& text : all) {
        ++number;
        if (text.endsWith('\r'))
            text.chop(1);
        if (!text.startsWith(';'))
            lines.push_back({number, text});
    }
    connect(&timer, &QTimer::timeout, this, &BatchUser::poll);
    timer.start(pollInterval);
}

BatchUser::~BatchUser() = default;

UserEvent BatchUser::next(const Prompt&) {
    // Posted work, such as a window's repainting, is done between two answers, as it is with a person at work.
    QApplication::processEvents();
    while (actionIsNext()) {
        QEventLoop own;
        QEventLoop* const outer = std::exchange(loop, &own);
        own.exec();
        loop = outer;
        if (auto event = main.takeWaiting())
            return *event;
    }
    if (lines.empty())
        return {UserEvent::Kind::End, {}, {}};
    const std::wstring text = lines.front().text.toStdWString();
    lines.pop_front();
    return {UserEvent::Kind::Text, text + L"\n", {}};
}

void BatchUser::poll() {
    QWidget* const up = QApplication::activeModalWidget();
    if (up != modal) {
        modal = up;
        modalTouched = false;
        closings = 0;
        sinceModal.start();
    }
    if (actionIsNext()) {
        if (up != nullptr)
            perform(*up);
        else if (loop != nullptr)
            perform(main);
    } else if (up != nullptr) {
        if (sinceModal.hasExpired(modalTouched || closings > 0 ? closingTime : unansweredTime))
            closeUnanswered(*up);
    }
    if (loop != nullptr && up == nullptr && (!actionIsNext() || main.hasWaiting()))
        loop->quit();
}

void BatchUser::perform(QWidget& window) {
    if (!lineBegun) {
        lineBegun = true;
        sinceLine.start();
        lastLook = QImage();
    }
    const auto action = WindowAction::parse(lines.front().text.mid(1));
    const ActionResult result =
        action ? attempt(window, *action) : ActionResult::failed(QStringLiteral("the line can't be read"));
    const bool waits = action && action->verb.startsWith("wait");
    if (result.kind == ActionResult::Kind::Again && !sinceLine.hasExpired(waits ? waitLimit : patience))
        return;
    console.printLine(lines.front().text.toStdWString());
    if (result.kind != ActionResult::Kind::Done)
        fault(QString("line %1: %2").arg(lines.front().number).arg(result.reason));
    modalTouched = true;
    sinceModal.start();
    finishLine();
}

void BatchUser::finishLine() {
    lines.pop_front();
    lineBegun = false;
}

ActionResult BatchUser::attempt(QWidget& window, const WindowAction& action) {
    if (action.verb == "wait")
        return waitFor(action);
    if (action.verb == "wait-until" && action.words == QStringList("idle"))
        return waitForIdle(window);
    if (&window == &main && (action.verb == "close" || action.verb == "answer"))
        return ActionResult::again("no window is up");
    return act(window, action);
}

ActionResult BatchUser::waitFor(const WindowAction& action) {
    bool number = false;
    const int time = action.words.size() == 1 ? action.words[0].toInt(&number) : 0;
    if (!number || time < 0 || time > waitLimit)
        return ActionResult::failed(QString("wait needs milliseconds up to %1").arg(waitLimit));
    return sinceLine.hasExpired(time) ? ActionResult::done() : ActionResult::again(QString());
}

ActionResult BatchUser::waitForIdle(QWidget& window) {
    const QImage look = window.grab().toImage();
    if (look != lastLook) {
        lastLook = look;
        sinceLook.start();
    }
    return sinceLook.hasExpired(idleTime) ? ActionResult::done()
                                          : ActionResult::again(QStringLiteral("the window does not come to rest"));
}

// Closing may take its time; a window that stays all the same would keep the program for good.
void BatchUser::closeUnanswered(QWidget& window) {
    if (closings == closingsTried) {
        console.printLine(L"The window stays. The run ends here.");
        std::fflush(stdout);
        std::_Exit(EXIT_FAILURE);
    }
    if (closings++ == 0)
        fault("no line answers the window \"" + windowText(window) + "\"");
    sinceModal.start();
    QMetaObject::invokeMethod(
        &window,
        [&window] {
            if (auto* const dialog = qobject_cast<QDialog*>(&window))
                dialog->reject();
            else
                window.close();
        },
        Qt::QueuedConnection);
}

void BatchUser::fault(const QString& text) {
    faultTexts.push_back(text.toStdWString());
    console.printLine(L"! " + faultTexts.back());
}

} // namespace editor
