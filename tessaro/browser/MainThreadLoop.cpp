#include "tessaro/browser/MainThreadLoop.h"

#include "tessaro/browser/QtUserInterface.h"
#include "tessaro/platform/MainThread.h"

#include <QCoreApplication>
#include <QEvent>

namespace {

/// Takes the one event that a waiting call posts.
class CallReceiver : public QObject {
public:
    void WakeUp() { QCoreApplication::postEvent(this, new QEvent(wakeUpEvent), Qt::HighEventPriority); }

protected:
    bool event(QEvent* event) override {
        if (event->type() != wakeUpEvent)
            return QObject::event(event);
        platform::ServeMainThreadCalls();
        return true;
    }

private:
    const QEvent::Type wakeUpEvent = static_cast<QEvent::Type>(QEvent::registerEventType());
};

} // namespace

void InstallMainThreadLoop() {
    // Never destroyed: a thread that is blocked at the end of the process may still hold it.
    static CallReceiver* const receiver = [] {
        auto* made = new CallReceiver;
        platform::SetMainThreadWakeUp([made] { made->WakeUp(); });
        return made;
    }();
    static_cast<void>(receiver);
    static QtUserInterface* const services = new QtUserInterface;
    platform::SetUserInterface(services);
}
