// The program itself in batch mode, as a child process.
#include "tests/support/Shell.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::Not;

class Batch : public testing::Test {
protected:
    /// Runs a script; the transcript stays in `transcript`, the exit status is given.
    int run(const std::string& script, const std::string& more = "--no-load") {
        const auto file = folder.write("script.scr", script);
        return command("--batch --script '" + file.string() + "' " + more);
    }

    int command(const std::string& arguments) {
        const std::string line = "cd '" + folder.path().string() +
                                 "' && env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM timeout 100 '" +
                                 TESSARO_BIN_DIR "/tessaro-editor' " + arguments + " 2>/dev/null";
        const tests::ShellRun run = tests::runShell(line);
        transcript = run.output;
        return run.status;
    }

    tests::TemporaryFolder folder;
    std::string transcript;
};

TEST_F(Batch, AScriptThatIsCarriedOutExitsWithZero) {
    EXPECT_EQ(run("; a comment\nLINE 0,0 1,1 \nSAVEAS plan.dwg\nQUIT\n"), 0) << transcript;
    EXPECT_THAT(transcript, HasSubstr("Command: LINE\nSpecify first point: 0,0\n"));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "plan.dwg"));
}

TEST_F(Batch, TheDrawingOfTheCommandLineIsOpened) {
    ASSERT_EQ(run("SAVEAS plan.dwg\n"), 0);
    EXPECT_EQ(run("SETVAR DWGNAME\n", "--no-load plan.dwg"), 0);
    EXPECT_THAT(transcript, HasSubstr("DWGNAME = \"plan.dwg\""));
    EXPECT_EQ(run("SETVAR DWGNAME\n", "--no-load none.dwg"), 1);
}

TEST_F(Batch, UnknownAndFailedCommandsFailTheRunAndTheRestIsCarriedOut) {
    EXPECT_EQ(run("FROB\n-INSERT /none.dwg\nCIRCLE 0,0 1\nSAVEAS plan.dwg\n"), 1);
    EXPECT_THAT(transcript, HasSubstr("Not carried out: Unknown command \"FROB\".\n"));
    EXPECT_THAT(transcript, HasSubstr("Not carried out: -INSERT failed\n"));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "plan.dwg"));
}

TEST_F(Batch, OptionsThatAreNotThereFailTheRun) {
    for (const char* const script : {"PURGE X A *\nN\n", "-LAYER X \n", "LINE 0,0 far 1,1 \n", "CIRCLE 0,0 abc 1\n",
                                     "ZOOM far E\n", "UNDO x 1\n"}) {
        EXPECT_EQ(run(script), 1) << script;
        EXPECT_THAT(transcript, HasSubstr("keyword")) << script;
    }
    EXPECT_EQ(run("CIRCLE 0,0 0 -1 1\n"), 0) << "a number that is refused is asked for again: " << transcript;
}

TEST_F(Batch, ACommandThatWaitsAtTheEndIsCancelledAndFailsTheRun) {
    EXPECT_EQ(run("CIRCLE 0,0\n"), 1);
    EXPECT_THAT(transcript, HasSubstr("CIRCLE was cancelled by the end of the input"));
}

TEST_F(Batch, AWrongCommandLineExitsWithTwo) {
    EXPECT_EQ(command("--batch"), 2);
    EXPECT_EQ(command("--nonsense"), 2);
    EXPECT_EQ(command("--batch --script none.scr"), 2);
    EXPECT_EQ(command("one.dwg two.dwg"), 2);
    EXPECT_EQ(command("--help"), 0);
}

TEST_F(Batch, AModuleIsLoadedAndAMissingOneFailsTheRun) {
    EXPECT_EQ(run("RECORDINGHELLO\n", "--load " TESSARO_BIN_DIR "/modules/recording.arx"), 0) << transcript;
    EXPECT_THAT(transcript, HasSubstr("hello from the module"));
    EXPECT_THAT(transcript, HasSubstr("message 8 with no drawing"));
    EXPECT_EQ(run("", "--load none.arx"), 1);
}

TEST_F(Batch, LinesForWindowsActOnTheMainWindowWhereNoOtherIsUp) {
    EXPECT_EQ(run("CIRCLE 0,0 1\n> wait 50\n> grab window.png\n> expect commandHistory \"Command: CIRCLE\"\n"), 0)
        << transcript;
    EXPECT_EQ(tests::readFile(folder.path() / "window.png").substr(1, 3), "PNG");
}

TEST_F(Batch, ALineForAWindowThatCanNotBeCarriedOutFailsTheRun) {
    EXPECT_EQ(run("> frob x\n> click \"open quote\n> expect commandHistory nowhere\n> grab /none/x.png\n> wait soon\n"),
              1);
    EXPECT_THAT(transcript, HasSubstr("line 1: \"frob\" is no action"));
    EXPECT_THAT(transcript, HasSubstr("line 2: the line can't be read"));
    EXPECT_THAT(transcript, HasSubstr("line 3: \"commandHistory\" says"));
    EXPECT_THAT(transcript, HasSubstr("line 4: \"/none/x.png\" can't be written"));
    EXPECT_THAT(transcript, HasSubstr("line 5: wait needs milliseconds"));
}

TEST_F(Batch, AModalWindowIsAnsweredByALine) {
    EXPECT_EQ(run("COLOUR\n> answer 3\n", "--load " TESSARO_BIN_DIR "/modules/recording.arx"), 0) << transcript;
    EXPECT_THAT(transcript, HasSubstr("colour 3\n"));
}

