#include "tests/soak/Watchdog.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <execinfo.h>
#include <filesystem>
#include <semaphore.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr int kDumpSignal = SIGUSR2;
constexpr int kDeepest = 64;

sem_t dumped;

void DumpOwnStack(int) {
    std::array<void*, kDeepest> frames{};
    const int count = backtrace(frames.data(), kDeepest);
    backtrace_symbols_fd(frames.data(), count, STDERR_FILENO);
    sem_post(&dumped);
}

void DumpStackOf(pid_t thread) {
    std::fprintf(stderr, "thread %d\n", static_cast<int>(thread));
    timespec limit{};
    clock_gettime(CLOCK_REALTIME, &limit);
    limit.tv_sec += 2;
    if (syscall(SYS_tgkill, getpid(), thread, kDumpSignal) != 0 || sem_timedwait(&dumped, &limit) != 0)
        std::fprintf(stderr, "  gives no answer\n");
}

} // namespace

Watchdog::Watchdog(std::chrono::seconds patience) : longest(patience) {
    // The first call loads a library, which a signal handler must not.
    std::array<void*, 1> frame{};
    backtrace(frame.data(), 1);
    sem_init(&dumped, 0, 0);
    std::signal(kDumpSignal, DumpOwnStack);
    watcher = std::thread([this] { Watch(); });
}

Watchdog::~Watchdog() {
    ended = true;
    watcher.join();
}

void Watchdog::Watch() {
    auto last = std::chrono::steady_clock::now();
    unsigned seen = beats;
    while (!ended) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        const auto now = std::chrono::steady_clock::now();
        if (beats != seen) {
            seen = beats;
            last = now;
        }
        if (now - last > longest)
            GiveUp(std::string("nothing goes on; last: ") + current.load());
    }
}

void Watchdog::GiveUp(const std::string& why) {
    std::fprintf(stderr, "%s\n", why.c_str());
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/task"))
        DumpStackOf(static_cast<pid_t>(std::atoi(entry.path().filename().c_str())));
    std::_Exit(3);
}
