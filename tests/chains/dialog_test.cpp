// The chains driven through the browser: the program in batch mode with the module, its dialog answered by a script.
#include "tests/support/TemporaryFolder.h"

#include "editor/application/drawing.h"
#include "editor/application/text.h"
#include "editor/sdk/db.h"

#include <cstdio>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using testing::HasSubstr;
using testing::Not;

class Dialog : public testing::Test {
protected:
    Dialog() {
        for (const char* const name : {"DOOR", "oak gate.v2", "T\u00FCr 50%s"})
            MakeDrawing(folder.path() / "lib" / (std::string(name) + ".dwg"));
        MakeDrawing(folder.path() / "PLAN.dwg");
        const std::string library = (folder.path() / "lib").string();
        folder.write("tessaro35.ini", "[Paths]\nNumPaths=1\nPath1=" + library + "\n[" + library +
                                          "]\nDescription=Lib\nScale=1-to-1\nRotation=0\nView=3\nSortStyle=Name\n"
                                          "CurrentScheme=<None>\n");
    }

    static void MakeDrawing(const std::filesystem::path& file) {
        std::filesystem::create_directories(file.parent_path());
        AcDbDatabase drawing;
        if (file.filename() != "PLAN.dwg")
            editor::addToModelSpace(drawing, std::make_unique<AcDbLine>(AcGePoint3d{}, AcGePoint3d{1, 0, 0}));
        EXPECT_EQ(drawing.saveAs(editor::fromUtf8(file.string()).c_str()), eOk);
    }

    /// Runs a script on PLAN.dwg; the transcript stays in `transcript`, the exit status is given.
    int Run(const std::string& script, const std::string& program = TESSARO_BIN_DIR "/tessaro-editor",
            const std::string& more = {}) {
        const auto file = folder.write("script.scr", script);
        const std::string line =
            "cd '" + folder.path().string() + "' && env -u DISPLAY -u WAYLAND_DISPLAY HOME='" + folder.path().string() +
            "' LD_LIBRARY_PATH='" TESSARO_BIN_DIR "' QT_QPA_PLATFORM=offscreen timeout 200 '" + program +
            "' --batch --script '" + file.string() + "' " + more + " PLAN.dwg 2>/dev/null";
        FILE* const out = popen(line.c_str(), "r");
        if (out == nullptr)
            return -1;
        transcript.clear();
        char buffer[4096];
        while (const std::size_t size = std::fread(buffer, 1, sizeof buffer, out))
            transcript.append(buffer, size);
        const int status = pclose(out);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// Opens the browser on the library and takes a block.
    static std::string Choose(const std::string& block, const std::string& options = {},
                              const std::string& button = "Insert") {
        return "TESSARO\n> select Lib in directoryList\n> wait-until blockList \"" + block + "\"\n" + options +
               "> select \"" + block + "\" in blockList\n> click " + button + "\n";
    }

    std::size_t Count(const std::string& text) const {
        std::size_t count = 0;
        for (auto at = transcript.find(text); at != std::string::npos; at = transcript.find(text, at + 1))
            ++count;
        return count;
    }

    tests::TemporaryFolder folder;
    std::string transcript;
};

constexpr const char* kList = "LIST ALL\n\n";
constexpr const char* kQuit = "QUIT\nY\n";

} // namespace

TEST_F(Dialog, ABlockIsPlacedByAClickAndTakenBackByU) {
    EXPECT_EQ(Run(Choose("DOOR") + "10,20\n" + kList + "U\nLIST ALL\n\nREDO\n" + kList + kQuit), 0) << transcript;
    EXPECT_EQ(Count("Block Name: \"DOOR\""), 2u);
    EXPECT_THAT(transcript, HasSubstr("at point, X=10.0000  Y=20.0000"));
    EXPECT_THAT(transcript, HasSubstr("0 found"));
}

