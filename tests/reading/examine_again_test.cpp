// What a pass over a Directory examines again, and what it leaves as it was.
#include "tests/reading/DrawingBuilder.h"
#include "tests/reading/LoaderFixture.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string Drawing(const char* magic, int width) {
    return tests::DrawingBuilder(magic).entry(2, tests::plainBitmap(width, 30, 0x0000FF));
}

class ExamineAgain : public tests::LoaderTest {
protected:
    ExamineAgain() {
        theBlockDlg = &window;
        dialogOpen = true;
    }
    /// A further pass, as after the next opening of the dialog.
    void Rescan(Directory& directory) {
        directory.loaded = false;
        for (Block* block : directory.blocks)
            block->checked = false;
        LoadDir(&directory);
    }
};

} // namespace

TEST_F(ExamineAgain, ALockedDrawingKeepsThePlaceholderUntilItChanges) {
    Directory* const directory = AddFolder("a", {});
    WriteDrawing("a", "x", Drawing("AC1015", 40));
    folder.write("a/x.DWK", "");
    LoadDir(directory);
    const Block& block = *directory->blocks.front();
    EXPECT_EQ(block.fileType, 0);
    EXPECT_EQ(block.imageIndex, 0);
    EXPECT_THAT(Examined(), IsEmpty());

    std::filesystem::remove(folder.path() / "a/x.DWK");
    Rescan(*directory);
    EXPECT_EQ(block.fileType, 0) << "unlocked, but the file is the same";
    EXPECT_EQ(block.imageIndex, 0);
    EXPECT_THAT(Examined(), IsEmpty());

    WriteDrawing("a", "x", Drawing("AC1015", 44));
    Rescan(*directory);
    EXPECT_EQ(block.fileType, 16);
    EXPECT_EQ(block.imageIndex, 1);
    EXPECT_THAT(Examined(), ElementsAre("a/x"));
}

TEST_F(ExamineAgain, TheSlotsOfAReloadedDirectoryStartAnew) {
    Directory* const old = AddFolder("a", {"without"});
    WriteDrawing("a", "x", Drawing("AC1015", 40));
    WriteDrawing("a", "y", Drawing("AC1015", 40));
    currentDirectory = old;
    LoadDir(old);
    EXPECT_EQ(BlockOf(*old, L"y")->imageIndex, 2);
    std::filesystem::remove(folder.path() / "a/x.dwg");

    ReloadDirectory(old);
    loader.pause = 0;
    Directory& fresh = *directories.front();
    EXPECT_EQ(fresh.smallImages->Count(), 1) << "the placeholder alone";
    LoadDir(&fresh);
    EXPECT_THAT(Names(fresh), ElementsAre(L"without", L"y"));
    EXPECT_EQ(BlockOf(fresh, L"without")->imageIndex, 0);
    EXPECT_EQ(BlockOf(fresh, L"y")->imageIndex, 1);
    EXPECT_EQ(fresh.smallImages->Count(), 2);
    EXPECT_EQ(fresh.largeImages->Count(), 2);
}

TEST_F(ExamineAgain, ADrawingOfTheNewestFormatIsListedAsUnknown) {
    Directory* const directory = AddFolder("a", {});
    WriteDrawing("a", "x", Drawing("AC1032", 40));
    currentDirectory = directory;
    LoadDir(directory);
    ASSERT_EQ(window.blockRows.size(), 1U);
    EXPECT_EQ(window.blockRows[0].cells[1], L"Unknwn");
    EXPECT_EQ(window.blockRows[0].image, 0) << "its section is not walked";
    EXPECT_THAT(Examined(), ElementsAre("a/x"));

    folder.write("a/x.bmp", tests::bitmapFile(tests::plainBitmap(20, 20, 0x00FF00)));
    WriteDrawing("a", "x", Drawing("AC1032", 44));
    Rescan(*directory);
    EXPECT_EQ(window.blockRows[0].cells[1], L"Unknwn");
    EXPECT_EQ(window.blockRows[0].image, 1) << "the picture beside it is";
}
