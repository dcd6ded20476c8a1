// The program tessaro-examine, run as users run it.

#include "tests/reading/DrawingBuilder.h"
#include "tests/support/Shell.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdio>

using namespace tests;

namespace {

constexpr std::uint32_t kGreen = 0x00ff00;

ShellRun runTool(const std::string& arguments) {
    return runShell("'" TESSARO_BIN_DIR "/tessaro-examine' " + arguments);
}

class ExamineTool : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string file = "'" + (folder.path() / "a.dwg").string() + "'";
    const std::string pictures = (folder.path() / "pictures").string();

    void write(const std::string& bytes) { folder.write("a.dwg", bytes); }
    std::string picture(const std::string& name) const { return readFile(folder.path() / "pictures" / name); }
};

TEST_F(ExamineTool, printsWhatTheExaminationFound) {
    write(DrawingBuilder("AC1015").entry(1, "T\xC3\xBCr").entry(2, plainBitmap(20, 20, kGreen)));
    const ShellRun outcome = runTool(file);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "{\n"
                              "  \"fileType\": 16,\n"
                              "  \"typeName\": \"2000\",\n"
                              "  \"description\": \"T\xC3\xBCr\",\n"
                              "  \"created\": 0,\n"
                              "  \"modified\": 0,\n"
                              "  \"points\": [],\n"
                              "  \"hasPicture\": true\n"
                              "}\n");
}

TEST_F(ExamineTool, writesFourPicturesOfRawPixels) {
    write(DrawingBuilder("AC1015").entry(2, plainBitmap(100, 100, 0x00f000)));
    EXPECT_EQ(runTool(file + " --background 302821 --pictures '" + pictures + "'").status, 0);
    const std::string drawn = picture("large.drawn");
    ASSERT_EQ(drawn.size(), 130U * 96 * 3);
    EXPECT_EQ(drawn.substr(0, 3), "\x21\x28\x30") << "background, red first";
    EXPECT_EQ(drawn.substr((48 * 130 + 65) * 3, 3), std::string("\0\xf0\0", 3));
    EXPECT_EQ(picture("large.stored").substr((48 * 130 + 65) * 3, 3), std::string("\0\xff\0", 3));
    EXPECT_EQ(picture("small.drawn").size(), 66U * 49 * 3);
    EXPECT_EQ(picture("small.stored").size(), 66U * 49 * 3);
}

TEST_F(ExamineTool, marksReplaceThePoints) {
    write(DrawingBuilder("AC1015").entry(2, plainBitmap(130, 96, kGreen)));
    const ShellRun marked = runTool(file + " --mark 20.5,30 --mark 65,48 --pictures '" + pictures + "'");
    EXPECT_NE(marked.output.find("20.5,\n    30,\n    65,\n    48\n"), std::string::npos) << marked.output;
    EXPECT_EQ(picture("large.drawn").substr((48 * 130 + 65) * 3, 3), std::string("\xff\0\0", 3));
    const ShellRun plain = runTool(file + " --no-marks --pictures '" + pictures + "'");
    EXPECT_NE(plain.output.find("\"points\": []"), std::string::npos);
    EXPECT_EQ(picture("large.drawn").substr((48 * 130 + 65) * 3, 3), std::string("\0\xff\0", 3));
}

TEST_F(ExamineTool, withoutAPictureNoneIsWritten) {
    write("AC1032");
    const ShellRun outcome = runTool(file + " --pictures '" + pictures + "'");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.output.find("\"hasPicture\": false"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(pictures));
}

TEST_F(ExamineTool, askedForHelpItTellsItsUse) {
    for (const char* asked : {"--help", "-h"}) {
        const ShellRun outcome = runTool(asked);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_TRUE(outcome.output.starts_with("usage: tessaro-examine FILE [--background HEX]")) << outcome.output;
    }
}

TEST_F(ExamineTool, saysWhatItCantDo) {
    write("AC1015");
    for (const std::string& arguments :
         {std::string(), std::string("/nowhere/a.dwg"), std::string("/etc/passwd"), file + " --background green",
          file + " --mark 3", file + " --mark 3,x", file + " --pictures", file + " --other", file + " " + file}) {
        const ShellRun outcome = runTool(arguments);
        EXPECT_EQ(outcome.status, 1) << arguments;
        EXPECT_TRUE(outcome.output.starts_with("tessaro-examine: ")) << arguments << '\n' << outcome.output;
    }
    folder.write("a.DWK", "");
    EXPECT_EQ(runTool(file).status, 1) << "locked";
}

} // namespace
