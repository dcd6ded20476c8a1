// Each message of the host to the module as it is built, every test in a
// process of its own.
#include "tests/entry/RunRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr const char* kInit = "1";
constexpr const char* kUnload = "2";
constexpr const char* kLoadDrawing = "3";
constexpr const char* kUnloadDrawing = "4";
constexpr const char* kQuit = "8";

std::vector<std::string> After(const std::vector<std::string>& lines, const std::string& line) {
    const auto found = std::find(lines.begin(), lines.end(), line);
    return found == lines.end() ? lines : std::vector<std::string>(found + 1, lines.end());
}

/// The folder's file "tessaro35.ini", as the module finds it.
std::string Ini(const tests::ModulePlace& place) {
    return tests::readFile(place.folder() / "tessaro35.ini");
}

} // namespace

TEST(Lifecycle, InitRegistersAddsCommandsPrintsAndLoadsTheInterfaceModuleLast) {
    const tests::ModulePlace place;
    EXPECT_THAT(place.run({kInit}), ElementsAre("registerAppMDIAware 42",
                                                "addCommand NORVANETESSARO TESSARO TESSARO flags 0 context false "
                                                "code -1 resource true",
                                                "addCommand NORVANETESSARO NORVANETESSAROOPEN NORVANETESSAROOPEN "
                                                "flags 2097152 context "
                                                "false code -1 resource true",
                                                MatchesRegex("print 3\\.9\\.10 Loaded! \\(.* 20.., ..:..:..\\)"),
                                                "print Use the command 'tessaro' to launch Tessaro.",
                                                "loadModule acISMui.arx print false command true", "answer 0"));
}

TEST(Lifecycle, TheLogBeginsWithTheBannerAndFollowsTheSteps) {
    const tests::ModulePlace place;
    place.makeLogFolder();
    place.run({kInit});
    EXPECT_THAT(place.log(), ElementsAre(MatchesRegex("_______________________________________"
                                                      "_____ Time=.+ Ver=3\\.9\\.10"),
                                         "Add Commands", "SetupToolbar", "Toolbar not found."));
}

TEST(Lifecycle, AnInterfaceModuleThatIsInTheProcessIsNotLoaded) {
    const tests::ModulePlace place;
    // Any shared object of that name will do.
    std::filesystem::copy_file(TESSARO_BIN_DIR "/fake_helper/TessaroHelper.dll", place.folder() / "acISMui.arx");
    setenv("LD_PRELOAD", (place.folder() / "acISMui.arx").c_str(), 1);
    const auto lines = place.run({kInit});
    unsetenv("LD_PRELOAD");
    EXPECT_THAT(lines, Not(Contains(StartsWith("loadModule"))));
    EXPECT_THAT(lines, Not(Contains(HasSubstr("acISMui")))) << "nothing is printed about it";
    EXPECT_THAT(lines, Contains("answer 0"));
}

TEST(Lifecycle, TheFirstDrawingLoadsSettingsAndSetsUpEachOneResets) {
    const tests::ModulePlace place;
    place.makeLogFolder();
    const auto lines = place.run({kInit, kLoadDrawing, kLoadDrawing});
    EXPECT_THAT(After(lines, "loadModule acISMui.arx print false command true"),
                ElementsAre("answer 0", "addReactor", "answer 0", "answer 0"));
    const auto log = After(place.log(), "Toolbar not found.");
    ASSERT_FALSE(log.empty());
    EXPECT_EQ(log[0], "LoadIni");
    EXPECT_EQ(std::count(log.begin(), log.end(), "Setup"), 1);
    EXPECT_EQ(std::count(log.begin(), log.end(), "ResetDrawing"), 2);
    EXPECT_THAT(After(log, "Setup"), ElementsAre("ResetDrawing", "ResetDrawing"));
}

TEST(Lifecycle, UnloadingADrawingWithoutADialogDoesNothing) {
    const tests::ModulePlace place;
    const auto lines = place.run({kInit, kLoadDrawing, kUnloadDrawing, kUnloadDrawing});
    EXPECT_THAT(After(lines, "addReactor"), ElementsAre("answer 0", "answer 0", "answer 0"));
}