TEST_F(Batch, AModalWindowThatNoLineAnswersIsClosedAndFailsTheRun) {
    EXPECT_EQ(run("COLOUR\nCIRCLE 0,0 1\n", "--load " TESSARO_BIN_DIR "/modules/recording.arx"), 1);
    EXPECT_THAT(transcript, HasSubstr("no line answers the window \"Select Color: Color index (1 to 255):\""));
    EXPECT_THAT(transcript, HasSubstr("no colour\n"));
    EXPECT_THAT(transcript, HasSubstr("Command: CIRCLE")) << "the script goes on";
}

TEST_F(Batch, ADrawingThatCanNotBeReadFailsTheRunAndNothingIsCarriedOut) {
    folder.write("rubbish.dwg", "AC1015 and nothing more");
    EXPECT_EQ(run("CIRCLE 0,0 1\n", "--no-load rubbish.dwg"), 1);
    EXPECT_THAT(transcript, HasSubstr("rubbish.dwg\": the file is damaged"));
    EXPECT_THAT(transcript, Not(HasSubstr("CIRCLE")));
    EXPECT_EQ(run("CIRCLE 0,0 1\n", "--no-load ."), 1) << "a folder";
}

TEST_F(Batch, HugeAndBlankLinesAreToldShortlyAndFailTheRunOnlyWhereTheyNameNothing) {
    EXPECT_EQ(run("\n   \n\t\nCIRCLE 0,0 1\nSAVEAS plan.dwg\n"), 0) << transcript;
    EXPECT_EQ(run(std::string(1 << 20, 'x') + "\nCIRCLE " + std::string(1 << 20, '9') + " 0,0 1\n"), 1);
    EXPECT_THAT(transcript, HasSubstr("Unknown command \"" + std::string(255, 'X') + "...\"."));
    EXPECT_EQ(run("TEXT 0,0 1 0 " + std::string(1 << 20, 'y') + "\n\nLIST ALL\n\n"), 1);
    EXPECT_THAT(transcript, HasSubstr("Not carried out: The text is too long.\n"));
}

struct BadModule {
    const char* name;
    const char* told;
};

class BatchModules : public Batch, public testing::WithParamInterface<BadModule> {};

TEST_P(BatchModules, OneThatFailsIsNamedAndFailsTheRunAndTheScriptIsCarriedOut) {
    folder.write("rubbish.arx", "no module at all");
    const std::string file = GetParam().name == std::string("rubbish")
                                 ? "rubbish.arx"
                                 : TESSARO_BIN_DIR "/modules/" + std::string(GetParam().name) + ".arx";
    EXPECT_EQ(run("CIRCLE 0,0 1\nSAVEAS plan.dwg\n", "--load " + file), 1);
    EXPECT_THAT(transcript, HasSubstr(GetParam().told));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "plan.dwg"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, BatchModules,
                         testing::Values(BadModule{"refusing", "it could not be initialised"},
                                         BadModule{"throwing", "\"throwing.arx\" failed in message 3: no room for"},
                                         BadModule{"foreign", "it was built for release 23"},
                                         BadModule{"incomplete", "it is no application module"},
                                         BadModule{"rubbish", "can't be loaded: "}),
                         [](const auto& module) { return std::string(module.param.name); });

TEST_F(Batch, AModuleThatIsLoadedByACommandAndThrowsFailsTheRunToo) {
    EXPECT_EQ(run("ARX L\n" TESSARO_BIN_DIR "/modules/throwing.arx\n"), 1);
    EXPECT_THAT(transcript, HasSubstr("Not carried out: \"throwing.arx\" failed in message 3: no room for drawings"));
    EXPECT_EQ(run("ARX L\n" TESSARO_BIN_DIR "/modules/refusing.arx\n"), 1);
    EXPECT_THAT(transcript, HasSubstr("Not carried out: ARX failed"));
}

TEST_F(Batch, AScriptThatIsMissingInTheMiddleOrEndsInACommandFailsTheRun) {
    EXPECT_EQ(run("SCRIPT none.scr\nCIRCLE 0,0 1\n"), 1);
    EXPECT_THAT(transcript, HasSubstr("Can't find file \"none.scr\"."));
    folder.write("half.scr", "CIRCLE 1,1\n");
    EXPECT_EQ(run("SCRIPT half.scr\n"), 1);
    EXPECT_THAT(transcript, HasSubstr("CIRCLE was cancelled by the end of the input"));
    EXPECT_EQ(run("-INSERT\n"), 1);
    EXPECT_THAT(transcript, HasSubstr("-INSERT was cancelled by the end of the input"));
}

TEST_F(Batch, RealDrawingsAreInsertedSavedAndFoundAgain) {
    const auto drawings = tests::sharedFolder("drawings");
    if (drawings.empty())
        GTEST_SKIP() << "no shared drawings";
    std::vector<std::string> blocks;
    std::string script = "ATTREQ 0\nNEW\n";
    for (const auto& entry : std::filesystem::directory_iterator(drawings / "2000")) {
        if (entry.path().extension() != ".dwg")
            continue;
        blocks.push_back(entry.path().stem().string());
        script +=
            "-INSERT " + entry.path().string() + "\n_scale 1 _rotate 0\n" + std::to_string(blocks.size()) + ",0\n";
    }
    ASSERT_FALSE(blocks.empty());
    ASSERT_EQ(run(script + "SAVEAS all.dwg\n"), 0) << transcript;
    ASSERT_EQ(run("-INSERT\n?\n*\n" + blocks.front() + "\n0,0 1 1 0\n", "--no-load all.dwg"), 0) << transcript;
    for (const std::string& block : blocks)
        EXPECT_THAT(transcript, HasSubstr("\"" + block + "\""));
    EXPECT_THAT(transcript, Not(HasSubstr("Can't find")));
}

} // namespace
