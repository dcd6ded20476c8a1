#include "tessaro/platform/MainThread.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

namespace platform {
namespace {

/// Falling asleep and being woken costs a thread about as much as this; most calls are served before.
constexpr std::chrono::microseconds kWatched{60};

struct Call {
    const std::function<void()>& function;
    std::exception_ptr thrown;
    std::atomic<bool> done{false}; ///< from then on the call is its caller's alone
};

/// Never destroyed: a thread may still wait in it when the process ends.
struct HandOver {
    std::atomic<std::thread::id> mainThread{std::this_thread::get_id()};

    std::mutex lock; // guards what follows
    std::deque<Call*> waiting;
    std::uint64_t wakeUps = 0;
    std::shared_ptr<const std::function<void()>> wakeUp;
    int wakeUpsUnderWay = 0;
    std::condition_variable posted; ///< a call waits, or WakeMainThread
    std::condition_variable served; ///< a call is done, or a wake-up function has returned
};

// The thread that loads this code is the main thread until another one is named.
HandOver& handOver = *new HandOver;

/// Carries out the call at the head of the queue, with the lock released meanwhile.
void ServeHead(std::unique_lock<std::mutex>& guard) {
    Call* const call = handOver.waiting.front();
    handOver.waiting.pop_front();
    guard.unlock();
    try {
        call->function();
    } catch (...) {
        call->thrown = std::current_exception();
    }
    guard.lock();
    call->done = true;
    handOver.served.notify_all();
}

/// Waits awake for a short while, with the lock released meanwhile.
void Watch(std::unique_lock<std::mutex>& guard, const Call& call) {
    static const bool useful = std::thread::hardware_concurrency() > 1;
    guard.unlock();
    const auto end = std::chrono::steady_clock::now() + kWatched;
    while (useful && !call.done && std::chrono::steady_clock::now() < end)
        std::this_thread::yield();
    guard.lock();
}

} // namespace

void SetMainThread() {
    handOver.mainThread = std::this_thread::get_id();
}

bool IsMainThread() {
    return handOver.mainThread == std::this_thread::get_id();
}

void CallOnMainThread(const std::function<void()>& function) {
    if (IsMainThread()) {
        function();
        return;
    }
    Call call{function, nullptr};
    std::unique_lock guard(handOver.lock);
    handOver.waiting.push_back(&call);
    handOver.posted.notify_all();
    if (const auto wakeUp = handOver.wakeUp) {
        ++handOver.wakeUpsUnderWay;
        guard.unlock();
        (*wakeUp)();
        guard.lock();
        --handOver.wakeUpsUnderWay;
        handOver.served.notify_all();
    }
    Watch(guard, call);
    handOver.served.wait(guard, [&] { return call.done.load(); });
    guard.unlock();
    if (call.thrown)
        std::rethrow_exception(call.thrown);
}

void ServeMainThreadCalls() {
    std::unique_lock guard(handOver.lock);
    // What arrives meanwhile brings its own wake-up, so that a busy worker does not hold the event loop up.
    for (std::size_t count = handOver.waiting.size(); count > 0 && !handOver.waiting.empty(); --count)
        ServeHead(guard);
}

void ServeMainThreadUntil(const std::function<bool()>& condition) {
    std::unique_lock guard(handOver.lock);
    for (;;) {
        const std::uint64_t seen = handOver.wakeUps;
        guard.unlock();
        if (condition())
            return;
        guard.lock();
        handOver.posted.wait(guard, [&] { return !handOver.waiting.empty() || handOver.wakeUps != seen; });
        if (!handOver.waiting.empty())
            ServeHead(guard);
    }
}

void WakeMainThread() {
    const std::lock_guard guard(handOver.lock);
    ++handOver.wakeUps;
    handOver.posted.notify_all();
}

void SetMainThreadWakeUp(std::function<void()> wakeUp) {
    std::unique_lock guard(handOver.lock);
    handOver.wakeUp = wakeUp ? std::make_shared<const std::function<void()>>(std::move(wakeUp)) : nullptr;
    handOver.served.wait(guard, [] { return handOver.wakeUpsUnderWay == 0; });
    const auto installed = handOver.wakeUp;
    const bool callsWait = !handOver.waiting.empty();
    guard.unlock();
    if (installed && callsWait)
        (*installed)();
}

} // namespace platform
