#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace platform {

/// A flag that threads wait for. An auto-reset event is cleared by the one wait that it ends.
class Event {
public:
    enum class Kind { AutoReset, ManualReset };
    explicit Event(Kind eventKind) : kind(eventKind) {}

    void SetEvent();
    void ResetEvent();
    void Wait();
    /// False where the time ran out first.
    bool Wait(std::chrono::milliseconds limit);

private:
    const Kind kind;
    std::mutex lock;
    std::condition_variable changed;
    bool signalled = false;
};

} // namespace platform
