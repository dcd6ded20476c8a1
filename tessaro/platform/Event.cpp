#include "tessaro/platform/Event.h"

namespace platform {

void Event::SetEvent() {
    const std::lock_guard guard(lock);
    signalled = true;
    changed.notify_all();
}

void Event::ResetEvent() {
    const std::lock_guard guard(lock);
    signalled = false;
}

void Event::Wait() {
    std::unique_lock guard(lock);
    changed.wait(guard, [this] { return signalled; });
    if (kind == Kind::AutoReset)
        signalled = false;
}

bool Event::Wait(std::chrono::milliseconds limit) {
    std::unique_lock guard(lock);
    if (!changed.wait_for(guard, limit, [this] { return signalled; }))
        return false;
    if (kind == Kind::AutoReset)
        signalled = false;
    return true;
}

} // namespace platform
