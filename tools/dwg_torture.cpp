// Reads damaged copies of drawings and counts what they do to the codec.
//
//   dwg-torture [--share N] FILE...
//
// Of each drawing 200 cuts and 2,000 single flipped bits are read, or the N-th part of them. The cases run in a child
// of 512 MiB address space (without that bound in a build with sanitizers, which reserve more); one that takes longer
// than 2 s, or ends the child, is reported and the next child goes on behind it. Exit status 1 when there was one.

#include "tools/torture_cases.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr rlim_t memoryBound = 512u << 20;
constexpr auto timeBound = std::chrono::seconds(2);
constexpr int outOfMemoryStatus = 3;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitized = true;
#elif defined(__has_feature)
constexpr bool sanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool sanitized = false;
#endif

/// What the child tells its parent, in memory that both see.
struct Progress {
    std::atomic<std::size_t> current{0}; ///< number of the case that is being read
    std::atomic<std::size_t> values{0};
    std::atomic<std::int64_t> slowest{0}; ///< in microseconds
};

struct Counts {
    std::size_t cases = 0, crashes = 0, hangs = 0, memory = 0;
    bool bad() const { return crashes + hangs + memory > 0; }
};

[[noreturn]] void runChild(const dwg::Bytes& whole, const tools::DamagePlan& plan, std::size_t first,
                           Progress& progress) {
    if (!sanitized) {
        const rlimit bound{memoryBound, memoryBound};
        setrlimit(RLIMIT_AS, &bound);
    }
    try {
        for (std::size_t i = first; i < plan.count(); ++i) {
            progress.current = i;
            const auto start = Clock::now();
            progress.values += tools::readEverything(tools::damagedCopy(whole, plan, i));
            const auto took = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start).count();
            if (took > progress.slowest)
                progress.slowest = took;
        }
    } catch (const std::bad_alloc&) {
        _exit(outOfMemoryStatus);
    }
    progress.current = plan.count();
    _exit(0);
}

/// Waits for the child; true when it had to be ended since one case took too long.
bool waitFor(pid_t child, const Progress& progress, int& status) {
    std::size_t seen = progress.current;
    auto since = Clock::now();
    while (waitpid(child, &status, WNOHANG) == 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        if (progress.current != seen) {
            seen = progress.current;
            since = Clock::now();
        } else if (Clock::now() - since > timeBound * (sanitized ? 10 : 1)) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return true;
        }
    }
    return false;
}

Counts torture(const char* path, const dwg::Bytes& whole, const tools::DamagePlan& plan, Progress& progress) {
    Counts counts;
    counts.cases = plan.count();
    std::size_t first = 0;
    progress.current = 0;
    while (first < plan.count()) {
        const pid_t child = fork();
        if (child < 0) {
            std::perror("fork");
            std::exit(2);
        }
        if (child == 0)
            runChild(whole, plan, first, progress);
        int status = 0;
        const char* what = nullptr;
        if (waitFor(child, progress, status)) {
            ++counts.hangs;
            what = "took more than 2 s";
        } else if (WIFEXITED(status) && WEXITSTATUS(status) == outOfMemoryStatus) {
            ++counts.memory;
            what = "needed more than 512 MiB";
        } else if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            ++counts.crashes;
            what = "crashed";
        }
        if (what == nullptr)
            break;
        const std::size_t number = progress.current;
        std::printf("%s: case %zu %s\n", path, number, what);
        first = number + 1;
    }
    return counts;
}

} // namespace

int main(int argc, char** argv) {
    std::size_t share = 1;
    std::vector<const char*> files;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--share") == 0 && i + 1 < argc)
            share = std::max<std::size_t>(std::strtoul(argv[++i], nullptr, 10), 1);
        else
            files.push_back(argv[i]);
    }
    if (files.empty()) {
        std::fputs("usage: dwg-torture [--share N] FILE...\n", stderr);
        return 2;
    }
    void* const memory = mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        std::perror("mmap");
        return 2;
    }
    auto& progress = *new (memory) Progress;

    tools::DamagePlan plan;
    plan.cuts = std::max<std::size_t>(plan.cuts / share, 1);
    plan.flips = std::max<std::size_t>(plan.flips / share, 1);
    Counts total;
    for (const char* path : files) {
        const auto source = dwg::openSource(path);
        const auto whole = source ? (*source)->bytes(0, (*source)->size()) : dwg::Result<dwg::Bytes>(source.error());
        if (!whole) {
            std::fprintf(stderr, "%s: %s\n", path, whole.error().reason.c_str());
            return 2;
        }
        progress.slowest = 0;
        const Counts counts = torture(path, *whole, plan, progress);
        std::printf("%s: %zu cases, %zu crashed, %zu hung, %zu over memory, slowest %.1f ms\n", path, counts.cases,
                    counts.crashes, counts.hangs, counts.memory, static_cast<double>(progress.slowest.load()) / 1000);
        std::fflush(stdout);
        total.cases += counts.cases;
        total.crashes += counts.crashes;
        total.hangs += counts.hangs;
        total.memory += counts.memory;
    }
    std::printf("all: %zu cases, %zu crashed, %zu hung, %zu over memory\n", total.cases, total.crashes, total.hangs,
                total.memory);
    return total.bad() ? 1 : 0;
}
