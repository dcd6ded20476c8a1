// `cmake --install` into an empty folder gives a tree that works by itself.
#include "tests/documents/Documents.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* kPrograms[] = {"tessaro-editor",      "tessaro-samples", "tessaro-examine",
                                     "tessaro-thumbnailer", "drawing-facts",   "cache-dump"};

/// A shell function's table of options by program, as the completion has it.
std::string completion() {
    return tests::documentText("packaging/tessaro-editor.bash");
}

class Installed : public testing::Test {
protected:
    void SetUp() override {
        const auto [status, printed] =
            tests::runShell(TESSARO_CMAKE " --install '" TESSARO_BUILD_DIR "' --prefix '" + prefix.string() + "'");
        ASSERT_EQ(status, 0) << printed;
        fs::create_directory(place.path() / "home");
    }
    tests::ShellRun run(const std::string& command) const {
        const std::string where = place.path().string();
        return tests::runShell("cd '" + where + "/home' && PATH='" + (prefix / "bin").string() +
                               ":'\"$PATH\" env -u DISPLAY -u WAYLAND_DISPLAY -u XDG_DATA_HOME -u XDG_DOCUMENTS_DIR " +
                               "-u LD_LIBRARY_PATH HOME='" + where + "/home' timeout 120 " + command);
    }

    const tests::TemporaryFolder place;
    const fs::path prefix = place.path() / "prefix";
};

TEST_F(Installed, TheEditorFindsModuleHelperAndHelpInTheInstalledTree) {
    ASSERT_EQ(run("tessaro-samples . title-blocks").status, 0);
    place.write("home/try.scr",
                "TESSARO\n> click Add\n> answer title-blocks\n> wait-until blockList North-Arrow\n"
                "> wait-until blockList \"North arrow\"\n> click Help\n> select North-Arrow in blockList\n"
                "> click Insert\n1,2\nLIST L\n\nQUIT\nY\n");
    const auto [status, transcript] = run("tessaro-editor --batch --script try.scr");
    EXPECT_EQ(status, 0) << transcript;
    EXPECT_THAT(transcript, HasSubstr("Block Name: \"North-Arrow\""));
    const auto help = tests::readFile(prefix / "lib/tessarotessaro.chm");
    EXPECT_THAT(help, testing::StartsWith("ITSF"));
    EXPECT_EQ(tests::readFile(place.path() / "home/.local/share/Norvane/help/tessaro.chm"), help);
    EXPECT_TRUE(fs::exists(place.path() / "home/Documents/Tessaro/tessaro35.ini") ||
                fs::exists(place.path() / "home/Tessaro/tessaro35.ini"))
        << "settings go to the user's documents, not into the installed tree";
    EXPECT_EQ(run("tessaro-examine title-blocks/North-Arrow.dwg | grep -q 'North arrow'").status, 0);
    EXPECT_EQ(run("tessaro-thumbnailer title-blocks/North-Arrow.dwg arrow.png -s 64").status, 0);
}

TEST_F(Installed, EveryProgramHasItsManualPageItsCompletionAndNoPathOfTheBuild) {
    for (const std::string name : kPrograms) {
        EXPECT_TRUE(fs::is_symlink(prefix / "bin" / name)) << name;
        EXPECT_TRUE(fs::exists(prefix / "bin" / name)) << name << " leads nowhere";
        EXPECT_EQ(
            run("gzip -dc '" + (prefix / "share/man/man1" / (name + ".1.gz")).string() + "' | grep -q '^.TH'").status,
            0)
            << name;
        EXPECT_TRUE(fs::exists(prefix / "share/bash-completion/completions" / name)) << name;
    }
    for (const auto& entry : fs::directory_iterator(prefix / "lib/tessaro")) {
        const auto [status, paths] = tests::runShell("readelf -d '" + entry.path().string() + "' | grep -i runpath");
        EXPECT_THAT(paths, HasSubstr("[$ORIGIN]")) << entry.path();
        EXPECT_EQ(paths.find(TESSARO_SOURCE_DIR), std::string::npos) << entry.path() << paths;
    }
}

