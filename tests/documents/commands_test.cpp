// Every command line of the documents is carried out, but for those that say why they can't be.
#include "tests/documents/Documents.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

const fs::path root = TESSARO_SOURCE_DIR;

/// A folder that looks like the project's root after a build: its folders, and build/bin for every preset.
class Commands : public testing::Test {
protected:
    Commands() {
        for (const char* const name :
             {"bench", "cmake", "dev", "docs", "editor", "fuzz", "samples", "tessaro", "tests", "tools"})
            fs::create_directory_symlink(root / name, place.path() / name);
        fs::create_directories(place.path() / "build/dev");
        fs::create_directory_symlink(TESSARO_BIN_DIR, place.path() / "build/bin");
        fs::create_directory_symlink(TESSARO_BIN_DIR, place.path() / "build/dev/bin");
        fs::create_directory(place.path() / "home");
    }

    tests::ShellRun run(const std::string& lines) const {
        const std::string where = place.path().string();
        place.write("lines.sh", lines);
        return tests::runShell("cd '" + where + "' && env -u DISPLAY -u WAYLAND_DISPLAY HOME='" + where +
                               "/home' XDG_DATA_HOME='" + where + "/home/data' PATH='" TESSARO_BIN_DIR ":" +
                               "'\"$PATH\" timeout 120 bash -euo pipefail lines.sh");
    }

    const tests::TemporaryFolder place;
};

TEST_F(Commands, OfTheDocumentsAreCarriedOut) {
    int executed = 0;
    for (const fs::path& page : tests::documents()) {
        for (const tests::CodeBlock& block : tests::codeBlocks(tests::documentText(page))) {
            if (block.language != "sh" || !block.notExecuted.empty())
                continue;
            const auto [status, printed] = run(block.text);
            EXPECT_EQ(status, 0) << page << ":" << block.line << "\n" << block.text << printed;
            ++executed;
        }
    }
    EXPECT_GE(executed, 2);
}

TEST_F(Commands, ScriptsOfTheDocumentsAreCarriedOutByTheEditor) {
    int executed = 0;
    ASSERT_EQ(run("tessaro-samples lib doors furniture").status, 0);
    const std::string library = (place.path() / "lib/furniture").string();
    place.write("lib/tessaro35.ini", "[Paths]\nNumPaths=1\nPath1=" + library + "\n[" + library +
                                         "]\nDescription=Furniture\n" +
                                         "Scale=1-to-1\nRotation=0\nView=3\nSortStyle=Name\nCurrentScheme=<None>\n");
    for (const fs::path& page : tests::documents()) {
        for (const tests::CodeBlock& block : tests::codeBlocks(tests::documentText(page))) {
            if (block.language != "scr" || !block.notExecuted.empty())
                continue;
            place.write("lib/block.scr", block.text + (block.text.ends_with("QUIT\n") ? "" : "QUIT\nY\n"));
            const auto [status, printed] = run("cd lib && tessaro-editor --batch --script block.scr Flat.dwg");
            EXPECT_EQ(status, 0) << page << ":" << block.line << "\n" << printed;
            ++executed;
        }
    }
    EXPECT_GE(executed, 2);
}

TEST(CodeBlocks, SayTheirLanguageAndNoneIsIndented) {
    for (const fs::path& page : tests::documents()) {
        const std::string text = tests::documentText(page);
        if (page.string().starts_with("docs/formats"))
            continue; // grammars
        for (const tests::CodeBlock& block : tests::codeBlocks(text)) {
            EXPECT_NE(block.language, "") << page << ":" << block.line;
            EXPECT_TRUE(block.notExecuted.empty() || block.notExecuted.size() > 10) << page << ":" << block.line;
        }
        EXPECT_EQ(text.find("\n\n    "), std::string::npos) << page << " has an indented block";
    }
}

} // namespace
