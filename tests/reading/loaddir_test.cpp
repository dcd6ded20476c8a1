// One pass over a Directory, carried out by the test's own thread.
#include "tests/reading/DrawingBuilder.h"
#include "tests/reading/LoaderFixture.h"

#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/Time.h"

#include "tessaro/reading/DirectoryUsers.h"

#include <gmock/gmock.h>

#include <atomic>
#include <filesystem>
#include <sched.h>
#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::int32_t kStopped = 0, kDone = 123;

class LoadDirTest : public tests::LoaderTest {
protected:
    LoadDirTest() {
        theBlockDlg = &window;
        dialogOpen = true;
    }

    /// What the pass throws, or 0.
    static int Thrown(Directory* directory) {
        try {
            LoadDir(directory);
        } catch (int interrupt) {
            return interrupt;
        }
        return 0;
    }

    void Remove(const std::string& drawing) { std::filesystem::remove(folder.path() / (drawing + ".dwg")); }
};

} // namespace

TEST_F(LoadDirTest, TheFirstScanTakesNamesSizesAndDatesInTheFindersOrder) {
    Directory* const directory = AddFolder("a", {"Zebra", "apple", "Mango.old"});
    folder.write("a/notes.txt", "none");
    folder.write("a/UPPER.DWG", "12345");
    std::filesystem::create_directory(folder.path() / "a" / "folder.dwg");
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_THAT(Names(*directory), ElementsAre(L"apple", L"Mango.old", L"UPPER", L"Zebra"));
    const Block& upper = *BlockOf(*directory, L"UPPER");
    const auto status = platform::GetFileStatus(platform::FromNarrow((folder.path() / "a/UPPER.DWG").string()));
    EXPECT_EQ(upper.status.m_size, 5u);
    EXPECT_EQ(upper.status.m_ctime, status->created);
    EXPECT_EQ(upper.status.m_mtime, status->modified);
    EXPECT_EQ(upper.created, status->created);
    EXPECT_EQ(upper.modified, status->modified);
    EXPECT_TRUE(directory->loaded);
}

TEST_F(LoadDirTest, TheStatusColumnGoesFromReadingToFillingToVerifyingToEmpty) {
    Directory* const directory = AddFolder("a", {"x"});
    currentDirectory = directory;
    LoadDir(directory);
    EXPECT_THAT(RowOf(*directory).states, ElementsAre(L"D", L"L", L"V", L""));
    EXPECT_EQ(RowOf(*directory).cells[1], L"1");
}

TEST_F(LoadDirTest, AFolderWithoutADrawingStaysAtReadingAndIsScannedAgainByEachPass) {
    Directory* const directory = AddFolder("a", {});
    EXPECT_EQ(LoadDir(directory), kStopped);
    EXPECT_EQ(LoadDir(directory), kStopped);
    EXPECT_THAT(RowOf(*directory).states, ElementsAre(L"D", L"D"));
    EXPECT_FALSE(directory->loaded);
    EXPECT_FALSE(directory->dirty);
    WriteDrawing("a", "late");
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_THAT(Names(*directory), ElementsAre(L"late"));
}

TEST_F(LoadDirTest, AFolderThatDoesNotExistIsAFolderWithoutADrawing) {
    Directory* const directory = AddFolder("a", {});
    directory->path += L"/missing";
    EXPECT_EQ(LoadDir(directory), kStopped);
    EXPECT_THAT(Names(*directory), IsEmpty());
}

TEST_F(LoadDirTest, AFolderWithATrailingSeparatorIsReadAlike) {
    Directory* const directory = AddFolder("a", {"x"});
    directory->path += platform::kSeparator;
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_THAT(Examined(), ElementsAre("a/x"));
}

TEST_F(LoadDirTest, ARescanThatFindsNothingKeepsTheBlocks) {
    Directory* const directory = AddFolder("a", {"x", "y"});
    LoadDir(directory);
    directory->loaded = false;
    Remove("a/x");
    Remove("a/y");
    EXPECT_EQ(LoadDir(directory), kStopped);
    EXPECT_THAT(Names(*directory), ElementsAre(L"x", L"y"));
    EXPECT_FALSE(directory->loaded);
}

