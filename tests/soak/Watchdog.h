#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

/// Ends the process when no beat comes for too long: prints what was under way and the stack of every thread.
class Watchdog {
public:
    explicit Watchdog(std::chrono::seconds patience);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    /// Something went on; `doing` is a text that lives as long as the process.
    void Beat(const char* doing) {
        current = doing;
        ++beats;
    }
    /// Prints the stacks and ends the process.
    [[noreturn]] static void GiveUp(const std::string& why);

private:
    void Watch();

    const std::chrono::seconds longest;
    std::atomic<const char*> current{"starting"};
    std::atomic<unsigned> beats{0};
    std::atomic<bool> ended{false};
    std::thread watcher;
};
