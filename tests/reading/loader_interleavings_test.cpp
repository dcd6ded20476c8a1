// What the threads of an opening do to each other, each order forced at a known place.
#include "tests/reading/LoaderFixture.h"

#include "tests/reading/DrawingBuilder.h"

#include "tessaro/catalogue/DirCache.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/LoaderThreads.h"

#include <gmock/gmock.h>

#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Interleavings : public tests::LoaderTest {
protected:
    bool ServeUntilDeleted() {
        return ServeUntil([] { return loaderThreads.deletes == 0; });
    }
};

} // namespace

// A drawing closes while the worker reads

TEST_F(Interleavings, ADrawingThatClosesWhileTheShownDirectoryIsReadDoesNotInterruptIt) {
    Directory* const shown = AddFolder("shown", {"one", "two"});
    Directory* const other = AddFolder("other", {"x"});
    currentDirectory = shown;
    HoldAt("shown/one");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    RequeueCurrentDirectory();
    EXPECT_EQ(loader.pause, 0);
    {
        const std::lock_guard queue(loader.cs);
        EXPECT_THAT(loader.loadQueue, ElementsAre(shown, shown, other));
    }
    Release();
    ASSERT_TRUE(ServeUntilAllLoaded());
    ASSERT_TRUE(ServeUntilIdle());
    EXPECT_THAT(Examined(), ElementsAre("shown/one", "shown/two", "other/x"));
}

TEST_F(Interleavings, ADrawingThatClosesWhileAnotherDirectoryIsReadLosesItsPlaceToTheRemovalOfTheHead) {
    Directory* const shown = AddFolder("shown", {"one"});
    AddFolder("other", {"x", "y"});
    currentDirectory = shown;
    HoldAt("other/x");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    EXPECT_TRUE(shown->loaded);
    RequeueCurrentDirectory();
    EXPECT_FALSE(shown->loaded);
    Release();
    ASSERT_TRUE(ServeUntilIdle());
    EXPECT_THAT(Examined(), ElementsAre("shown/one", "other/x", "other/y"));
    EXPECT_FALSE(shown->loaded) << "whichever Directory is the head is removed";
    QueueFirst(shown);
    ASSERT_TRUE(ServeUntilAllLoaded());
}

TEST_F(Interleavings, AKickCutsTheLoopsWaitShort) {
    waits.kick = std::chrono::minutes(10);
    Directory* const first = AddFolder("a", {"one"});
    Directory* const second = AddFolder("b", {"two"});
    currentDirectory = first;
    Open();
    // The kick of ValidateDirs ends the wait behind the first pass; then only a click can.
    ASSERT_TRUE(ServeUntilIdle());
    second->loaded = false;
    ShowDirectory(second);
    ASSERT_TRUE(ServeUntil([] { return loader.pause == 0; }));
    loader.kickevent.SetEvent();
    ASSERT_TRUE(ServeUntil([&] { return second->loaded; }));
}

TEST_F(Interleavings, ADescriptionThatChangesWhileItsDrawingIsExaminedStays) {
    Directory* const shown = AddFolder("shown", {});
    WriteDrawing("shown", "a", tests::DrawingBuilder("AC1015").entry(1, std::string("stored\0", 7)));
    WriteDrawing("shown", "b", tests::DrawingBuilder("AC1015").entry(1, std::string("stored\0", 7)));
    currentDirectory = shown;
    HoldAt("shown/b");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    BlockOf(*shown, L"b")->description = L"typed meanwhile";
    Release();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_EQ(BlockOf(*shown, L"a")->description, L"stored");
    EXPECT_EQ(BlockOf(*shown, L"b")->description, L"typed meanwhile");
}

TEST_F(Interleavings, APictureThatIsFoundAfterItsDirectoryWasLeftJoinsTheSavedOnes) {
    Directory* const left = AddFolder("left", {});
    for (const char* title : {"a", "b", "c"})
        WriteDrawing("left", title, tests::DrawingBuilder("AC1015").entry(2, tests::plainBitmap(20, 16, 0xff)));
    Directory* const other = AddFolder("other", {});
    left->cacheFile = platform::FromNarrow((folder.path() / "doomed.cache").string());
    currentDirectory = left;
    window.onStore = [&] {
        if (Directory* const shown = currentDirectory)
            SaveIfDirty(*shown);
    };
    HoldAt("left/b");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    ShowDirectory(other); // saves the first picture
    Release();
    ASSERT_TRUE(ServeUntil([&] { return left->loaded; }));
    LoadDirCache(*left);
    EXPECT_EQ(left->largeImages->Count(), 4);
    EXPECT_THAT((std::vector{BlockOf(*left, L"a")->imageIndex, BlockOf(*left, L"b")->imageIndex,
                             BlockOf(*left, L"c")->imageIndex}),
                ElementsAre(1, 2, 3));
}

