// When pictures are in memory, and when they go to their files.
#include "tests/reading/DrawingBuilder.h"
#include "tests/reading/LoaderFixture.h"

#include "tessaro/catalogue/DirCache.h"
#include "tessaro/platform/File.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Keeps the boxes' texts.
class Boxes : public platform::UserInterface {
public:
    Boxes() { platform::SetUserInterface(this); }
    ~Boxes() override { platform::SetUserInterface(nullptr); }
    Boxes(const Boxes&) = delete;
    Boxes& operator=(const Boxes&) = delete;
    std::vector<std::wstring> texts;

    platform::MessageAnswer MessageBox(const std::wstring& text, const std::wstring&, platform::MessageButtons,
                                       platform::MessageIcon) override {
        texts.push_back(text);
        return platform::MessageAnswer::Ok;
    }
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override { return {}; }
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return {}; }
    void ShowHelp(const std::wstring&) override {}
};

class PictureFiles : public tests::LoaderTest {
protected:
    PictureFiles() {
        theBlockDlg = &window;
        dialogOpen = true;
        // As the dialog does.
        window.onStore = [] {
            if (Directory* const shown = currentDirectory)
                SaveIfDirty(*shown);
        };
    }
    ~PictureFiles() override { EXPECT_THAT(boxes.texts, IsEmpty()); }

    /// A folder with drawings that have pictures.
    Directory* AddPictureFolder(const std::string& name, std::initializer_list<const char*> titles) {
        Directory* const directory = AddFolder(name, {});
        for (const char* title : titles)
            WritePicture(name, title, 40);
        return directory;
    }
    void WritePicture(const std::string& name, const std::string& title, int width) {
        WriteDrawing(name, title, tests::DrawingBuilder("AC1015").entry(2, tests::plainBitmap(width, 30, 0x0000FF)));
    }
    /// Slots of the large list in the Directory's file; 0 without a file.
    static int SlotsInFile(const Directory& directory) {
        if (!platform::FileExists(directory.cacheFile))
            return 0;
        Directory other;
        other.cacheFile = directory.cacheFile;
        LoadDirCache(other);
        return other.largeImages->Count();
    }
    /// Waits for the worker and the finisher.
    void CloseDialog() {
        StopLoader();
        WaitForLastClose();
    }

    Boxes boxes;
};

} // namespace

TEST_F(PictureFiles, ABackgroundDirectoryIsSavedAtTheEndOfItsPassAndItsPicturesGo) {
    Directory* const directory = AddPictureFolder("a", {"x", "y"});
    LoadDir(directory);
    EXPECT_THAT(RowOf(*directory).states, ElementsAre(L"D", L"L", L"V", L"S", L""));
    EXPECT_FALSE(directory->dirty);
    EXPECT_FALSE(directory->imagesLoaded);
    EXPECT_EQ(directory->largeImages->Count(), 1);
    EXPECT_EQ(SlotsInFile(*directory), 3);
    EXPECT_EQ(directory->blocks.back()->imageIndex, 2);
}

TEST_F(PictureFiles, AShownDirectoryKeepsItsPicturesAndStaysToBeSaved) {
    Directory* const directory = AddPictureFolder("a", {"x"});
    currentDirectory = directory;
    LoadDir(directory);
    EXPECT_TRUE(directory->dirty);
    EXPECT_EQ(directory->largeImages->Count(), 2);
    EXPECT_EQ(SlotsInFile(*directory), 0);
}

TEST_F(PictureFiles, ACleanBackgroundDirectoryIsNotWritten) {
    Directory* const directory = AddPictureFolder("a", {"x"});
    LoadDir(directory);
    std::filesystem::remove(folder.path() / "path1_35.cache");
    directory->loaded = false;
    LoadDir(directory);
    EXPECT_EQ(SlotsInFile(*directory), 0);
}

TEST_F(PictureFiles, ANewPictureOfABackgroundDirectoryJoinsTheOldOnesOutOfTheFile) {
    Directory* const directory = AddPictureFolder("a", {"x"});
    LoadDir(directory);
    ASSERT_EQ(directory->largeImages->Count(), 1);
    WritePicture("a", "y", 40);
    directory->loaded = false;
    LoadDir(directory);
    EXPECT_EQ(BlockOf(*directory, L"x")->imageIndex, 1);
    EXPECT_EQ(BlockOf(*directory, L"y")->imageIndex, 2);
    EXPECT_EQ(SlotsInFile(*directory), 3);
}

TEST_F(PictureFiles, ADirectoryThatIsShownDuringItsSaveKeepsItsPictures) {
    Directory* const directory = AddPictureFolder("a", {"x"});
    window.onDirectoryCell = [&](int, const std::wstring& text) {
        if (text == L"S")
            currentDirectory = directory;
    };
    LoadDir(directory);
    EXPECT_FALSE(directory->dirty);
    EXPECT_EQ(directory->largeImages->Count(), 2);
    EXPECT_EQ(SlotsInFile(*directory), 2);
}

TEST_F(PictureFiles, ADirectoryThatIsLeftKeepsItsPicturesUnlessOnlyTheCurrentOnesAreKept) {
    Directory* const a = AddPictureFolder("a", {"x"});
    Directory* const b = AddPictureFolder("b", {});
    currentDirectory = a;
    LoadDir(a);
    ShowDirectory(b);
    EXPECT_FALSE(a->dirty) << "saved as the dialog's state was stored";
    EXPECT_EQ(SlotsInFile(*a), 2);
    EXPECT_EQ(a->largeImages->Count(), 2);
    onlyCacheCurrent = 1;
    ShowDirectory(a);
    ShowDirectory(b);
    EXPECT_EQ(a->largeImages->Count(), 1);
    EXPECT_FALSE(a->imagesLoaded);
    EXPECT_EQ(SlotsInFile(*a), 2);
}

