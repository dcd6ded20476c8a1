// The worker, the finisher and the delete thread as they run beside the main
// thread.
#include "tests/reading/LoaderFixture.h"

#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/LoaderThreads.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;
using tests::LoaderTest;

namespace {

std::size_t Place(const std::vector<std::string>& list, const std::string& entry) {
    return static_cast<std::size_t>(std::find(list.begin(), list.end(), entry) - list.begin());
}

} // namespace

TEST_F(LoaderTest, ReadsTheCurrentDirectoryFirstAndTheOthersInDisplayOrder) {
    AddFolder("a", {"one"});
    currentDirectory = AddFolder("b", {"two"});
    AddFolder("c", {"three"});
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(), ElementsAre("b/two", "a/one", "c/three"));
    EXPECT_TRUE(ServeUntilIdle());
}

TEST_F(LoaderTest, ClickingThroughFiveDirectoriesReadsTheLastFirstAndTheOthersInReverseOrder) {
    currentDirectory = AddFolder("start", {"one", "two"});
    std::vector<Directory*> clicked;
    for (const char* name : {"c1", "c2", "c3", "c4", "c5"})
        clicked.push_back(AddFolder(name, {"x"}));
    HoldAt("start/one");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    for (Directory* directory : clicked)
        ShowDirectory(directory);
    EXPECT_EQ(loader.pause, 5);
    Release();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(), ElementsAre("start/one", "c5/x", "c4/x", "c3/x", "c2/x", "c1/x", "start/two"));
    EXPECT_EQ(loader.pause, 0) << "lowered once for the throw and once for each turn";
}

TEST_F(LoaderTest, AnInterruptedDirectoryFinishesLaterWithoutASecondExaminationOfWhatWasDone) {
    Directory* const first = AddFolder("first", {"a", "b", "c"});
    Directory* const second = AddFolder("second", {"x"});
    currentDirectory = first;
    HoldAt("first/b");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    ShowDirectory(second);
    Release();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(), ElementsAre("first/a", "first/b", "second/x", "first/c"));
}

TEST_F(LoaderTest, TheRowsShownAreThoseOfTheDirectoryClickedLast) {
    Directory* const first = AddFolder("first", {"a", "b"});
    Directory* const second = AddFolder("second", {"x", "y", "z"});
    currentDirectory = first;
    Open();
    ShowDirectory(second);
    ASSERT_TRUE(ServeUntilAllLoaded());
    ASSERT_EQ(window.blockRows.size(), 3u);
    EXPECT_EQ(window.blockRows[0].block, second->blocks.front());
    EXPECT_EQ(window.blockRows[2].text, L"z");
    EXPECT_FALSE(window.curtain);
    EXPECT_EQ(window.small, second->smallImages.get());
    EXPECT_EQ(window.large, second->largeImages.get());
}

TEST_F(LoaderTest, ClosingInAnExaminationLetsItFinishAndEmptiesTheListOnlyThen) {
    Directory* const directory = AddFolder("first", {"a", "b"});
    currentDirectory = directory;
    HoldAt("first/a");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    ASSERT_EQ(window.blockRows.size(), 2u);
    StopLoader();
    ServeFor(std::chrono::milliseconds(30));
    EXPECT_EQ(window.blockRows.size(), 2u) << "the list stays until the worker has ended";
    EXPECT_TRUE(dialogOpen);
    Release();
    WaitForLastClose();
    EXPECT_THAT(Examined(), ElementsAre("first/a"));
    EXPECT_TRUE(BlockOf(*directory, L"a")->checked);
    EXPECT_FALSE(BlockOf(*directory, L"b")->checked);
    EXPECT_FALSE(directory->loaded);
    EXPECT_FALSE(dialogOpen);
    EXPECT_FALSE(loader.quit);
    EXPECT_EQ(theBlockDlg, nullptr);
    EXPECT_TRUE(window.blockRows.empty());
}