// The main thread

TEST_F(Interleavings, WhileTheReaderBlocksTheMainThreadAnswersAThousandEvents) {
    currentDirectory = AddFolder("slow", {"a", "b"});
    HoldAt("slow/a");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    int answered = 0;
    std::thread events([&] {
        for (int event = 0; event < 1000; ++event)
            platform::CallOnMainThread([&] { ++answered; });
    });
    ASSERT_TRUE(ServeUntil([&] { return answered == 1000; }));
    events.join();
    EXPECT_THAT(Examined(), ElementsAre("slow/a")) << "the reader was blocked all the time";
    Release();
    EXPECT_TRUE(ServeUntilAllLoaded());
}

// Closing

TEST_F(Interleavings, ACloseInTheFillLeavesTheRestUnfilledAndTheListIsEmptiedBehindIt) {
    Directory* const directory = AddFolder("a", {"one", "two", "three"});
    currentDirectory = directory;
    int filled = 0;
    window.onBlockRowFilled = [&](int) {
        if (++filled == 1)
            StopLoader();
    };
    Open();
    ASSERT_TRUE(ServeUntil([&] { return !window.commands.empty(); }));
    WaitForLastClose();
    EXPECT_EQ(filled, 1);
    EXPECT_TRUE(window.blockRows.empty());
    EXPECT_THAT(Examined(), IsEmpty());
    EXPECT_FALSE(directory->loaded);
}

TEST_F(Interleavings, ACloseWhileTheWorkerWaitsIsNoticedAtOnce) {
    waits.kick = std::chrono::minutes(10);
    currentDirectory = AddFolder("a", {"one"});
    Open();
    ASSERT_TRUE(ServeUntilIdle());
    Close();
    EXPECT_THAT(window.commands, ElementsAre(248));
}

TEST_F(Interleavings, ACloseAheadOfTheFirstPassReadsNothing) {
    Directory* const directory = AddFolder("a", {"one"});
    currentDirectory = directory;
    theBlockDlg = &window;
    ValidateDirs();
    dialogOpen = true;
    StopLoader(); // its request stands before the worker looks for the first time
    StartLoader(waits);
    ASSERT_TRUE(ServeUntil([&] { return !window.commands.empty(); }));
    ASSERT_TRUE(ServeUntil([] { return !loaderThreads.open; }));
    EXPECT_THAT(Examined(), IsEmpty());
    EXPECT_TRUE(directory->blocks.empty());
}

TEST_F(Interleavings, ReopeningAtOnceWaitsForTheFinishersLastStepsAndReadsAnew) {
    Directory* const directory = AddFolder("a", {"one"});
    currentDirectory = directory;
    readDirEveryTime = 1;
    delCacheMemoryOnClose = 1;
    for (int opening = 0; opening < 5; ++opening) {
        window.commands.clear();
        Open();
        ASSERT_TRUE(ServeUntilAllLoaded());
        StopLoader();
        bool closingAtPost = false, quitAtPost = false;
        window.onCommand = [&](int) {
            closingAtPost = loaderThreads.closing;
            quitAtPost = loader.quit;
        };
        ASSERT_TRUE(ServeUntil([&] { return !window.commands.empty(); }));
        EXPECT_TRUE(closingAtPost) << "the finisher has steps behind the command";
        EXPECT_TRUE(quitAtPost);
        WaitForLastClose();
        EXPECT_FALSE(loader.quit);
        EXPECT_FALSE(loaderThreads.open);
        EXPECT_EQ(loader.pause, 1) << "raised by the quit, for the next worker to take off";
    }
    delCacheMemoryOnClose = 0;
    EXPECT_THAT(Examined(), ElementsAre("a/one"));
}

TEST_F(Interleavings, ANewWorkerTakesAllThatWasLeftOfPauseOffBeforeItReads) {
    currentDirectory = AddFolder("a", {"one"});
    loader.pause = 3;
    int pauseAtFirst = -1;
    const auto watched = answer;
    answer = [&](tests::HelperCall& call) {
        pauseAtFirst = loader.pause;
        return watched(call);
    };
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_EQ(pauseAtFirst, 0);
}

// Replacing and deleting

