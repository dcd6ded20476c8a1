#include "bench/Harness.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

constexpr int kRuns = 7;
constexpr double kTolerance = 1.1;

struct Group {
    const char* name;
    void (*measure)(Table&);
};

std::vector<Group>& Groups() {
    static std::vector<Group> groups;
    return groups;
}

double Now(Clock clock) {
    timespec time{};
    clock_gettime(clock == Clock::wall ? CLOCK_MONOTONIC : CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double Seconds(const Run& run, Clock clock) {
    if (run.prepare)
        run.prepare();
    const double start = Now(clock);
    run.timed();
    return Now(clock) - start;
}

double MedianOf(std::array<double, kRuns> times) {
    std::sort(times.begin(), times.end());
    return times[kRuns / 2];
}

std::string Milliseconds(double seconds) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.3f ms", seconds * 1e3);
    return text.data();
}

} // namespace

double Median(const Run& run, Clock clock) {
    Seconds(run, clock);
    std::array<double, kRuns> times{};
    for (double& time : times)
        time = Seconds(run, clock);
    return MedianOf(times);
}

void Table::Ratio(const std::string& name, double bound, const Run& work, const Run& floor, Clock clock) {
    Seconds(work, clock);
    Seconds(floor, clock);
    std::array<double, kRuns> workTimes{}, floorTimes{};
    for (int run = 0; run < kRuns; ++run) {
        workTimes[static_cast<std::size_t>(run)] = Seconds(work, clock);
        floorTimes[static_cast<std::size_t>(run)] = Seconds(floor, clock);
    }
    const double workTime = MedianOf(workTimes), floorTime = MedianOf(floorTimes);
    Print(name, workTime / floorTime, "times", bound,
          "work " + Milliseconds(workTime) + ", floor " + Milliseconds(floorTime));
}

void Table::Value(const std::string& name, double value, const std::string& unit, double bound) {
    Print(name, value, unit, bound, "");
}

void Table::Note(const std::string& name, double value, const std::string& unit) {
    std::printf("%s: %.3f %s\n", name.c_str(), value, unit.c_str());
    std::fflush(stdout);
}

void Table::Print(const std::string& name, double value, const std::string& unit, double bound,
                  const std::string& detail) {
    const bool held = value <= bound;
    std::printf("%s: %.3f %s (bound %g) %s%s%s\n", name.c_str(), value, unit.c_str(), bound, held ? "ok" : "MISSED",
                detail.empty() ? "" : "  ", detail.c_str());
    std::fflush(stdout);
    // Also where it is no number.
    broken |= !(value <= bound * kTolerance);
}

Rows::Rows(const char* name, void (*measure)(Table&)) {
    Groups().push_back({name, measure});
}

} // namespace bench

namespace {

/// Measures a group in a process of its own, since what one leaves behind (loaded libraries, memory, raised flags)
/// would change the next one's figures. False where a bound was missed or the process did not come to its end.
bool IsKept(const bench::Group& group) {
    const pid_t child = fork();
    if (child == 0) {
        bench::Table table;
        group.measure(table);
        std::exit(table.Result());
    }
    int status = -1;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

} // namespace

int main(int count, char** arguments) {
    int measured = 0;
    bool kept = true;
    for (const auto& group : bench::Groups()) {
        const auto isName = [&](const char* argument) { return std::strcmp(argument, group.name) == 0; };
        if (count > 1 && std::none_of(arguments + 1, arguments + count, isName))
            continue;
        if (!IsKept(group)) {
            std::printf("%s: not all as it should be\n", group.name);
            kept = false;
        }
        ++measured;
    }
    if (measured == 0) {
        std::fprintf(stderr, "no such rows; there are:");
        for (const auto& group : bench::Groups())
            std::fprintf(stderr, " %s", group.name);
        std::fprintf(stderr, "\n");
        return 2;
    }
    return kept ? 0 : 1;
}
