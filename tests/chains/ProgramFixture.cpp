#include "tests/chains/ProgramFixture.h"

#include "editor/application/drawing.h"
#include "editor/application/text.h"
#include "editor/sdk/db.h"
#include "tests/support/Shell.h"

#include <memory>

namespace tests {

ProgramTest::ProgramTest() {
    AcDbDatabase drawing;
    EXPECT_EQ(drawing.saveAs((folder.path() / "PLAN.dwg").wstring().c_str()), eOk);
}

void ProgramTest::MakeDrawing(const std::filesystem::path& file) {
    std::filesystem::create_directories(file.parent_path());
    AcDbDatabase drawing;
    editor::addToModelSpace(drawing, std::make_unique<AcDbLine>(AcGePoint3d{}, AcGePoint3d{1, 0, 0}));
    EXPECT_EQ(drawing.saveAs(editor::fromUtf8(file.string()).c_str()), eOk);
}

void ProgramTest::Catalogue(const std::filesystem::path& library, const std::string& more) const {
    folder.write("tessaro35.ini",
                 "[Paths]\nNumPaths=1\nPath1=" + library.string() + "\n[" + library.string() +
                     "]\nDescription=Lib\nScale=1-to-1\nRotation=0\nView=3\nSortStyle=Name\nCurrentScheme=<None>\n" +
                     more);
}

std::string ProgramTest::CommandLine(const std::string& script, const std::string& program,
                                     const std::string& more) const {
    const auto file = folder.write("script.scr", script);
    const std::string home = folder.path().string();
    return "cd '" + home + "' && exec env -u DISPLAY -u WAYLAND_DISPLAY HOME='" + home +
           "' LD_LIBRARY_PATH='" TESSARO_BIN_DIR "' QT_QPA_PLATFORM=offscreen '" + program + "' --batch --script '" +
           file.string() + "' " + more + " PLAN.dwg 2>/dev/null";
}

int ProgramTest::Run(const std::string& script, const std::string& program, const std::string& more) {
    const ShellRun run = runShell("timeout 200 sh -c \"" + CommandLine(script, program, more) + "\"");
    transcript = run.output;
    return run.status;
}

std::string ProgramTest::Choose(const std::string& block, const std::string& options, const std::string& button) {
    return "TESSARO\n> select Lib in directoryList\n> wait-until blockList \"" + block + "\"\n" + options +
           "> select \"" + block + "\" in blockList\n> click " + button + "\n";
}

std::size_t ProgramTest::CountIn(const std::string& whole, const std::string& text) {
    std::size_t count = 0;
    for (auto at = whole.find(text); at != std::string::npos; at = whole.find(text, at + 1))
        ++count;
    return count;
}

} // namespace tests
