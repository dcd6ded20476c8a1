// A reader that is slow beside a main thread that must not notice.

#include "bench/Harness.h"
#include "bench/reading/Reading.h"
#include "companions/TessaroHelper/HelperInterface.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/reading/Bridge.h"
#include "tessaro/reading/Loader.h"
#include "tests/reading/fake_helper/FakeHelper.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fstream>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr int kDrawings = 1000;
constexpr auto kSlowness = 50ms, kBeat = 50ms;
constexpr double kLongestGap = 100, kMilliseconds = 1e3;

std::atomic<int> opened{0};

HelperResult SlowAnswer(void*, const wchar_t*, std::int32_t, std::int32_t, std::int32_t, const HelperList*, HelperDate*,
                        HelperDate*, const HelperText*, const HelperText*) {
    ++opened;
    std::this_thread::sleep_for(kSlowness);
    return kHelperFalse;
}

void UseSlowHelper() {
    platform::SharedLibrary library(LocalPath + L"/TessaroHelper.dll");
    reinterpret_cast<void (*)(FakeAnswer)>(library.Find(kFakeHelperSetAnswer))(SlowAnswer);
    library.Release(); // it stays
}

/// Serves the worker's calls until the condition holds, and beats all the while; gives the longest gap between two
/// beats in milliseconds.
double BeatUntil(const std::function<bool()>& condition) {
    std::atomic<bool> ended{false};
    std::thread timer([&] {
        while (!ended) {
            std::this_thread::sleep_for(kBeat);
            platform::WakeMainThread();
        }
    });
    auto last = Clock::now();
    double longest = 0;
    platform::ServeMainThreadUntil([&] {
        const auto now = Clock::now();
        if (now - last >= kBeat) {
            longest = std::max(longest, std::chrono::duration<double>(now - last).count() * kMilliseconds);
            last = now;
        }
        return condition();
    });
    ended = true;
    timer.join();
    return longest;
}

void Write(const std::filesystem::path& folder, int drawings) {
    std::filesystem::create_directory(folder);
    for (int number = 0; number < drawings; ++number)
        std::ofstream(folder / ("drawing" + std::to_string(number) + ".dwg")) << "AC1015";
}

void Measure(bench::Table& table) {
    Reading reading;
    LocalPath += L"/fake_helper";
    UseSlowHelper();
    Write(reading.Place() / "ready", 10);
    Write(reading.Place() / "fresh", 10);
    Write(reading.Place() / "slow", kDrawings);
    Directory* const ready = reading.Add(reading.Place() / "ready");
    Directory* const slow = reading.Add(reading.Place() / "slow");
    Directory* const fresh = reading.Add(reading.Place() / "fresh");
    currentDirectory = ready;
    ValidateDirs();
    StartLoader();
    BeatUntil([&] { return ready->loaded; });
    ShowDirectory(slow);
    BeatUntil([&] { return opened >= 20; });

    // Blocks whose work was begun between a click and the rows that it asked for, the loop's own waits apart.
    const auto click = [&](Directory* clicked, const char* name) {
        const int before = opened;
        int atRows = before;
        reading.window.onBlockRowFilled = [&](int) {
            if (currentDirectory == clicked && atRows == before)
                atRows = opened;
        };
        bool shown = false;
        ShowDirectory(clicked);
        BeatUntil([&] {
            shown = shown || (currentDirectory == clicked && reading.window.BlockRowCount() == 10 &&
                              reading.window.blockRows.back().block != nullptr);
            return shown;
        });
        reading.window.onBlockRowFilled = nullptr;
        table.Value(name, atRows - before, "Blocks' work", 2);
    };
    click(ready, "click on a loaded directory to its rows");
    ShowDirectory(slow);
    BeatUntil([&, target = opened + 5] { return opened >= target; });
    click(fresh, "click on a new directory to its rows");

    ShowDirectory(slow);
    const double gap = BeatUntil([&] { return slow->loaded; });
    table.Value("longest gap of a 50-ms heartbeat while 1,000 drawings are examined at 50 ms each", gap, "ms",
                kLongestGap);

    for (Block* block : slow->blocks)
        block->cached = block->checked = false;
    slow->loaded = false;
    QueueFirst(slow);
    BeatUntil([&, target = opened + 5] { return opened >= target; });
    const int before = opened;
    StopLoader();
    WaitForLastClose();
    table.Value("close in the middle of an examination", opened - before, "Blocks' work", 1);
}

const bench::Rows rows("heartbeat", Measure);

} // namespace
