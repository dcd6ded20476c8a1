// What a click on a directory does to the worker, each order forced at a known place.
#include "tests/reading/LoaderFixture.h"

#include "tessaro/reading/DirectoryUsers.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::SizeIs;

namespace {

constexpr int dirStateColumn = 2;

class Clicks : public tests::LoaderTest {};

/// The part of a pass over a Directory that is not shown, by what its column 2 says then.
class ClicksInAPass : public Clicks, public testing::WithParamInterface<const wchar_t*> {};

} // namespace

TEST_P(ClicksInAPass, AreServed) {
    Directory* const shown = AddFolder("shown", {"a"});
    Directory* const background = AddFolder("background", {"b"});
    Directory* const clicked = AddFolder("clicked", {"x", "y"});
    currentDirectory = shown;
    bool click = false;
    window.onDirectoryCell = [&](int column, const std::wstring& text) {
        if (!click && column == dirStateColumn && text == GetParam() && shown->loaded &&
            background->loaded == text.empty()) {
            click = true;
            ShowDirectory(clicked);
        }
    };
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    ASSERT_TRUE(ServeUntilIdle());
    EXPECT_TRUE(click);
    EXPECT_EQ(currentDirectory, clicked);
    ASSERT_THAT(window.blockRows, SizeIs(2));
    EXPECT_EQ(window.blockRows[0].text, L"x");
}

INSTANTIATE_TEST_SUITE_P(Searched, ClicksInAPass, testing::Values(L"D"));
INSTANTIATE_TEST_SUITE_P(Listed, ClicksInAPass, testing::Values(L"L"));
INSTANTIATE_TEST_SUITE_P(Verified, ClicksInAPass, testing::Values(L"V"));
INSTANTIATE_TEST_SUITE_P(Saved, ClicksInAPass, testing::Values(L"S"));
INSTANTIATE_TEST_SUITE_P(Ended, ClicksInAPass, testing::Values(L""));

TEST_F(Clicks, ADirectoryPutFirstBetweenAPassesEndAndTheRemovalIsRemovedInItsPlace) {
    Directory* const first = AddFolder("first", {"x"});
    Directory* const second = AddFolder("second", {"y"});
    currentDirectory = first;
    std::unique_lock queue(loader.cs, std::defer_lock);
    bool put = false;
    window.onDirectoryCell = [&](int column, const std::wstring& text) {
        // The worker is held at the queue's lock, and no more a reader once it is there.
        if (!put && column == dirStateColumn && text.empty() && first->loaded) {
            put = true;
            queue.lock();
            BeginSaving(first);
        }
    };
    Open();
    ASSERT_TRUE(ServeUntil([&] { return put && !MayBeSaved(first); }));
    loader.loadQueue.remove(second);
    loader.loadQueue.push_front(second);
    ++loader.pause;
    loader.kickevent.SetEvent();
    queue.unlock();
    ASSERT_TRUE(ServeUntilIdle());
    EXPECT_THAT(Examined(), ElementsAre("first/x"));
    EXPECT_FALSE(second->loaded) << "waits for the next ValidateDirs";
    ValidateDirs();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(), ElementsAre("first/x", "second/y"));
}

TEST_F(Clicks, AClickWhileAFolderWithoutDrawingsIsSearchedIsServed) {
    Directory* const shown = AddFolder("shown", {"a"});
    Directory* const empty = AddFolder("empty", {});
    Directory* const clicked = AddFolder("clicked", {"x", "y"});
    currentDirectory = shown;
    bool click = false;
    window.onDirectoryCell = [&](int column, const std::wstring& text) {
        if (!click && column == dirStateColumn && text == L"D" && shown->loaded) {
            click = true;
            ShowDirectory(clicked);
        }
    };
    Open();
    ASSERT_TRUE(ServeUntil([&] { return clicked->loaded; }));
    ASSERT_TRUE(ServeUntilIdle());
    EXPECT_TRUE(click);
    EXPECT_FALSE(empty->loaded);
    EXPECT_THAT(window.blockRows, SizeIs(2));
}

