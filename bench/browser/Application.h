#pragma once

#include <QApplication>

#include <functional>

/// The application of the browser's measures, without a display. It can watch each service that the main thread does
/// for another thread.
class Application : public QApplication {
public:
    /// Made at the first call.
    static Application& Get();

    /// Called before (with a negative time) and after each service, with the seconds that it took of the main thread's
    /// own time, so that other programs on the machine do not count.
    std::function<void(double seconds)> onService;

    bool notify(QObject* receiver, QEvent* event) override;

private:
    using QApplication::QApplication;
};