TEST_F(LoaderTest, TheFinisherStoresEmptiesDetachesReadsWidthsSavesAndPosts) {
    currentDirectory = AddFolder("first", {"a"});
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    window.done.clear();
    bool openAtStore = false, fileAtPost = true;
    window.onStore = [&] {
        openAtStore = dialogOpen;
        fileAtPost = std::filesystem::exists(folder.path() / "tessaro35.ini");
    };
    Close();
    EXPECT_THAT(window.done,
                ElementsAre("StoreDlgState", "EmptyBlockList", "DetachBlockImages", "SetView", "PostCommand"));
    EXPECT_TRUE(openAtStore) << "the state is stored with the dialog still open";
    EXPECT_FALSE(fileAtPost) << "the state is stored ahead of the save";
    EXPECT_EQ(window.view, 3);
    EXPECT_THAT(window.commands, ElementsAre(248));
    EXPECT_EQ(columnWidths, (std::array{11, 12, 13, 14, 15, 16}));
    EXPECT_EQ(dirColumnWidths, (std::array{21, 22, 23}));
    const std::string ini = tests::readFile(folder.path() / "tessaro35.ini");
    EXPECT_NE(ini.find("column1width=11"), std::string::npos) << ini;
}

TEST_F(LoaderTest, ASecondOpeningStartsANewWorkerAndComparesAllAgain) {
    Directory* const directory = AddFolder("first", {"a", "b"});
    currentDirectory = directory;
    readDirEveryTime = 1;
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    Close();
    EXPECT_GE(loader.pause, 1) << "raised for the quit and never lowered";
    WriteDrawing("first", "b", "another length");
    WriteDrawing("first", "c");
    window.blockRows.clear();
    Open();
    EXPECT_FALSE(BlockOf(*directory, L"a")->checked);
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(), ElementsAre("first/a", "first/b", "first/b", "first/c"));
    EXPECT_EQ(loader.pause, 0) << "taken off by the new worker before it reads";
    EXPECT_EQ(window.blockRows.size(), 3u);
}

TEST_F(LoaderTest, WithoutReadDirEveryTimeALoadedDirectoryIsNotSearchedAgain) {
    currentDirectory = AddFolder("first", {"a"});
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    Close();
    WriteDrawing("first", "b");
    Open();
    ASSERT_TRUE(ServeUntilIdle());
    EXPECT_THAT(Examined(), ElementsAre("first/a"));
    EXPECT_EQ(window.blockRows.size(), 1u) << "the list is filled all the same";
}

TEST_F(LoaderTest, AnOpeningWaitsForTheFinisherOfTheLastOne) {
    currentDirectory = AddFolder("first", {"a"});
    HoldAt("first/a");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    StopLoader();
    std::thread later([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        Release();
    });
    WaitForLastClose();
    EXPECT_THAT(window.commands, ElementsAre(248));
    later.join();
}

TEST_F(LoaderTest, AQuitWithoutAWorkerLeavesAFinisherThatNothingWaitsFor) {
    StopLoader();
    EXPECT_TRUE(loader.quit);
    EXPECT_EQ(loader.pause, 1);
    WaitForLastClose();
    EXPECT_TRUE(loader.quit);
    // A worker that starts all the same ends at once, and the finisher that
    // waited closes its dialog.
    Open();
    ASSERT_TRUE(ServeUntil([this] { return !window.commands.empty(); }));
    EXPECT_THAT(window.commands, ElementsAre(248));
    ASSERT_TRUE(ServeUntil([] { return !loaderThreads.open; }));
}

TEST_F(LoaderTest, AnExceptionEndsTheWorkerWhichStillSaysSo) {
    Directory* const directory = AddFolder("first", {"a"});
    currentDirectory = directory;
    const std::wstring helperFolder = LocalPath;
    LocalPath = L"/nowhere"; // where no helper is
    Open();
    ASSERT_TRUE(ServeUntil([] { return !loaderThreads.workerRuns; }));
    EXPECT_FALSE(BlockOf(*directory, L"a")->checked);
    Close();
    EXPECT_THAT(window.commands, ElementsAre(248));
    LocalPath = helperFolder;
}

