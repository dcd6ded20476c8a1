// What the main thread does to the catalogue and the queue, without a worker.
#include "tests/reading/LoaderFixture.h"

#include "tessaro/platform/Text.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

class DirectoryTest : public tests::LoaderTest {
protected:
    DirectoryTest() {
        theBlockDlg = &window;
        dialogOpen = true;
    }
};

} // namespace

TEST_F(DirectoryTest, TheQueueIsTheCurrentDirectoryThenTheOthersInDisplayOrder) {
    Directory* const a = AddFolder("a", {});
    Directory* const b = AddFolder("b", {});
    Directory* const c = AddFolder("c", {});
    loader.loadQueue.push_back(b);
    currentDirectory = b;
    ValidateDirs();
    EXPECT_THAT(loader.loadQueue, ElementsAre(b, a, c));
    currentDirectory = nullptr;
    ValidateDirs();
    EXPECT_THAT(loader.loadQueue, ElementsAre(a, b, c));
}

TEST_F(DirectoryTest, ValidatingClearsWhatWasCheckedAndLoadedAsTheSettingsSay) {
    Directory* const directory = AddFolder("a", {});
    auto* const block = new Block;
    block->checked = true;
    directory->blocks.push_back(block);
    directory->loaded = true;
    ValidateDirs();
    EXPECT_FALSE(block->checked);
    EXPECT_TRUE(directory->loaded);
    readDirEveryTime = 1;
    ValidateDirs();
    EXPECT_FALSE(directory->loaded);
    EXPECT_EQ(directory->blocks.size(), 1u);
}

TEST_F(DirectoryTest, ValidatingEmptiesTheDirectoryOfInternalBlocks) {
    Directory* const directory = AddFolder("a", {});
    directory->isInternal = directory->loaded = true;
    directory->blocks.push_back(new Block);
    ValidateDirs();
    EXPECT_TRUE(directory->blocks.empty());
    EXPECT_FALSE(directory->loaded);
}

TEST_F(DirectoryTest, ValidatingOpensTheStartGateAndKicks) {
    ValidateDirs();
    EXPECT_TRUE(loader.startGate.Wait(std::chrono::milliseconds(0)));
    EXPECT_TRUE(loader.startGate.Wait(std::chrono::milliseconds(0))) << "it stays set";
    EXPECT_TRUE(loader.kickevent.Wait(std::chrono::milliseconds(0)));
    EXPECT_FALSE(loader.kickevent.Wait(std::chrono::milliseconds(0))) << "many kicks count as one";
}

TEST_F(DirectoryTest, QueueFirstMovesToTheHeadAndRaisesThePause) {
    Directory* const a = AddFolder("a", {});
    Directory* const b = AddFolder("b", {});
    QueueFirst(a);
    QueueFirst(b);
    QueueFirst(a);
    EXPECT_THAT(loader.loadQueue, ElementsAre(a, b));
    EXPECT_EQ(loader.pause, 3);
    EXPECT_TRUE(loader.kickevent.Wait(std::chrono::milliseconds(0)));
}

TEST_F(DirectoryTest, ShowingStoresTheOldOneThenFillsTheControlsOfTheNewOne) {
    Directory* const a = AddFolder("a", {});
    Directory* const b = AddFolder("b", {});
    currentDirectory = a;
    Directory* atStore = nullptr;
    window.onStore = [&] { atStore = currentDirectory; };
    ShowDirectory(b);
    EXPECT_THAT(window.done, ElementsAre("StoreDlgState", "FillBlockControls(true)"));
    EXPECT_EQ(atStore, a);
    EXPECT_EQ(currentDirectory, b);
    EXPECT_THAT(loader.loadQueue, ElementsAre(b));
}

TEST_F(DirectoryTest, ShowingTheCurrentDirectoryDoesNothing) {
    Directory* const a = AddFolder("a", {});
    currentDirectory = a;
    ShowDirectory(a);
    EXPECT_TRUE(window.done.empty());
    EXPECT_TRUE(loader.loadQueue.empty());
    EXPECT_EQ(loader.pause, 0);
}