TEST_F(LoadDirTest, ANewFileGivesOneBlockAtTheTailThatAloneIsExamined) {
    Directory* const directory = AddFolder("a", {"m", "x"});
    currentDirectory = directory;
    LoadDir(directory);
    directory->loaded = false;
    directory->dirty = false;
    WriteDrawing("a", "b");
    for (Block* block : directory->blocks)
        block->checked = false;
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_THAT(Names(*directory), ElementsAre(L"m", L"x", L"b"));
    EXPECT_THAT(Examined(), ElementsAre("a/m", "a/x", "a/b"));
    EXPECT_TRUE(BlockOf(*directory, L"m")->checked);
    EXPECT_TRUE(directory->dirty);
}

TEST_F(LoadDirTest, AnUnchangedFolderExaminesNothingAndStaysClean) {
    Directory* const directory = AddFolder("a", {"m", "x"});
    LoadDir(directory);
    directory->loaded = directory->dirty = false;
    for (Block* block : directory->blocks)
        block->checked = false;
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_EQ(Examined().size(), 2u);
    EXPECT_FALSE(directory->dirty);
    EXPECT_TRUE(BlockOf(*directory, L"x")->checked);
}

TEST_F(LoadDirTest, ADeletedFilesBlockVanishesWithTheNextRescan) {
    Directory* const directory = AddFolder("a", {"m", "x"});
    currentDirectory = directory;
    LoadDir(directory);
    directory->loaded = directory->dirty = false;
    Remove("a/m");
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_THAT(Names(*directory), ElementsAre(L"x"));
    EXPECT_TRUE(directory->dirty);
}

