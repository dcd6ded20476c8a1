// The dialog's part in when pictures are in memory.
#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"

namespace {

struct PictureMemory : Browser {
    PictureMemory() {
        furniture = AddFolder(L"Furniture", {"chair", "desk"});
        electrical = AddFolder(L"Electrical", {"switch"});
        onlyCacheCurrent = 0;
    }
    ~PictureMemory() override { onlyCacheCurrent = 0; }

    /// A file of the placeholder and one picture.
    static void WritePictures(const Directory& directory) {
        Directory written;
        written.cacheFile = directory.cacheFile;
        written.LargeForWrite().Add(Picture(kLargeWidth, kLargeHeight));
        written.SmallForWrite().Add(Picture(kSmallWidth, kSmallHeight));
        SaveDirCache(written);
    }
    Directory* furniture;
    Directory* electrical;
};

TEST_F(PictureMemory, StoringTheStateSavesAChangedDirectory) {
    Run([&](BlockDlg& dlg) {
        furniture->dirty = true;
        dlg.StoreDlgState();
        EXPECT_FALSE(furniture->dirty);
        EXPECT_TRUE(platform::FileExists(furniture->cacheFile));
        platform::RemoveFile(furniture->cacheFile);
        dlg.StoreDlgState();
        EXPECT_FALSE(platform::FileExists(furniture->cacheFile)) << "a clean one is not written";
    });
}

TEST_F(PictureMemory, ADirectoryThatBecomesCurrentHasItsPicturesReadOnce) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        WritePictures(*electrical);
        ASSERT_FALSE(electrical->imagesLoaded);
        dlg.SelectDirectoryRow(1);
        EXPECT_TRUE(electrical->imagesLoaded);
        EXPECT_EQ(electrical->largeImages->Count(), 2);
        platform::RemoveFile(electrical->cacheFile);
        dlg.SelectDirectoryRow(0);
        dlg.SelectDirectoryRow(1);
        EXPECT_EQ(electrical->largeImages->Count(), 2) << "still in memory";
    });
}

TEST_F(PictureMemory, WhereOnlyTheCurrentPicturesAreKeptALeftDirectoryLosesThem) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        WritePictures(*electrical);
        onlyCacheCurrent = 1;
        dlg.SelectDirectoryRow(1);
        EXPECT_EQ(electrical->largeImages->Count(), 2);
        dlg.SelectDirectoryRow(0);
        EXPECT_EQ(electrical->largeImages->Count(), 1);
        EXPECT_FALSE(electrical->imagesLoaded);
        dlg.SelectDirectoryRow(1);
        EXPECT_EQ(electrical->largeImages->Count(), 2) << "read again";
    });
}

} // namespace
