// An examination tells its failures by what it leaves, never by a message or a line in the log. The log's file is
// chosen once in a process, so that the examinations run in one of their own.
#include "tests/reading/ExamineFixture.h"

#include "tessaro/host/Log.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/UserInterface.h"

#include <cstdlib>
#include <filesystem>

using namespace tests;

namespace {

class CountingInterface : public platform::UserInterface {
public:
    int messages = 0;

    CountingInterface() { platform::SetUserInterface(this); }
    ~CountingInterface() override { platform::SetUserInterface(nullptr); }
    platform::MessageAnswer MessageBox(const std::wstring&, const std::wstring&, platform::MessageButtons,
                                       platform::MessageIcon) override {
        ++messages;
        return platform::MessageAnswer::Ok;
    }
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override { return {}; }
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return {}; }
    void ShowHelp(const std::wstring&) override {}
};

class ExamineSilence : public ExamineFixture {
protected:
    void ExamineWhatFails() {
        examine(); // no drawing at all
        examine("");
        examine(DrawingBuilder("AC1027").entry(6, "no PNG"));
        examine(DrawingBuilder("AC1015").entryAt(2, 100000, 0xffffffff));
        folder.write("a.DWK", "");
        examine();
        std::filesystem::remove(folder.path() / "a.DWK");
        std::filesystem::remove(folder.path() / "a.dwg");
        std::filesystem::create_symlink("/proc/self/mem", folder.path() / "a.dwg");
        examine(); // opens, and can't be read
    }

    /// True where neither a message box nor a line of the log came, in a process whose log is on.
    bool NothingIsTold() {
        std::filesystem::create_directory(folder.path() / "Log");
        moduleFolder = directory.path;
        const CountingInterface interface;
        ExamineWhatFails();
        const bool noLogFile = std::filesystem::is_empty(folder.path() / "Log");
        Log(L"the log is on\n");
        const bool logIsOn = !std::filesystem::is_empty(folder.path() / "Log");
        std::filesystem::remove_all(folder.path());
        return interface.messages == 0 && noLogFile && logIsOn;
    }
};

TEST_F(ExamineSilence, failuresShowNoMessageAndLogNothing) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::_Exit(NothingIsTold() ? 0 : 1), testing::ExitedWithCode(0), "");
}

} // namespace