TEST_F(Dialog, ExplodeRepeatAndMultipleInsertRunTheirChains) {
    const std::string script = Choose("DOOR", "> set Explode on\n") + "1,1\n" + kList + // one line
                               Choose("DOOR", "> set Explode off\n> set Repeat on\n") + //
                               "> answer No\n2,2\n> wait-until blockList DOOR\n> set Repeat off\n> click Close\n" + //
                               kList + // and a reference
                               Choose("DOOR", "> set \"Multiple Insert\" on\n") + "> answer No\n3,3\n4,4\n^C\n" +
                               kList + "SETVAR CMDNAMES\n" + kQuit;
    EXPECT_EQ(Run(script), 0) << transcript;
    EXPECT_EQ(Count("1 found\nSelect objects: \n  LINE"), 1u) << transcript;
    EXPECT_THAT(transcript, HasSubstr("2 found"));
    EXPECT_THAT(transcript, HasSubstr("4 found"));
    EXPECT_THAT(transcript, HasSubstr("at point, X=4.0000  Y=4.0000"));
}

TEST_F(Dialog, AnExternalReferenceIsAttachedAndAnOpenedBlockBecomesADrawing) {
    EXPECT_EQ(Run(Choose("DOOR", "", "Xref/A") + "5,5\n-XREF ?\n" + Choose("DOOR", "", "Open") +
                  "SETVAR DWGNAME\nLIST ALL\n\nCLOSE\nSETVAR DWGNAME\n" + kQuit),
              0)
        << transcript;
    EXPECT_THAT(transcript, HasSubstr("\"DOOR\"  Attach  Loaded"));
    EXPECT_THAT(transcript, HasSubstr("DWGNAME = \"DOOR.dwg\""));
    EXPECT_THAT(transcript, HasSubstr("DWGNAME = \"PLAN.dwg\""));
}

TEST_F(Dialog, EscapeAtThePickTakesTheDefinitionOutAndRepeatReopens) {
    EXPECT_EQ(Run(Choose("DOOR", "> set Repeat on\n") +
                  "^C\n> wait-until blockList DOOR\n> set Repeat off\n> click Close\n-INSERT ?\n*\n^C\n" + kQuit),
              0)
        << transcript;
    EXPECT_THAT(transcript, Not(HasSubstr("\n\"DOOR\"\n")));
}

TEST_F(Dialog, NamesWithBlanksDotsPercentSignsAndForeignLettersArePlaced) {
    EXPECT_EQ(Run(Choose("oak gate.v2") + "1,1\n" + Choose("T\u00FCr 50%s") + "2,2\n" + kList + kQuit), 0)
        << transcript;
    EXPECT_THAT(transcript, HasSubstr("Block Name: \"oak gate.v2\""));
    EXPECT_THAT(transcript, HasSubstr("Block Name: \"T\u00FCr 50%s\""));
}

TEST_F(Dialog, AFileThatVanishesBetweenClickAndCommandIsTheHostsToTell) {
    std::filesystem::create_symlink(folder.path() / "lib" / "DOOR.dwg", folder.path() / "lib" / "LINK.dwg");
    const std::string script = "TESSARO\n> select Lib in directoryList\n> wait-until blockList LINK\n"
                               "> select LINK in blockList\n> click Insert\n^C\nLIST ALL\n\n";
    std::filesystem::remove(folder.path() / "lib" / "LINK.dwg");
    folder.write("lib/LINK.dwg", "no drawing at all");
    EXPECT_EQ(Run(script + kQuit), 1);
    EXPECT_THAT(transcript, HasSubstr("it is not a valid drawing file"));
    EXPECT_THAT(transcript, HasSubstr("Not carried out: -INSERT failed"));
    EXPECT_THAT(transcript, HasSubstr("0 found"));
}

TEST_F(Dialog, AHostOfTheLightKindExplodesByTheLastObject) {
    // The name of the executable decides, in any case.
    const auto program = folder.path() / "AcLT.exe";
    std::filesystem::copy_file(TESSARO_BIN_DIR "/tessaro-editor", program);
    EXPECT_EQ(Run(Choose("DOOR", "> set Explode on\n") + "1,1\n" + kList + kQuit, program.string(),
                  "--load '" TESSARO_BIN_DIR "/tessaro24-64.arx'"),
              0)
        << transcript;
    EXPECT_THAT(transcript, HasSubstr("1 found\nSelect objects: \n  LINE"));
}