TEST_F(LoadDirTest, AFileIsExaminedAgainWhereSizeOrTimeDiffers) {
    Directory* const directory = AddFolder("a", {"size", "time", "same"});
    LoadDir(directory);
    directory->loaded = false;
    for (Block* block : directory->blocks)
        block->checked = false;
    WriteDrawing("a", "size", "longer than before");
    std::filesystem::last_write_time(folder.path() / "a/time.dwg",
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    LoadDir(directory);
    EXPECT_THAT(Examined(), ElementsAre("a/same", "a/size", "a/time", "a/size", "a/time"));
    EXPECT_EQ(BlockOf(*directory, L"size")->cachedStatus, BlockOf(*directory, L"size")->status);
}

TEST_F(LoadDirTest, ANameThatDiffersInCaseIsANewFileAndADeletedBlock) {
    Directory* const directory = AddFolder("a", {"chair", "desk"});
    LoadDir(directory);
    directory->loaded = false;
    std::filesystem::rename(folder.path() / "a/chair.dwg", folder.path() / "a/Chair.dwg");
    LoadDir(directory);
    EXPECT_THAT(Names(*directory), ElementsAre(L"desk", L"Chair"));
    EXPECT_THAT(Examined(), ElementsAre("a/chair", "a/desk", "a/Chair"));
}

TEST_F(LoadDirTest, TwoFilesWithOneTitleAreTwoBlocksAndStaySo) {
    Directory* const directory = AddFolder("a", {"x"});
    folder.write("a/x.DWG", "other");
    LoadDir(directory);
    directory->loaded = false;
    LoadDir(directory);
    EXPECT_THAT(Names(*directory), ElementsAre(L"x", L"x"));
}

TEST_F(LoadDirTest, ABlockFromTheCacheWhoseFolderIsGoneRemainsUnverified) {
    Directory* const directory = AddFolder("a", {});
    auto* const block = new Block;
    block->name = L"gone";
    block->cached = true;
    directory->blocks.push_back(block);
    directory->path += L"/missing";
    EXPECT_EQ(LoadDir(directory), kStopped);
    EXPECT_FALSE(block->checked);
    EXPECT_EQ(directory->blocks.size(), 1u);
}

TEST_F(LoadDirTest, ABlockFromTheCacheWithTheSameStatusIsOnlyCompared) {
    Directory* const directory = AddFolder("a", {"x"});
    LoadDir(directory);
    Block& block = *directory->blocks.front();
    block.checked = false;
    block.status = {};
    directory->loaded = false;
    LoadDir(directory);
    EXPECT_THAT(Examined(), ElementsAre("a/x"));
    EXPECT_EQ(block.status, block.cachedStatus);
    EXPECT_TRUE(block.checked);
}

TEST_F(LoadDirTest, ALoadedDirectoryIsPassedOverWithoutASearch) {
    Directory* const directory = AddFolder("a", {"x"});
    LoadDir(directory);
    WriteDrawing("a", "y");
    RowOf(*directory).states.clear();
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_THAT(Names(*directory), ElementsAre(L"x"));
    EXPECT_THAT(RowOf(*directory).states, ElementsAre(L"L", L""));
}

TEST_F(LoadDirTest, TheShownDirectoryFillsTheListBehindTheCurtain) {
    Directory* const directory = AddFolder("a", {"x", "y"});
    currentDirectory = directory;
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_THAT(window.done,
                ElementsAre("EmptyBlockList", "SetBlockImages", "SetBlockImages", "ShowCurtain", "ClearBlockViewBits",
                            "ArrangeBlocks", "FillBlockControls(false)", "HideCurtain"));
    EXPECT_EQ(window.placeholderRows, 2);
    ASSERT_EQ(window.blockRows.size(), 2u);
    auto& row = window.blockRows[1];
    const Block& block = *BlockOf(*directory, L"y");
    EXPECT_EQ(row.text, L"y");
    EXPECT_EQ(row.block, &block);
    EXPECT_EQ(block.listIndex, 1);
    EXPECT_EQ(row.cells[1], L"Unknwn");
    EXPECT_EQ(row.cells[2], L"");
    EXPECT_EQ(row.cells[3], L"10");
    EXPECT_EQ(row.cells[4], platform::FormatTime(block.created, L"%x, %X"));
    EXPECT_EQ(row.cells[5], platform::FormatTime(block.modified, L"%x, %X"));
    EXPECT_TRUE(directory->dirty) << "a shown Directory keeps what is to be saved";
}

TEST_F(LoadDirTest, ADirectoryThatIsUpToDateIsStillFilledWhenItIsShown) {
    Directory* const directory = AddFolder("a", {"x", "y"});
    LoadDir(directory);
    currentDirectory = directory;
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_EQ(window.blockRows.size(), 2u);
    EXPECT_EQ(Examined().size(), 2u);
}

TEST_F(LoadDirTest, ADirectoryThatIsNotShownTouchesNoRow) {
    Directory* const shown = AddFolder("a", {"x"});
    Directory* const other = AddFolder("b", {"y"});
    currentDirectory = shown;
    LoadDir(shown);
    window.done.clear();
    LoadDir(other);
    EXPECT_THAT(window.done, IsEmpty());
    ASSERT_EQ(window.blockRows.size(), 1u);
    EXPECT_EQ(window.blockRows[0].block, shown->blocks.front());
}

TEST_F(LoadDirTest, WithTheDialogGonePassesStopBeforeTheFill) {
    Directory* const directory = AddFolder("a", {"x"});
    currentDirectory = directory;
    dialogOpen = false;
    EXPECT_EQ(LoadDir(directory), kStopped);
    EXPECT_THAT(Names(*directory), ElementsAre(L"x")) << "the scan itself is done";
    EXPECT_THAT(window.blockRows, IsEmpty());
    EXPECT_THAT(RowOf(*directory).states, ElementsAre(L"D"));
}

TEST_F(LoadDirTest, ADirectoryThatBecomesTheShownOneOnTheWaySkipsTheFillWhileRowsAreThere) {
    Directory* const directory = AddFolder("a", {"x", "y"});
    window.InsertBlockRow(L"of another one");
    // It becomes the shown one between the start, when the list would be emptied,
    // and the fill.
    window.onDirectoryCell = [&](int column, const std::wstring& text) {
        if (column == 2 && text == L"D")
            currentDirectory = directory;
    };
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_EQ(window.blockRows.size(), 1u);
    EXPECT_EQ(window.placeholderRows, 0);
}

TEST_F(LoadDirTest, ARaisedPauseThrowsOneAndTheQuitTwo) {
    Directory* const directory = AddFolder("a", {"x"});
    loader.pause = 1;
    EXPECT_EQ(Thrown(directory), 1);
    loader.quit = true;
    EXPECT_EQ(Thrown(directory), 2);
    EXPECT_THAT(directory->blocks, IsEmpty()) << "the first look comes right after the start";
    loader.pause = 0;
    EXPECT_EQ(Thrown(directory), 0) << "the quit is read with a raised pause only";
}

TEST_F(LoadDirTest, AnInterruptedFillLeavesReservedRowsUnderTheCurtainAndIsTakenUpFromTheStart) {
    Directory* const directory = AddFolder("a", {"k", "l", "m", "n"});
    currentDirectory = directory;
    window.onBlockRowFilled = [](int row) { loader.pause = row == 1 ? 1 : loader.pause.load(); };
    EXPECT_EQ(Thrown(directory), 1);
    ASSERT_EQ(window.blockRows.size(), 4u);
    EXPECT_EQ(window.blockRows[1].text, L"l");
    EXPECT_EQ(window.blockRows[2].text, L"12345678");
    EXPECT_EQ(window.blockRows[3].block, nullptr);
    EXPECT_TRUE(window.curtain);
    EXPECT_THAT(Examined(), IsEmpty());

    loader.pause = 0;
    window.onBlockRowFilled = nullptr;
    EXPECT_EQ(LoadDir(directory), kDone);
    ASSERT_EQ(window.blockRows.size(), 4u);
    EXPECT_EQ(window.blockRows[3].text, L"n");
    EXPECT_FALSE(window.curtain);
}

TEST_F(LoadDirTest, RowsThatADeleteEmptiesDuringTheFillAreMissingAndTheDirectoryIsReadAllTheSame) {
    Directory* const directory = AddFolder("a", {"k", "l", "m"});
    currentDirectory = directory;
    window.onBlockRowFilled = [this](int row) {
        if (row == 1)
            window.EmptyBlockList();
    };
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_THAT(window.blockRows, IsEmpty());
    EXPECT_THAT(Examined(), ElementsAre("a/k", "a/l", "a/m"));
    EXPECT_TRUE(directory->loaded);
}

TEST_F(LoadDirTest, RowsThatAreInsertedBehindADeleteGoWithTheBlocksOfTheirFiles) {
    Directory* const directory = AddFolder("a", {"k", "l", "m"});
    currentDirectory = directory;
    window.onBlockRowInserted = [this] {
        window.onBlockRowInserted = nullptr;
        EmptyBlockRows(window);
    };
    EXPECT_EQ(LoadDir(directory), kDone);
    ASSERT_FALSE(window.blockRows.empty());
    std::filesystem::remove(folder.path() / "a" / "k.dwg");
    currentDirectory = nullptr;
    directory->loaded = false;
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_EQ(directory->blocks.size(), 2u);
    EXPECT_THAT(window.blockRows, IsEmpty());
}

TEST_F(LoadDirTest, AFillWhoseDirectoryIsLeftStopsWithoutAnInterruption) {
    Directory* const directory = AddFolder("a", {"k", "l", "m"});
    currentDirectory = directory;
    window.onBlockRowFilled = [](int) { currentDirectory = nullptr; };
    EXPECT_EQ(LoadDir(directory), kDone);
    ASSERT_EQ(window.blockRows.size(), 3u);
    EXPECT_EQ(window.blockRows[0].text, L"k");
    EXPECT_EQ(window.blockRows[1].text, L"12345678");
    EXPECT_FALSE(window.curtain) << "the list is shown again as long as there is a dialog";
}

TEST_F(LoadDirTest, AThreadThatReadsInTheBackgroundGivesWayAndRisesAgainForTheShownDirectory) {
    Directory* const directory = AddFolder("a", {"x"});
    std::atomic<int> behind{-1}, shown{-1};
    std::thread worker([&] {
        LoadDir(directory);
        behind = sched_getscheduler(0);
        currentDirectory = directory;
        LoadDir(directory);
        shown = sched_getscheduler(0);
    });
    EXPECT_TRUE(ServeUntil([&] { return shown != -1; }));
    worker.join();
    EXPECT_EQ(behind, SCHED_BATCH);
    EXPECT_EQ(shown, SCHED_OTHER);
}

TEST_F(LoadDirTest, ADamagedDrawingIsNotTriedAgainUntilItChanges) {
    Directory* const directory = AddFolder("a", {});
    WriteDrawing("a", "empty", "");
    LoadDir(directory);
    Block& block = *directory->blocks.front();
    EXPECT_EQ(block.fileType, 0);
    EXPECT_EQ(block.imageIndex, 0);
    EXPECT_TRUE(block.checked);
    EXPECT_TRUE(block.cached);
    directory->loaded = block.checked = false;
    LoadDir(directory);
    EXPECT_EQ(Examined().size(), 1u);
}

TEST_F(LoadDirTest, PicturesJoinTheListsThatTheWindowShows) {
    Directory* const directory = AddFolder("a", {});
    const std::string bitmap = tests::plainBitmap(40, 30, 0x0000FF);
    WriteDrawing("a", "x", tests::DrawingBuilder("AC1015").entry(2, bitmap));
    WriteDrawing("a", "y", tests::DrawingBuilder("AC1015").entry(2, bitmap));
    currentDirectory = directory;
    EXPECT_EQ(LoadDir(directory), kDone);
    EXPECT_EQ(BlockOf(*directory, L"x")->imageIndex, 1);
    EXPECT_EQ(BlockOf(*directory, L"y")->imageIndex, 2);
    EXPECT_EQ(directory->largeImages->Count(), 3);
    EXPECT_EQ(window.large, directory->largeImages.get()) << "a list that is written is no longer the shared one";
    EXPECT_EQ(window.small, directory->smallImages.get());
    EXPECT_EQ(window.blockRows[1].image, 2);
}

TEST_F(LoadDirTest, AnotherPictureReplacesTheOldOneInItsSlot) {
    Directory* const directory = AddFolder("a", {});
    currentDirectory = directory;
    WriteDrawing("a", "x", tests::DrawingBuilder("AC1015").entry(2, tests::plainBitmap(40, 30, 0x0000FF)));
    LoadDir(directory);
    const Picture before = directory->smallImages->Draw(1);
    WriteDrawing("a", "x", tests::DrawingBuilder("AC1015").entry(2, tests::plainBitmap(41, 30, 0xFF0000)));
    directory->loaded = BlockOf(*directory, L"x")->checked = false;
    LoadDir(directory);
    EXPECT_EQ(BlockOf(*directory, L"x")->imageIndex, 1);
    EXPECT_EQ(directory->smallImages->Count(), 2);
    EXPECT_NE(directory->smallImages->Draw(1), before);
}

TEST_F(LoadDirTest, TheSlotOfADeletedBlockStaysInTheLists) {
    Directory* const directory = AddFolder("a", {"z"});
    currentDirectory = directory;
    WriteDrawing("a", "x", tests::DrawingBuilder("AC1015").entry(2, tests::plainBitmap(40, 30, 0x0000FF)));
    LoadDir(directory);
    Remove("a/x");
    directory->loaded = false;
    LoadDir(directory);
    EXPECT_EQ(directory->smallImages->Count(), 2);
    EXPECT_EQ(directory->blocks.size(), 1u);
}
