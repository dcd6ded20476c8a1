// Very many placements through the browser in one run of the program; dev/placements runs it.
#include "tests/chains/ProgramFixture.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <optional>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using tests::kList;

namespace {

/// What the program takes at some moment.
struct Sample {
    std::size_t placements = 0;
    long memory = 0; ///< KiB in RAM
    int threads = 0;
};

/// The program while it runs.
class RunningProgram {
public:
    RunningProgram(const std::string& commandLine, std::filesystem::path transcriptFile)
        : transcript(std::move(transcriptFile)), process(fork()) {
        if (process == 0) {
            const std::string line = commandLine + " >'" + transcript.string() + "'";
            execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
            _exit(127);
        }
    }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;
    ~RunningProgram() {
        if (!status) {
            kill(process, SIGKILL);
            waitpid(process, nullptr, 0);
        }
    }

    bool Runs() {
        int raw = 0;
        if (!status && waitpid(process, &raw, WNOHANG) == process)
            status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
        return !status;
    }
    int Status() const { return status.value_or(-1); }
    std::optional<Sample> Look() const {
        Sample sample;
        std::ifstream in("/proc/" + std::to_string(process) + "/status");
        for (std::string line; std::getline(in, line);) {
            if (line.starts_with("VmRSS:"))
                sample.memory = std::stol(line.substr(6));
            if (line.starts_with("Threads:"))
                sample.threads = std::stoi(line.substr(8));
        }
        const std::string text = tests::readFile(transcript);
        for (auto at = text.find("Command: UNDO"); at != std::string::npos; at = text.find("Command: UNDO", at + 1))
            ++sample.placements;
        return sample.memory > 0 && sample.threads > 0 ? std::optional(sample) : std::nullopt;
    }

private:
    std::filesystem::path transcript;
    pid_t process;
    std::optional<int> status;
};

class ManyPlacements : public tests::ProgramTest {
protected:
    ManyPlacements() {
        MakeDrawing(folder.path() / "lib" / "DOOR.dwg");
        Catalogue(folder.path() / "lib");
    }

    /// The kinds of placements, one after the other; all is taken back behind each.
    static std::string Script(int kind) {
        struct Row {
            const char *explode, *multiple, *repeat, *answers;
        };
        const Row rows[kKinds] = {{"off", "off", "off", "1,1\n"},
                                  {"on", "off", "off", "1,1\n"},
                                  {"on", "on", "off", "1,1\n2,2\n^C\n"},
                                  {"off", "off", "on", "1,1\n> wait-until blockList DOOR\n> click Close\n"},
                                  {"off", "off", "off", "^C\n"}};
        const Row& row = rows[kind];
        return "UNDO M\n" +
               Choose("DOOR", std::string("> set Explode ") + row.explode + "\n> set \"Multiple Insert\" " +
                                  row.multiple + "\n> set Repeat " + row.repeat + "\n") +
               row.answers + "UNDO B\n";
    }

    static constexpr int kKinds = 5;
};

} // namespace

TEST_F(ManyPlacements, LeaveNoWindowThreadOrReactorAndNoMemory) {
    const char* const wanted = std::getenv("TESSARO_PLACEMENTS");
    if (wanted == nullptr)
        GTEST_SKIP() << "takes minutes: dev/placements runs it";
    const auto count = static_cast<std::size_t>(std::max(50L, std::strtol(wanted, nullptr, 10)));
    std::string script;
    for (std::size_t at = 0; at < count; ++at)
        script += Script(static_cast<int>(at % kKinds));
    script += std::string(kList) + tests::kQuit;

    const auto file = folder.path() / "transcript.txt";
    RunningProgram program(CommandLine(script), file);
    std::vector<Sample> samples;
    std::size_t told = 0;
    while (program.Runs()) {
        usleep(200'000);
        const auto sample = program.Look();
        if (!sample)
            continue;
        samples.push_back(*sample);
        samples.back().placements /= 2; // a mark ahead, a way back behind
        if (samples.back().placements >= told) {
            std::printf("%zu placements: %ld KiB, %d threads\n", samples.back().placements, sample->memory,
                        sample->threads);
            std::fflush(stdout);
            told += std::max<std::size_t>(count / 10, 1);
        }
    }
    transcript = tests::readFile(file);
    EXPECT_EQ(program.Status(), 0) << "a window was left, or a line could not be carried out:\n"
                                   << transcript.substr(transcript.size() -
                                                        std::min<std::size_t>(2000, transcript.size()));
    EXPECT_NE(transcript.rfind("0 found"), std::string::npos);

    // The same transcript for the same placement, from the first to the last: one reactor, and no flag that was left.
    std::map<std::size_t, std::string> firsts;
    std::size_t number = 0;
    const std::string mark = "Command: UNDO\nEnter the number of operations to undo or [BEgin/End/Mark/Back] <1>: M\n";
    for (auto at = transcript.find(mark); at != std::string::npos; ++number) {
        const auto next = transcript.find(mark, at + 1);
        const std::string text = transcript.substr(at, std::min(next, transcript.rfind("Command: LIST")) - at);
        // The name that is offered is that of the last insertion, and there is none ahead of the first.
        if (number >= kKinds) {
            const auto& first = firsts.try_emplace(number % kKinds, text).first->second;
            ASSERT_EQ(text, first) << "placement " << number;
        }
        at = next;
    }
    EXPECT_EQ(number, count);

    const auto least = [&](std::size_t from, std::size_t to) {
        Sample found{0, -1, -1};
        for (const Sample& sample : samples) {
            if (sample.placements < from || sample.placements >= to)
                continue;
            found.memory = found.memory < 0 ? sample.memory : std::min(found.memory, sample.memory);
            found.threads = found.threads < 0 ? sample.threads : std::min(found.threads, sample.threads);
        }
        return found;
    };
    const Sample middle = least(count / 2, count * 3 / 5), end = least(count * 9 / 10, count);
    EXPECT_EQ(end.threads, middle.threads);
    constexpr long kNoise = 4096; // KiB
    EXPECT_LT(end.memory, middle.memory + kNoise);
}
