// Buttons of applications: the editor's two places for them, and the ribbon of its window with the block library's.
#include "editor/sdk/buttons.h"
#include "tests/application/EditorSession.h"
#include "tests/support/Shell.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

const std::string png("\x89PNG\r\n\x1a\nrest", 12);

/// Counts what the window is told.
class CountingWindow : public editor::WindowServices {
public:
    void buttonsChanged() override { ++changes; }
    int changes = 0;
};

class Buttons : public testing::Test {
protected:
    Buttons() { session.editor.setWindow(&window); }
    ~Buttons() override { session.editor.setWindow(nullptr); }

    tests::Session session;
    CountingWindow window;
    editor::ButtonBar& ribbon = session.editor.ribbon();
};

TEST_F(Buttons, BothPlacesAreFoundInTheRegistry) {
    EXPECT_EQ(acrxSysRegistry()->at(L"Ribbon"), &session.editor.ribbon());
    EXPECT_EQ(acrxSysRegistry()->at(L"Toolbar"), &session.editor.toolbar());
}

TEST_F(Buttons, AButtonKeepsItsCommandItsTitleAndItsPicturesBytes) {
    EXPECT_TRUE(ribbon.addButton(L"tessaro\n", L"Tessaro", png.data(), png.size()));
    ASSERT_EQ(ribbon.buttons().size(), 1U);
    EXPECT_EQ(ribbon.buttons()[0].command, L"tessaro\n");
    EXPECT_EQ(ribbon.buttons()[0].title, L"Tessaro");
    EXPECT_EQ(std::string(ribbon.buttons()[0].picture.begin(), ribbon.buttons()[0].picture.end()), png);
    EXPECT_EQ(window.changes, 1);
    EXPECT_TRUE(session.editor.toolbar().buttons().empty());
}

TEST_F(Buttons, ASecondOneForACommandTakesThePlaceOfTheFirst) {
    ribbon.addButton(L"a\n", L"A", png.data(), png.size());
    ribbon.addButton(L"b\n", L"B", png.data(), png.size());
    EXPECT_TRUE(ribbon.addButton(L"a\n", L"Again", png.data(), png.size()));
    ASSERT_EQ(ribbon.buttons().size(), 2U);
    EXPECT_EQ(ribbon.buttons()[0].title, L"Again");
}

TEST_F(Buttons, OneWithoutACommandATitleOrAPictureIsRefused) {
    EXPECT_FALSE(ribbon.addButton(nullptr, L"A", png.data(), png.size()));
    EXPECT_FALSE(ribbon.addButton(L"", L"A", png.data(), png.size()));
    EXPECT_FALSE(ribbon.addButton(L"a\n", nullptr, png.data(), png.size()));
    EXPECT_FALSE(ribbon.addButton(L"a\n", L"", png.data(), png.size()));
    EXPECT_FALSE(ribbon.addButton(L"a\n", L"A", nullptr, 0));
    EXPECT_FALSE(ribbon.addButton(L"a\n", L"A", png.data(), 7));
    EXPECT_FALSE(ribbon.addButton(L"a\n", L"A", "no picture at all", 17));
    EXPECT_TRUE(ribbon.buttons().empty());
    EXPECT_EQ(window.changes, 0);
}

TEST_F(Buttons, AreTakenOutByTheirCommand) {
    ribbon.addButton(L"a\n", L"A", png.data(), png.size());
    EXPECT_FALSE(ribbon.removeButton(L"b\n"));
    EXPECT_FALSE(ribbon.removeButton(nullptr));
    EXPECT_TRUE(ribbon.removeButton(L"a\n"));
    EXPECT_TRUE(ribbon.buttons().empty());
    EXPECT_EQ(window.changes, 2);
}

/// The program in batch mode; the transcript with the exit status in its last line.
std::string runProgram(const tests::TemporaryFolder& folder, const std::string& script) {
    const auto file = folder.write("script.scr", script);
    const std::string line = "cd '" + folder.path().string() +
                             "' && HOME=. timeout 100 '" TESSARO_BIN_DIR "/tessaro-editor' --batch --script '" +
                             file.string() + "' 2>/dev/null";
    const tests::ShellRun run = tests::runShell(line);
    return run.output + "\nexit " + std::to_string(run.status);
}

TEST(Ribbon, TheBlockLibrarysButtonIsInItAndRunsTheCommand) {
    const tests::TemporaryFolder folder;
    const std::string transcript =
        runProgram(folder, "> expect ribbonAddIns \"\"\n> click Tessaro\n> wait-until blockList \"\"\n> close\n");
    EXPECT_THAT(transcript, HasSubstr("Command: tessaro\n"));
    EXPECT_THAT(transcript, HasSubstr("\nexit 0"));
}

TEST(Ribbon, AButtonEndsTheCommandThatIsRunning) {
    const tests::TemporaryFolder folder;
    const std::string transcript = runProgram(folder, "LINE\n> click Tessaro\n> wait-until blockList \"\"\n> close\n");
    EXPECT_THAT(transcript, HasSubstr("Specify first point: \n> click Tessaro\n*Cancel*\nCommand: tessaro\n"));
    EXPECT_THAT(transcript, HasSubstr("\nexit 0"));
}

} // namespace
