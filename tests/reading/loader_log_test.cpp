// The worker's lines in the log. The log's file is chosen once in a process, so that the worker runs in one of its own.
#include "tests/reading/LoaderFixture.h"

#include "tessaro/platform/Text.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>

using tests::LoaderTest;

namespace {

std::vector<std::string> LogLines(const std::filesystem::path& folder) {
    std::vector<std::string> lines;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        std::istringstream in(tests::readFile(file.path()));
        for (std::string line; std::getline(in, line);)
            lines.push_back(line.substr(0, line.find('\r')));
    }
    return lines;
}

const std::vector<std::string> kExpected = {
    "ValidateDirs: cs.Lock",    "ValidateDirs: kickevent.SetEvent",
    "ValidateDirs: cs.Unlock",  "LoopLoadDir: check pause",
    "LoopLoadDir: cs.Lock1",    "LoopLoadDir: cs.Unlock1",
    "LoopLoadDir: LoadDir",     "LoopLoadDir: cs.Lock2",
    "LoopLoadDir: cs.Unlock2",  "LoopLoadDir: kickevent.Lock",
    "LoopLoadDir: check pause", "LoopLoadDir: cs.Lock1",
    "LoopLoadDir: cs.Unlock2",  "LoopLoadDir: kickevent.Lock",
    "LoopLoadDir: check pause", "LoopLoadDir: quitdone",
};

class LoaderLog : public LoaderTest {
protected:
    /// One directory without drawings, an empty queue, the quit. Gives the lines.
    std::vector<std::string> RunWorker() {
        const auto logFolder = folder.path() / "Log";
        std::filesystem::create_directory(logFolder);
        moduleFolder = platform::FromNarrow(folder.path().string());
        AddFolder("empty", {});
        waits.kick = std::chrono::minutes(10);
        theBlockDlg = &window;
        dialogOpen = true;
        ValidateDirs();
        StartLoader(waits);
        // The kick of ValidateDirs ends the first wait, the quit ends the second one.
        ServeUntil([&] { return LogLines(logFolder).size() == 14; });
        Close();
        auto lines = LogLines(logFolder);
        std::filesystem::remove_all(logFolder);
        return lines;
    }
};

} // namespace

TEST_F(LoaderLog, EachStepOfTheLoopIsALineInItsOrder) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            const auto lines = RunWorker();
            for (const std::string& line : lines)
                std::fprintf(stderr, "%s\n", line.c_str());
            std::_Exit(lines == kExpected ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}
