// Pictures that are freed at the told occasions are gone from the process's memory, not only from the records.
#include "tests/browser/SmallDialogs.h"
#include "tests/support/Sanitized.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/reading/Loader.h"

#include <fstream>
#include <unistd.h>

using namespace small_dialogs;

namespace {

constexpr int kPictures = 4000;
constexpr double kMegabyte = 1 << 20;
/// Both lists at four bits a pixel.
constexpr double kSize = kPictures * (65.0 * kLargeHeight + 33.0 * kSmallHeight) / kMegabyte;

/// In MB.
double ResidentMemory() {
    std::ifstream status("/proc/self/statm");
    double whole = 0, resident = 0;
    status >> whole >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / kMegabyte;
}

struct ResidentPictures : Browser {
    void SetUp() override {
        if (tests::isSanitized)
            GTEST_SKIP() << "a sanitizer keeps what was freed";
        useCompression = 0; // Packing takes memory of its own.
        doors = AddFolder(L"Doors", {"door"});
        windows = AddFolder(L"Windows", {"window"});
        currentDirectory = doors;
    }
    void TearDown() override {
        useCompression = 1;
        demandLoadCache = onlyCacheCurrent = delCacheMemoryOnClose = 0;
    }
    static void Fill(Directory& directory) {
        const Picture large(kLargeWidth, kLargeHeight), small(kSmallWidth, kSmallHeight);
        for (int slot = 0; slot < kPictures; ++slot) {
            directory.LargeForWrite().Add(large);
            directory.SmallForWrite().Add(small);
        }
        directory.imagesLoaded = true;
    }
    /// What the work takes out of memory, in MB.
    static double Freed(const std::function<void()>& work) {
        const double before = ResidentMemory();
        work();
        return before - ResidentMemory();
    }
    Directory* doors = nullptr;
    Directory* windows = nullptr;
};

TEST_F(ResidentPictures, OfADirectoryThatIsLeftGoWhereOnlyTheCurrentOnesAreKept) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        onlyCacheCurrent = 1;
        Fill(*doors);
        EXPECT_GT(Freed([&] { dlg.SelectDirectoryRow(1); }), 0.6 * kSize);
    });
}

TEST_F(ResidentPictures, OfAllOthersGoWithTheOptionsOfThePreferences) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        Fill(*windows);
        const double freed = Freed([&] {
            WhenOpen("Prefs", [](QDialog& prefs) {
                Click(prefs, "Onlyloadclickeddirectories.");
                Click(prefs, "Deletedirectorycachefrommemorywhennotthecurrentdirectory.");
                Click(prefs, "OK");
            });
            dlg.Controls().preferences->click();
        });
        EXPECT_GT(freed, 0.6 * kSize);
    });
}

TEST_F(ResidentPictures, OfAllGoWhenTheWindowCloses) {
    delCacheMemoryOnClose = 1;
    double before = 0;
    Run([&](BlockDlg&) {
        ASSERT_TRUE(WaitIdle());
        Fill(*doors);
        Fill(*windows);
        before = ResidentMemory();
    });
    EXPECT_GT(before - ResidentMemory(), kSize) << "the close takes some memory itself";
}

TEST_F(ResidentPictures, StayWhereNothingSaysThatTheyGo) {
    double before = 0;
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        Fill(*doors);
        Fill(*windows);
        before = ResidentMemory();
        dlg.SelectDirectoryRow(1);
        dlg.SelectDirectoryRow(0);
    });
    EXPECT_LT(before - ResidentMemory(), 0.3 * kSize);
    EXPECT_EQ(doors->largeImages->Count(), kPictures + 1);
}

TEST_F(ResidentPictures, OfABackgroundDirectoryGoWithTheEndOfItsPass) {
    Run([&](BlockDlg&) {
        ASSERT_TRUE(WaitIdle());
        Fill(*windows);
        windows->dirty = true;
        const double before = ResidentMemory();
        windows->loaded = false;
        ValidateDirs();
        EXPECT_TRUE(WaitFor([&] { return before - ResidentMemory() > 0.6 * kSize; })) << "the worker does it";
        EXPECT_TRUE(WaitIdle());
        EXPECT_EQ(windows->largeImages->Count(), 1);
    });
}

} // namespace