TEST(DesktopEntry, IsValidAndItsIconIsMade) {
    const std::string file = TESSARO_SOURCE_DIR "/packaging/tessaro-editor.desktop";
    const std::string text = tests::documentText("packaging/tessaro-editor.desktop");
    EXPECT_THAT(text, HasSubstr("\nExec=tessaro-editor %f\n"));
    EXPECT_THAT(text, HasSubstr("\nIcon=tessaro\n"));
    EXPECT_THAT(tests::readFile(TESSARO_BUILD_DIR "/packaging/icon/tessaro.svg"), HasSubstr("</svg>"));
    EXPECT_THAT(tests::readFile(TESSARO_BUILD_DIR "/packaging/icon/48.png"), HasSubstr("PNG"));
    if (tests::hasProgram("desktop-file-validate")) {
        const auto [status, printed] = tests::runShell("desktop-file-validate '" + file + "'");
        EXPECT_EQ(status, 0) << printed;
    }
}

TEST(ThumbnailerEntry, CallsTheProgramWithFileOutputAndSize) {
    const std::string text = tests::documentText("packaging/tessaro.thumbnailer");
    EXPECT_THAT(text, testing::StartsWith("[Thumbnailer Entry]\n"));
    EXPECT_THAT(text, HasSubstr("\nExec=tessaro-thumbnailer %i %o -s %s\n"));
    EXPECT_THAT(text, HasSubstr("image/vnd.dwg;"));
}

TEST(Completion, OffersOptionsFilesOfTheRightKindAndNothingElse) {
    const tests::TemporaryFolder place;
    for (const char* const name : {"plan.dwg", "Old.DWG", "play.scr", "some.arx", "path1_35.cache", "notes.txt"})
        place.write(name, "");
    place.write("folder/inner.dwg", "");
    const auto complete = [&](const std::string& words) {
        const auto [status, printed] =
            tests::runShell("cd '" + place.path().string() +
                            "' && bash -c '. " TESSARO_SOURCE_DIR "/packaging/tessaro-editor.bash; "
                            "COMP_WORDS=(" +
                            words +
                            "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _tessaro \"${COMP_WORDS[0]}\"; "
                            "printf \"%s\\n\" \"${COMPREPLY[@]}\" | sort'");
        EXPECT_EQ(status, 0) << printed;
        std::istringstream in(printed);
        return std::set<std::string>{std::istream_iterator<std::string>(in), {}};
    };
    using Words = std::set<std::string>;
    EXPECT_EQ(complete("tessaro-editor \"\""), (Words{"Old.DWG", "folder", "plan.dwg"}));
    EXPECT_EQ(complete("tessaro-editor --b"), (Words{"--batch"}));
    EXPECT_EQ(complete("tessaro-editor --script \"\""), (Words{"folder", "play.scr"}));
    EXPECT_EQ(complete("tessaro-editor --load so"), (Words{"some.arx"}));
    EXPECT_EQ(complete("tessaro-samples \"\""), (Words{"folder"}));
    EXPECT_EQ(complete("cache-dump \"\""), (Words{"folder", "path1_35.cache"}));
    EXPECT_EQ(complete("tessaro-thumbnailer plan.dwg out.png -s \"\""), (Words{}));
}

TEST(Completion, KnowsEveryOptionThatTheManualPagesTell) {
    const std::regex option(R"(\\fB(\\-\\-[a-z\\-]+|\\-s)\\fR)");
    for (const std::string name : kPrograms) {
        const std::string page = tests::documentText("docs/man/" + name + ".1");
        const std::string table = completion();
        for (std::sregex_iterator at(page.begin(), page.end(), option), end; at != end; ++at) {
            const std::string told = std::regex_replace((*at)[1].str(), std::regex(R"(\\)"), "");
            const std::size_t line = table.find("\n    " + name + ")");
            ASSERT_NE(line, std::string::npos) << name;
            EXPECT_NE(table.substr(line, table.find('\n', line + 1) - line).find(told), std::string::npos)
                << name << " has " << told;
        }
    }
}

} // namespace