TEST_F(Interleavings, ADirectoryThatIsReplacedTwiceWhileItIsReadEndsAsItsLastCopy) {
    Directory* const old = AddFolder("a", {"one", "two"});
    currentDirectory = old;
    HoldAt("a/one");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    ReloadDirectory(old);
    ReloadDirectory(directories.front());
    Directory* const last = directories.front();
    EXPECT_EQ(currentDirectory, last);
    {
        const std::lock_guard queue(loader.cs);
        EXPECT_THAT(loader.loadQueue, ElementsAre(last));
    }
    Release();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(), ElementsAre("a/one", "a/one", "a/two"));
    EXPECT_EQ(window.DirectoryAt(0), last);
}

TEST_F(Interleavings, ADirectoryThatIsReplacedAndClosedOverIsReadByTheNextOpening) {
    Directory* const old = AddFolder("a", {"one"});
    currentDirectory = old;
    HoldAt("a/one");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    ReloadDirectory(old);
    StopLoader();
    Release();
    WaitForLastClose();
    EXPECT_TRUE(directories.front()->blocks.empty());
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(), ElementsAre("a/one", "a/one"));
}

TEST_F(Interleavings, ADirectoryThatIsDeletedWhileItIsReadLeavesNoCacheFile) {
    Directory* const neighbour = AddFolder("neighbour", {});
    Directory* const doomed = AddFolder("doomed", {"one"});
    doomed->cacheFile = platform::FromNarrow((folder.path() / "doomed.cache").string());
    // The worker comes to it behind the neighbour, whose selection raised `pause`: nothing lets the delete wait.
    currentDirectory = neighbour;
    HoldAt("doomed/one");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    StartDeleteDirectory(1, waits);
    ASSERT_TRUE(ServeUntil([] { return directories.size() == 1; }));
    Release();
    ASSERT_TRUE(ServeUntilDeleted());
    ASSERT_TRUE(ServeUntilIdle());
    EXPECT_THAT(Examined(), ElementsAre("doomed/one"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "doomed.cache")) << "a new Directory may get this name";
}

namespace {

struct DeletedRow {
    const char* name;
    int rows, row, selected; ///< the row that the button selects first; -1 for none
};

class DeletedWhileRead : public Interleavings, public testing::WithParamInterface<DeletedRow> {};

INSTANTIATE_TEST_SUITE_P(Rows, DeletedWhileRead,
                         testing::Values(DeletedRow{"First", 4, 0, 1}, DeletedRow{"Middle", 4, 1, 0},
                                         DeletedRow{"Last", 4, 3, 2}, DeletedRow{"Only", 1, 0, -1}),
                         [](const testing::TestParamInfo<DeletedRow>& row) { return row.param.name; });

} // namespace

TEST_P(DeletedWhileRead, GoesWithRowQueueEntryAndCacheFileWhenTheWorkerHasLeftIt) {
    const DeletedRow& deleted = GetParam();
    for (int row = 0; row < deleted.rows; ++row)
        AddFolder("d" + std::to_string(row), {"one", "two"});
    std::vector<Directory*> left(directories.begin(), directories.end());
    Directory* const doomed = left[static_cast<std::size_t>(deleted.row)];
    left.erase(left.begin() + deleted.row);
    doomed->cacheFile = platform::FromNarrow(folder.write("doomed.cache", "cache").string());
    currentDirectory = doomed;
    HoldAt("d" + std::to_string(deleted.row) + "/one");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    if (deleted.selected >= 0)
        window.SelectDirectoryRow(deleted.selected);
    else
        currentDirectory = nullptr;
    Directory* const shown = currentDirectory;
    StartDeleteDirectory(deleted.row, waits);
    Release();
    ASSERT_TRUE(ServeUntilDeleted());
    EXPECT_THAT(directories, testing::ElementsAreArray(left));
    EXPECT_EQ(window.DirectoryRowCount(), deleted.rows - 1);
    for (int row = 0; row < window.DirectoryRowCount(); ++row) {
        EXPECT_EQ(window.DirectoryAt(row), left[static_cast<std::size_t>(row)]);
        EXPECT_EQ(left[static_cast<std::size_t>(row)]->listIndex, row);
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "doomed.cache"));
    EXPECT_EQ(currentDirectory, shown);
    // A removal of the head at that moment may have met the shown one.
    ASSERT_TRUE(ServeUntilIdle());
    if (shown != nullptr && !shown->loaded)
        QueueFirst(shown);
    ASSERT_TRUE(ServeUntilIdle());
    EXPECT_TRUE(shown == nullptr || shown->loaded);
}