TEST_F(DirectoryTest, ANewFolderComesLastAndIsSelected) {
    Directory* const a = AddFolder("a", {});
    a->cacheFile = platform::FromNarrow((folder.path() / "path1_35.cache").string());
    AddDirectory(L"/some/folder");
    ASSERT_EQ(directories.size(), 2u);
    Directory* const added = directories.back();
    EXPECT_EQ(added->path, L"/some/folder");
    EXPECT_EQ(added->description, L"New Directory");
    EXPECT_EQ(added->cacheFile, platform::FromNarrow((folder.path() / "path2_35.cache").string()));
    EXPECT_EQ(added->listIndex, 1);
    EXPECT_EQ(window.directoryRows[1].text, L"New Directory");
    EXPECT_EQ(currentDirectory, added);
    EXPECT_THAT(window.done,
                ElementsAre("StoreDlgState", "SelectDirectoryRow", "StoreDlgState", "FillBlockControls(true)"));
}

TEST_F(DirectoryTest, TheSameFolderCanBeAddedTwice) {
    AddDirectory(L"/some/folder");
    AddDirectory(L"/some/folder");
    EXPECT_EQ(directories.size(), 2u);
    EXPECT_NE(directories.front()->cacheFile, directories.back()->cacheFile);
}

TEST_F(DirectoryTest, AReloadedDirectoryKeepsItsSettingsAndStartsWithoutBlocks) {
    AddFolder("before", {});
    Directory* const old = AddFolder("a", {});
    AddFolder("behind", {});
    old->scaleMode = 3;
    old->rotationMode = 1;
    old->sortStyle = 9;
    old->rotationAngle = 12.5;
    old->explode = old->multipleInsert = old->repeat = true;
    old->useCache = old->showInsPts = old->useLargeImages = false;
    old->topIndex = 4;
    old->selectedIndex = 5;
    old->viewMode = 2;
    old->cacheFile = L"/c/path7_35.cache";
    old->schemeName = L"Office";
    old->isInternal = old->localize = old->descriptionsPending = old->dirty = old->loaded = old->imagesLoaded = true;
    old->blocks.push_back(new Block);
    const std::wstring path = old->path;
    currentDirectory = old;
    ReloadDirectory(old);

    ASSERT_EQ(directories.size(), 3u);
    const Directory& copy = **std::next(directories.begin());
    EXPECT_EQ(window.DirectoryAt(1), &copy);
    EXPECT_EQ(currentDirectory, &copy);
    EXPECT_EQ(copy.scaleMode, 3);
    EXPECT_EQ(copy.rotationMode, 1);
    EXPECT_EQ(copy.sortStyle, 9);
    EXPECT_EQ(copy.rotationAngle, 12.5);
    EXPECT_TRUE(copy.explode && copy.multipleInsert && copy.repeat);
    EXPECT_FALSE(copy.useCache || copy.showInsPts || copy.useLargeImages);
    EXPECT_EQ(copy.path, path);
    EXPECT_EQ(copy.description, L"a");
    EXPECT_EQ(copy.topIndex, 4);
    EXPECT_EQ(copy.selectedIndex, 5);
    EXPECT_EQ(copy.viewMode, 2);
    EXPECT_EQ(copy.listIndex, 1);
    EXPECT_EQ(copy.cacheFile, L"/c/path7_35.cache");
    EXPECT_EQ(copy.schemeName, L"Office");
    EXPECT_FALSE(copy.isInternal || copy.localize || copy.descriptionsPending || copy.dirty || copy.loaded ||
                 copy.imagesLoaded);
    EXPECT_TRUE(copy.blocks.empty());
    EXPECT_THAT(loader.loadQueue, ElementsAre(&copy)) << "the old one has left the queue";
}

TEST_F(DirectoryTest, ADirectoryOutsideOfTheCatalogueIsNotReloaded) {
    Directory stranger;
    ReloadDirectory(&stranger);
    EXPECT_TRUE(directories.empty());
    EXPECT_EQ(currentDirectory, nullptr);
}
