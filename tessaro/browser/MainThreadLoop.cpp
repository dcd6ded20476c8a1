#include "tessaro/browser/MainThreadLoop.h"

#include "tessaro/browser/QtUserInterface.h"
#include "tessaro/platform/MainThread.h"

#include <QObject>

namespace {

/// Answers the calls that wait. The call that wakes it up goes through Qt's own event: nothing that another thread
/// made is touched here, so that a thread checker has only Qt to trust.
class CallReceiver : public QObject {
    Q_OBJECT

public slots:
    void Serve() { platform::ServeMainThreadCalls(); }
};

} // namespace

void InstallMainThreadLoop() {
    // Never destroyed: a thread that is blocked at the end of the process may still hold it.
    static CallReceiver* const receiver = [] {
        auto* made = new CallReceiver;
        platform::SetMainThreadWakeUp([made] { QMetaObject::invokeMethod(made, "Serve", Qt::QueuedConnection); });
        return made;
    }();
    static_cast<void>(receiver);
    static QtUserInterface* const services = new QtUserInterface;
    platform::SetUserInterface(services);
}

#include "MainThreadLoop.moc"
