// Commands at random and as many steps back: the drawing is what it was, compared as saved.
#include "editor/application/drawing.h"
#include "editor/database/database_state.h"
#include "editor/database/undo.h"
#include "tests/application/EditorSession.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <numeric>
#include <random>
#include <vector>

namespace {

using namespace editor;

/// A saved drawing, object by object; what differs by itself from save to save is left out.
struct Saved {
    std::map<dwg::Handle, std::vector<std::uint8_t>> objects;
    std::vector<dwg::ObjectClass> classes;
    dwg::HeaderVariables header;
    bool operator==(const Saved&) const = default;
};

class UndoAtRandom : public testing::TestWithParam<unsigned> {
protected:
    UndoAtRandom() {
        for (const wchar_t* const name : {L"DOOR", L"GATE"}) {
            session.editor.execute(L"NEW\n-LAYER M " + std::wstring(name) + L"LAYER\n\nLINE 0,0 1,0 \nCIRCLE 0,0 " +
                                   std::to_wstring(static_cast<int>(name[0]) % 7 + 1) + L"\nTEXT 1,1 1 0 " + name +
                                   L"\n\nSAVEAS " + path(name) + L"\nCLOSE\n");
        }
        session.editor.execute(L"-LAYER N A,B\n\nLINE 0,0 9,9 \nCIRCLE 4,4 2\n");
    }

    std::wstring path(const std::wstring& name) const {
        return fromUtf8(folder.path().string()) + L"/" + name + L".dwg";
    }

    Saved saved() {
        const std::wstring file = path(L"saved");
        EXPECT_EQ(session.database().saveAs(file.c_str()), eOk);
        AcDbDatabase read(false);
        EXPECT_EQ(read.readDwgFile(file.c_str()), eOk);
        Saved content;
        for (const auto& object : read.impl()->drawing.objects())
            content.objects[object->handle] = object->record;
        content.classes = read.impl()->drawing.classes;
        content.header = read.impl()->header;
        content.header.TDUPDATE = {};
        content.header.HANDSEED = 0;
        return content;
    }

    int number(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }
    std::wstring point() { return std::to_wstring(number(50)) + L"," + std::to_wstring(number(50)); }

    std::wstring command() {
        const std::wstring block = number(2) == 0 ? L"DOOR" : L"GATE";
        switch (number(21)) {
        case 0:
        case 1:
            return L"LINE " + point() + L" " + point() + L" " + point() + L" \n";
        case 2:
            return L"CIRCLE " + point() + L" " + std::to_wstring(number(9) + 1) + L"\n";
        case 3:
            return L"TEXT " + point() + L" 1 0 Words\n\n";
        case 4:
            return L"ERASE L\n\n";
        case 5:
            return L"ERASE C " + point() + L" " + point() + L"\n\n";
        case 6:
        case 7:
            return L"-INSERT " + path(block) + L"\n_Y\nS 2 R 30 " + point() + L"\n^C^C";
        case 8:
            return L"-INSERT " + block + L"=" + path(number(2) == 0 ? L"DOOR" : L"GATE") + L"\nY\nS 1 R 0 " + point() +
                   L"\n^C^C";
        case 9:
            return L"EXPLODE L\n\n";
        case 10:
            return L"EXPLODE ALL\n\n";
        case 11:
            return L"-LAYER M L" + std::to_wstring(number(9)) + L"\nC " + std::to_wstring(number(255) + 1) + L" \n\n";
        case 12:
            return L"-LAYER OFF A\nLO B\nS 0\nR B\nB" + std::to_wstring(number(9)) + L"\n\n";
        case 13:
            return L"USERR4 " + std::to_wstring(number(100)) + L"\n";
        case 14:
            return L"-XREF A\n" + path(block) + L"\nS 1 R 0 " + point() + L"\n^C^C";
        case 15:
            return L"-XREF D\n" + block + L"\n";
        case 16:
            return L"-INSERT *" + block + L"\n" + point() + L" 2 45\n^C^C";
        case 17:
            return L"INSBASE " + point() + L"\n";
        case 18:
            return L"DIMSCALE " + std::to_wstring(number(9)) + L"\n";
        default:
            return L"PURGE A *\nN\n";
        }
    }

    tests::TemporaryFolder folder;
    tests::Session session;
    std::mt19937 random{GetParam()};
};

constexpr std::size_t kCommands = 200;

// A command that changes nothing is no step; another one takes its place.
TEST_P(UndoAtRandom, TwoHundredCommandsAndTwoHundredStepsBackGiveTheDrawingBack) {
    SCOPED_TRACE("seed " + std::to_string(GetParam()));
    const std::size_t depth = undoDepth(session.database());
    const Saved before = saved();
    while (undoDepth(session.database()) < depth + kCommands) {
        const std::wstring next = command();
        const std::size_t steps = undoDepth(session.database());
        session.editor.execute(next);
        ASSERT_LE(undoDepth(session.database()), steps + 1) << "one command is one step: " << tests::utf8(next);
        // In between it is saved, which undoing goes behind.
        if (undoDepth(session.database()) > steps && (steps - depth) % 50 == 20)
            saved();
    }
    const Saved after = saved();
    EXPECT_NE(after, before);
    for (std::size_t step = 0; step < kCommands; ++step)
        session.editor.execute(L"U\n");
    EXPECT_EQ(undoDepth(session.database()), depth);
    EXPECT_EQ(saved(), before);
    for (std::size_t step = 0; step < kCommands; ++step)
        session.editor.execute(L"REDO\n");
    EXPECT_EQ(saved(), after);
    session.editor.execute(L"UNDO " + std::to_wstring(kCommands) + L"\n");
    EXPECT_EQ(saved(), before);
}

TEST(UndoAndSave, ASaveBetweenCommandsLeavesTheStepsAsTheyAre) {
    tests::TemporaryFolder folder;
    tests::Session session;
    const std::wstring file = fromUtf8((folder.path() / "saved.dwg").string());
    session.editor.execute(L"LINE 0,0 1,1 \nERASE L\n\nCIRCLE 0,0 1\n");
    ASSERT_EQ(undoDepth(session.database()), 3u);
    ASSERT_EQ(session.database().saveAs(file.c_str()), eOk);
    EXPECT_EQ(undoDepth(session.database()), 3u) << "what was erased is gone for good with the last step";
    session.editor.execute(L"SAVEAS " + file + L"\nY\n");
    EXPECT_EQ(undoDepth(session.database()), 3u);
    session.editor.execute(L"U\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), testing::IsEmpty());
    session.editor.execute(L"U\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), testing::ElementsAre("LINE"));
}

/// One seed, or as many as TESSARO_UNDO_SEEDS says.
std::vector<unsigned> seeds() {
    const char* const wanted = std::getenv("TESSARO_UNDO_SEEDS");
    std::vector<unsigned> all(wanted != nullptr ? std::max(1, std::atoi(wanted)) : 1);
    std::iota(all.begin(), all.end(), 1u);
    return all;
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoAtRandom, testing::ValuesIn(seeds()),
                         [](const auto& seed) { return "Seed" + std::to_string(seed.param); });

} // namespace