TEST_F(Clicks, TheInterruptedDirectoryStaysNextBehindTheNewHead) {
    Directory* const background = AddFolder("background", {"a", "b"});
    Directory* const clicked = AddFolder("clicked", {"x"});
    AddFolder("later", {"z"});
    currentDirectory = background;
    HoldAt("background/a");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    ShowDirectory(clicked);
    {
        const std::lock_guard queue(loader.cs);
        EXPECT_EQ(*std::next(loader.loadQueue.begin()), background);
    }
    Release();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(), ElementsAre("background/a", "clicked/x", "background/b", "later/z"));
}

TEST_F(Clicks, AClickInTheFillEndsItAndTheNewDirectorysRowsReplaceTheReservedOnes) {
    Directory* const big = AddFolder("big", {"a", "b", "c", "d"});
    Directory* const other = AddFolder("other", {"x"});
    currentDirectory = big;
    std::size_t filled = 0;
    window.onBlockRowFilled = [&](int row) {
        if (currentDirectory != big)
            return;
        ++filled;
        if (row == 1)
            ShowDirectory(other);
    };
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_EQ(filled, 2u);
    EXPECT_EQ(Examined().front(), "other/x");
    ASSERT_THAT(window.blockRows, SizeIs(1));
    EXPECT_EQ(window.blockRows[0].text, L"x");
    EXPECT_FALSE(window.curtain);
}

TEST_F(Clicks, AClickOnALoadedDirectoryShowsItsRowsBeforeAnotherBlockIsExamined) {
    Directory* const ready = AddFolder("ready", {"x", "y"});
    Directory* const slow = AddFolder("slow", {"a", "b", "c"});
    currentDirectory = ready;
    HoldAt("slow/b");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    EXPECT_TRUE(ready->loaded);
    currentDirectory = slow;
    std::vector<std::string> examinedByThen;
    window.onBlockRowFilled = [&](int) { examinedByThen = Examined(); };
    ShowDirectory(ready);
    Release();
    ASSERT_TRUE(ServeUntil([&] { return !examinedByThen.empty(); }));
    EXPECT_THAT(examinedByThen, ElementsAre("ready/x", "ready/y", "slow/a", "slow/b"));
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(), SizeIs(5));
}

TEST_F(Clicks, AClickWhileTheLastBlockIsExaminedIsNotLost) {
    Directory* const slow = AddFolder("slow", {"a", "b"});
    Directory* const clicked = AddFolder("clicked", {"x"});
    currentDirectory = slow;
    HoldAt("slow/b");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    ShowDirectory(clicked);
    Release();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(), ElementsAre("slow/a", "slow/b", "clicked/x"));
    ASSERT_THAT(window.blockRows, SizeIs(1));
    EXPECT_EQ(window.blockRows[0].text, L"x");
}

TEST_F(Clicks, AClickOnANewDirectoryShowsItsRowsBeforeItsBlocksAreExamined) {
    Directory* const slow = AddFolder("slow", {"a", "b"});
    Directory* const fresh = AddFolder("fresh", {"x", "y"});
    currentDirectory = slow;
    HoldAt("slow/a");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    std::vector<std::string> examinedByThen;
    window.onBlockRowFilled = [&](int row) {
        if (currentDirectory == fresh && row == 1)
            examinedByThen = Examined();
    };
    ShowDirectory(fresh);
    Release();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(examinedByThen, ElementsAre("slow/a"));
}

TEST_F(Clicks, AClickEndsTheBlocksThatTravelTogetherBehindTheOneThatIsExamined) {
    Directory* const shown = AddFolder("shown", {"x"});
    Directory* const background = AddFolder("background", {"a", "b", "c", "d"});
    Directory* const clicked = AddFolder("clicked", {"y"});
    currentDirectory = shown;
    HoldAt("background/b");
    Open();
    ASSERT_TRUE(ServeUntilHeld());
    ShowDirectory(clicked);
    Release();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(Examined(),
                ElementsAre("shown/x", "background/a", "background/b", "clicked/y", "background/c", "background/d"))
        << "what was examined by then is kept";
    EXPECT_EQ(background->loaded, true);
}
