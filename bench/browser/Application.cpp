#include "bench/browser/Application.h"

#include "tessaro/platform/MainThread.h"

#include <QFile>
#include <QTemporaryFile>

#include <clocale>
#include <cstring>
#include <ctime>

namespace {

double ThreadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

} // namespace

Application& Application::Get() {
    static int count = 1;
    static char name[] = "bench_browser";
    static char* arguments[] = {name, nullptr};
    static Application* const made = [] {
        static QTemporaryFile screen(QStringLiteral("/tmp/bench-screen-XXXXXX.json"));
        if (screen.open()) {
            screen.write(
                "{ \"synchronousWindowSystemEvents\": false, \"windowFrameMargins\": false, \"screens\": [ { "
                "\"name\": \"Screen\", \"x\": 0, \"y\": 0, \"width\": 1920, \"height\": 1200, \"logicalDpi\": 96, "
                "\"logicalBaseDpi\": 96, \"dpr\": 1 } ] }\n");
            screen.flush();
        }
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(screen.fileName()));
        auto* const application = new Application(count, arguments);
        std::setlocale(LC_NUMERIC, "C");
        platform::SetMainThread();
        return application;
    }();
    return *made;
}

bool Application::notify(QObject* receiver, QEvent* event) {
    const bool service = onService && event->type() == QEvent::MetaCall &&
                         std::strcmp(receiver->metaObject()->className(), "CallReceiver") == 0;
    if (!service)
        return QApplication::notify(receiver, event);
    onService(-1);
    const double begin = ThreadSeconds();
    const bool result = QApplication::notify(receiver, event);
    onService(ThreadSeconds() - begin);
    return result;
}