TEST(Lifecycle, MessagesWithoutAMeaningAreAnsweredWithOk) {
    const tests::ModulePlace place;
    EXPECT_THAT(
        place.run({"0", kUnload, "5", "6", "7", "9", "-1", "4711"}),
        ElementsAre("answer 0", "answer 0", "answer 0", "answer 0", "answer 0", "answer 0", "answer 0", "answer 0"));
}

TEST(Lifecycle, QuitRemovesTheReactorSavesAndRemovesTheCommands) {
    const tests::ModulePlace place;
    place.makeLogFolder();
    std::filesystem::create_directory(place.folder() / "library");
    std::ofstream(place.folder() / "tessaro35.ini")
        << "[paths]\r\nnumpaths=1\r\npath1=" << place.folder().string() << "/library\r\n";
    const auto lines = place.run({kInit, kLoadDrawing, kQuit});
    EXPECT_THAT(After(lines, "addReactor"),
                ElementsAre("answer 0", "removeReactor", "removeGroup NORVANETESSARO", "answer 0"));
    EXPECT_THAT(place.log(), Contains("CloseAll"));
    EXPECT_THAT(After(place.log(), "removeGroup"), ElementsAre("Done"));
    EXPECT_NE(Ini(place).find("[tessaro options]"), std::string::npos) << Ini(place);
    EXPECT_NE(Ini(place).find("/library"), std::string::npos) << Ini(place);
}

TEST(Lifecycle, QuitWithTheDialogNeverOpenedLeavesABlockedThreadThatDoesNotHoldTheExit) {
    const tests::ModulePlace place;
    const auto lines = place.run({kInit, kLoadDrawing, kQuit});
    EXPECT_THAT(lines, Not(Contains("hung")));
    EXPECT_EQ(lines.back(), "answer 0");
}

TEST(Lifecycle, ASecondQuitRemovesTheCommandsAgainAndClosesNothing) {
    const tests::ModulePlace place;
    place.makeLogFolder();
    const auto lines = place.run({kInit, kLoadDrawing, kQuit, kQuit});
    EXPECT_THAT(After(lines, "removeReactor"),
                ElementsAre("removeGroup NORVANETESSARO", "answer 0", "removeGroup NORVANETESSARO", "answer 0"));
    const auto log = place.log();
    EXPECT_EQ(std::count(log.begin(), log.end(), "CloseAll"), 1);
    EXPECT_EQ(std::count(log.begin(), log.end(), "Done"), 2);
}

TEST(Lifecycle, QuitWithoutADrawingStillAnswers) {
    const tests::ModulePlace place;
    EXPECT_EQ(place.run({kInit, kQuit}).back(), "answer 0");
}

TEST(Lifecycle, UnderAnotherFileNameTheFolderIsTheHostsAndTheModuleKeepsRunning) {
    const tests::ModulePlace place("other.arx");
    place.makeLogFolder();
    const auto lines = place.run({kInit, kLoadDrawing});
    EXPECT_THAT(lines, Contains("addCommand NORVANETESSARO TESSARO TESSARO flags "
                                "0 context false code -1 resource "
                                "false"));
    EXPECT_EQ(lines.back(), "answer 0");
    EXPECT_THAT(place.log(), testing::IsEmpty()) << "the log belongs beside the host's executable";
}

TEST(Lifecycle, CommandsThatTheHostRefusesLeaveTheRestOfTheInitialisation) {
    const tests::ModulePlace place;
    const auto lines = place.run({"refuse commands", kInit, kLoadDrawing});
    EXPECT_THAT(lines, Contains("print Use the command 'tessaro' to launch Tessaro."));
    EXPECT_THAT(lines, Contains("loadModule acISMui.arx print false command true"));
    EXPECT_THAT(After(lines, "loadModule acISMui.arx print false command true"),
                ElementsAre("answer 0", "addReactor", "answer 0"));
}

TEST(Lifecycle, TheVersionIsTheHostInterfaces) {
    const tests::ModulePlace place;
    EXPECT_THAT(place.run({"version"}), ElementsAre("version 24"));
}

TEST(Lifecycle, OpenWithNothingPendingDoesAndLogsNothing) {
    const tests::ModulePlace place;
    place.makeLogFolder();
    const auto lines = place.run({kInit, "command NORVANETESSAROOPEN"});
    EXPECT_THAT(After(lines, "answer 0"), ElementsAre("done"));
    EXPECT_EQ(place.log().back(), "Toolbar not found.");
}
