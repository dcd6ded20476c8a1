// The time and memory that a process takes to read a large drawing, beside another reader's where PEER_READER names
// one: a program that reads the drawing that is its only argument.

#include "bench/Harness.h"
#include "bench/drawings/LargeDrawing.h"
#include "tests/support/ProgramCost.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

constexpr std::size_t kRuns = 7;

struct Costs {
    std::array<double, kRuns> seconds{}, mebibytes{};

    bool Take(std::size_t run, const std::vector<std::string>& command) {
        constexpr double kKibibytes = 1024;
        const auto cost = tests::runProgram(command);
        if (!cost || cost->status != 0)
            return false;
        seconds[run] = cost->seconds;
        mebibytes[run] = static_cast<double>(cost->kibibytes) / kKibibytes;
        return true;
    }
};

double MedianOf(std::array<double, kRuns> values) {
    std::sort(values.begin(), values.end());
    return values[kRuns / 2];
}

void Measure(bench::Table& table) {
    constexpr double kMilliseconds = 1e3;
    const std::filesystem::path file = LargeDrawing();
    if (file.empty())
        return;
    const std::vector<std::string> ours{TESSARO_BIN_DIR "/drawing-facts", file.string()};
    const char* const peer = std::getenv("PEER_READER");
    Costs own, other;
    bool isOwnRead = own.Take(0, ours), isPeerRead = true;
    for (std::size_t run = 0; run < kRuns; ++run) {
        isOwnRead = own.Take(run, ours) && isOwnRead;
        isPeerRead = (peer == nullptr || other.Take(run, {peer, file.string()})) && isPeerRead;
    }
    if (!isOwnRead || !isPeerRead) {
        table.Value(std::string(isOwnRead ? peer : ours[0]) + " failed", 1, "", 0);
        return;
    }
    table.Note("a process that reads the drawing and prints its facts", MedianOf(own.seconds) * kMilliseconds, "ms");
    table.Note("memory of that process", MedianOf(own.mebibytes), "MiB");
    if (peer == nullptr)
        return;
    table.Note("the other reader", MedianOf(other.seconds) * kMilliseconds, "ms");
    table.Note("memory of the other reader", MedianOf(other.mebibytes), "MiB");
    table.Value("time / the other reader's", MedianOf(own.seconds) / MedianOf(other.seconds), "times", 1);
    table.Value("memory / the other reader's", MedianOf(own.mebibytes) / MedianOf(other.mebibytes), "times", 1);
}

const bench::Rows rows("peer", Measure);

} // namespace