TEST_F(LoaderTest, UnloadingADrawingHasTheCurrentDirectoryReadAgainWithoutAnInterruption) {
    Directory* const directory = AddFolder("first", {"a"});
    RequeueCurrentDirectory();
    EXPECT_TRUE(loader.loadQueue.empty()) << "no dialog";
    currentDirectory = directory;
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    ASSERT_TRUE(ServeUntilIdle());
    WriteDrawing("first", "b");
    RequeueCurrentDirectory();
    EXPECT_EQ(loader.pause, 0);
    EXPECT_FALSE(directory->loaded);
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(), ElementsAre("first/a", "first/b"));
}

TEST_F(LoaderTest, UnloadingADrawingWithoutACurrentDirectoryDoesNothing) {
    Open();
    RequeueCurrentDirectory();
    const std::lock_guard queue(loader.cs);
    EXPECT_TRUE(loader.loadQueue.empty());
}

TEST_F(LoaderTest, DeletingTheLastRowLeavesNothingAndDoesNotWait) {
    Directory* const directory = AddFolder("only", {"a"});
    directory->cacheFile = platform::FromNarrow(folder.write("path1_35.cache", "cache").string());
    currentDirectory = directory;
    waits.deletePoll = std::chrono::minutes(10);
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    ASSERT_TRUE(ServeUntilIdle());
    currentDirectory = nullptr; // as the "Delete" button does for the last row
    StartDeleteDirectory(0, waits);
    ASSERT_TRUE(ServeUntil([] { return loaderThreads.deletes == 0; }));
    EXPECT_TRUE(directories.empty());
    EXPECT_TRUE(window.directoryRows.empty());
    EXPECT_TRUE(window.blockRows.empty());
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "path1_35.cache"));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "only" / "a.dwg")) << "the drawings stay";
}

TEST_F(LoaderTest, DeletingARowRenumbersTheOnesThatFollow) {
    AddFolder("a", {"x"});
    Directory* const doomed = AddFolder("b", {"x"});
    Directory* const follower = AddFolder("c", {"x"});
    Directory* const last = AddFolder("d", {"x"});
    currentDirectory = doomed;
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    window.SelectDirectoryRow(0);
    StartDeleteDirectory(1, waits);
    ASSERT_TRUE(ServeUntil([] { return loaderThreads.deletes == 0; }));
    EXPECT_EQ(directories.size(), 3u);
    EXPECT_EQ(window.directoryRows.size(), 3u);
    EXPECT_EQ(follower->listIndex, 1);
    EXPECT_EQ(last->listIndex, 2);
    EXPECT_EQ(window.DirectoryAt(1), follower);
}

TEST_F(LoaderTest, TheDeleteThreadWaitsUntilTheWorkerHasNoticedTheChange) {
    Directory* const neighbour = AddFolder("a", {"x"});
    Directory* const doomed = AddFolder("b", {"one", "two"});
    currentDirectory = doomed;
    HoldAt("b/one");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    window.SelectDirectoryRow(neighbour->listIndex);
    StartDeleteDirectory(doomed->listIndex, waits);
    ServeFor(std::chrono::milliseconds(30));
    EXPECT_EQ(directories.size(), 2u);
    Release();
    ASSERT_TRUE(ServeUntil([] { return loaderThreads.deletes == 0; }));
    EXPECT_EQ(directories.size(), 1u);
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_EQ(currentDirectory, neighbour);
}

TEST_F(LoaderTest, ADeleteThatTheCloseOvertakesIsCarriedOutAndTheNextOpeningWaitsForIt) {
    Directory* const neighbour = AddFolder("a", {"x"});
    Directory* const doomed = AddFolder("b", {"one"});
    currentDirectory = doomed;
    HoldAt("b/one");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    window.SelectDirectoryRow(neighbour->listIndex);
    StartDeleteDirectory(doomed->listIndex, waits);
    ServeFor(std::chrono::milliseconds(10));
    StopLoader();
    Release();
    WaitForLastClose();
    EXPECT_EQ(loaderThreads.deletes, 0);
    EXPECT_THAT(directories, ElementsAre(neighbour));
}