TEST_F(PictureFiles, APassThatWasInterruptedStaysDirtyThroughAFreeAndTheNextSaveWritesThePlaceholderAlone) {
    Directory* const a = AddPictureFolder("a", {"x", "y"});
    loader.pause = 0;
    window.onDirectoryCell = [&](int, const std::wstring& text) {
        if (text == L"V")
            answer = [](tests::HelperCall&) {
                ++loader.pause; // while the first drawing is examined
                return kHelperFalse;
            };
    };
    EXPECT_THROW(LoadDir(a), int);
    window.onDirectoryCell = {};
    EXPECT_TRUE(a->dirty);
    EXPECT_EQ(a->largeImages->Count(), 2);
    SaveAndFreeImages(*a);
    EXPECT_TRUE(a->dirty);
    EXPECT_EQ(SlotsInFile(*a), 2);
    SaveAndFreeImages(*a);
    EXPECT_EQ(SlotsInFile(*a), 1);
    loader.pause = 0;
}

TEST_F(PictureFiles, ClosingSavesTheCurrentDirectoryAndKeepsAllPicturesInMemory) {
    Directory* const a = AddPictureFolder("a", {"x"});
    currentDirectory = a;
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    ASSERT_TRUE(a->dirty);
    CloseDialog();
    EXPECT_FALSE(a->dirty);
    EXPECT_EQ(SlotsInFile(*a), 2);
    EXPECT_EQ(a->largeImages->Count(), 2);
}

TEST_F(PictureFiles, ClosingFreesAllPicturesWhereTheSettingSaysSoOnceTheWindowIsGone) {
    delCacheMemoryOnClose = 1;
    Directory* const a = AddPictureFolder("a", {"x"});
    Directory* const b = AddPictureFolder("b", {"y", "z"});
    currentDirectory = a;
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    b->dirty = true;
    LoadDirCache(*b);
    CloseDialog();
    EXPECT_EQ(theBlockDlg, nullptr);
    EXPECT_THAT(window.commands, ElementsAre(248));
    for (const Directory* directory : {a, b}) {
        EXPECT_EQ(directory->largeImages->Count(), 1);
        EXPECT_FALSE(directory->imagesLoaded);
    }
    EXPECT_EQ(SlotsInFile(*a), 2);
    EXPECT_EQ(SlotsInFile(*b), 3);
    EXPECT_FALSE(a->dirty);
    EXPECT_TRUE(b->dirty) << "a free clears nothing";
}

TEST_F(PictureFiles, ADirectoryDeletedWhileTheDialogClosesIsFreedOnce) {
    delCacheMemoryOnClose = 1;
    Directory* const a = AddPictureFolder("a", {"x"});
    Directory* const b = AddPictureFolder("b", {"y"});
    currentDirectory = a;
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    a->dirty = b->dirty = true;
    StartDeleteDirectory(1, waits);
    CloseDialog();
    EXPECT_THAT(directories, ElementsAre(a));
    EXPECT_EQ(SlotsInFile(*a), 2);
}

TEST_F(PictureFiles, AReloadedDirectoryStartsItsSlotsAtOneAgain) {
    Directory* const old = AddPictureFolder("a", {"x", "y"});
    currentDirectory = old;
    LoadDir(old);
    WritePicture("a", "z", 40);
    ReloadDirectory(old);
    Directory* const copy = directories.front();
    ASSERT_NE(copy, old);
    EXPECT_EQ(SlotsInFile(*copy), 3) << "the file stays";
    LoadDirCache(*copy); // as the dialog does when it fills its controls
    EXPECT_EQ(copy->largeImages->Count(), 3);
    loader.pause = 0;
    std::vector<int> atFill;
    window.onBlockRowFilled = [&](int row) { atFill.push_back(window.blockRows[static_cast<std::size_t>(row)].image); };
    EXPECT_EQ(LoadDir(copy), 123);
    EXPECT_THAT(atFill, ElementsAre(0, 0, 0)) << "every Block starts with the placeholder";
    EXPECT_EQ(BlockOf(*copy, L"x")->imageIndex, 1) << "the first one examined";
    EXPECT_EQ(BlockOf(*copy, L"z")->imageIndex, 3);
    EXPECT_EQ(copy->largeImages->Count(), 4);
    window.StoreDlgState();
    EXPECT_EQ(SlotsInFile(*copy), 4) << "overwritten";
}

TEST_F(PictureFiles, AFailedSaveOfTheWorkerIsToldAndTheDirectoryIsNotSavedAgain) {
    Directory* const directory = AddPictureFolder("a", {"x"});
    directory->cacheFile = platform::FromNarrow((folder.path() / "none" / "path1_35.cache").string());
    Open();
    ASSERT_TRUE(ServeUntilAllLoaded());
    EXPECT_THAT(
        boxes.texts,
        ElementsAre(platform::FileException(platform::FileException::badPath, directory->cacheFile).ErrorText(),
                    L"The cache file could not be written to:\n" + directory->cacheFile +
                        L"\nThis error is typically generated by setting the\nlocation to a read-only directory, but "
                        L"may also occur if hard-drive space is low."));
    EXPECT_FALSE(directory->dirty);
    boxes.texts.clear();
    CloseDialog();
}