TEST_F(LoaderTest, ADirectoryThatIsReplacedWhileItIsReadLivesUntilTheWorkerHasLeftIt) {
    Directory* const old = AddFolder("a", {"one", "two"});
    currentDirectory = old;
    old->schemeName = L"Office";
    HoldAt("a/one");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    ReloadDirectory(old);
    Directory* const copy = directories.front();
    ASSERT_NE(copy, old);
    EXPECT_EQ(old->blocks.size(), 2u) << "still there for its worker";
    EXPECT_EQ(window.DirectoryAt(0), copy);
    Release();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(), ElementsAre("a/one", "a/one", "a/two"));
    EXPECT_EQ(copy->schemeName, L"Office");
    EXPECT_EQ(window.blockRows.size(), 2u);
    EXPECT_EQ(window.blockRows[0].block, copy->blocks.front());
}

TEST_F(LoaderTest, APassThatRunsAheadOfTheDialogFillsNothingAndLeavesTheQueue) {
    Directory* const directory = AddFolder("a", {"one"});
    currentDirectory = directory;
    theBlockDlg = &window;
    StartLoader(waits);
    ValidateDirs();
    ASSERT_TRUE(ServeUntilIdle());
    EXPECT_THAT(Names(*directory), ElementsAre(L"one"));
    EXPECT_TRUE(window.blockRows.empty());
    EXPECT_THAT(Examined(), IsEmpty());
    EXPECT_FALSE(directory->loaded);
    dialogOpen = true;
    QueueFirst(directory);
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_EQ(window.blockRows.size(), 1u);
}

TEST_F(LoaderTest, ABigListIsFilledInShortCallsAndAClickIsAnsweredInTheMiddle) {
    Directory* const big = AddFolder("big", {});
    for (int number = 0; number < 3000; ++number)
        WriteDrawing("big", "block" + std::to_string(number), "");
    Directory* const other = AddFolder("other", {"x"});
    currentDirectory = big;
    window.onBlockRowFilled = [&](int row) {
        if (row == 10 && currentDirectory == big)
            ShowDirectory(other);
    };
    Open();
    ASSERT_TRUE(ServeUntil([&] { return other->loaded; }));
    const auto order = Examined();
    EXPECT_EQ(Place(order, "other/x"), 0u);
    EXPECT_EQ(big->blocks.size(), 3000u);
    EXPECT_FALSE(big->loaded);
}

TEST_F(LoaderTest, TheWaitsOfARealClockAreHalfASecondAndAnEighth) {
    EXPECT_EQ(LoaderWaits{}.kick, std::chrono::milliseconds(500));
    EXPECT_EQ(LoaderWaits{}.deletePoll, std::chrono::milliseconds(125));
    waits = {};
    currentDirectory = AddFolder("a", {"one"});
    Directory* const second = AddFolder("b", {"two"});
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    ASSERT_TRUE(ServeUntilIdle());
    second->loaded = false;
    QueueFirst(second);
    ASSERT_TRUE(ServeUntilAllLoaded());
}

TEST_F(LoaderTest, ManyOpeningsClicksAndDeletesInARowEndInOrder) {
    for (int number = 0; number < 12; ++number)
        AddFolder("d" + std::to_string(number), {"a", "b", "c"});
    currentDirectory = directories.front();
    for (int round = 0; round < 10; ++round) {
        WaitForLastClose();
        window.blockRows.clear();
        window.commands.clear();
        readDirEveryTime = round % 2;
        Open();
        for (int click = 0; click < 6; ++click) {
            const int rows = window.DirectoryRowCount();
            window.SelectDirectoryRow((round * 5 + click * 3) % rows);
            ServeFor(std::chrono::milliseconds(click % 3));
        }
        if (round % 3 == 0)
            ReloadDirectory(currentDirectory);
        if (round % 4 == 1) {
            const int row = currentDirectory.load()->listIndex;
            window.SelectDirectoryRow(row > 0 ? row - 1 : 1);
            StartDeleteDirectory(row, waits);
        }
        ServeFor(std::chrono::milliseconds(round));
        Close();
        EXPECT_THAT(window.commands, ElementsAre(248)) << "round " << round;
        EXPECT_EQ(loaderThreads.deletes, 0);
    }
    EXPECT_EQ(directories.size(), 9u);
}
