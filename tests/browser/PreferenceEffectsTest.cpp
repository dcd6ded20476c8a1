// What each control of the preferences does to the running module, and what of it stands in the settings file when the
// window has closed.
#include "tests/browser/SmallDialogs.h"

#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"

#include <QLineEdit>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace small_dialogs;

namespace {

constexpr const char* kOnlyClicked = "Onlyloadclickeddirectories.";
constexpr const char* kOnlyCurrent = "Deletedirectorycachefrommemorywhennotthecurrentdirectory.";
constexpr const char* kOnClose = "DeletealldirectorycachesfrommemorywhenTessarocloses.";

struct PreferenceEffects : Browser {
    PreferenceEffects() {
        doors = AddFolder(L"Doors", {"door"});
        windows = AddFolder(L"Windows", {"window"});
        currentDirectory = doors;
        SetAll(0);
    }
    ~PreferenceEffects() override {
        SetAll(0);
        useCompression = 1;
    }
    static void SetAll(int value) {
        blockInsert = readDirEveryTime = overlayXRef = useCompression = backupIni = demandLoadCache = onlyCacheCurrent =
            delCacheMemoryOnClose = value;
    }
    /// Opens the preferences, clicks, and presses OK.
    static void Choose(BlockDlg& dlg, const std::vector<const char*>& buttons, const std::wstring& cache = cachePath) {
        WhenOpen("Prefs", [=](QDialog& prefs) {
            for (const char* button : buttons)
                Click(prefs, button);
            Child<QLineEdit>(prefs, "cacheFile").setText(QString::fromStdWString(cache));
            Click(prefs, "OK");
        });
        dlg.Controls().preferences->click();
    }
    /// An opening in which nothing but that is done.
    void ChooseAndClose(const std::vector<const char*>& buttons) {
        Run([&](BlockDlg& dlg) {
            ASSERT_TRUE(WaitIdle());
            Choose(dlg, buttons);
        });
    }
    std::string IniValue(const std::string& key) const {
        const std::string ini = tests::readFile(folder.path() / "tessaro35.ini");
        const std::size_t at = ini.find("\n" + key + "=");
        if (at == std::string::npos)
            return "absent";
        const std::size_t value = at + key.size() + 2;
        return ini.substr(value, ini.find('\r', value) - value);
    }
    static void AddPictures(Directory& directory) {
        directory.LargeForWrite().Add(Picture(kLargeWidth, kLargeHeight));
        directory.SmallForWrite().Add(Picture(kSmallWidth, kSmallHeight));
        directory.imagesLoaded = true;
        directory.dirty = true;
    }
    Directory* doors;
    Directory* windows;
};

TEST_F(PreferenceEffects, ExistingBlockResolutionIsOneOfThree) {
    const std::pair<const char*, int> choices[]{
        {"Alwaysupdate", 2}, {"Asktoupdateonceperblockperdrawing", 1}, {"Asktoupdate", 0}};
    for (const auto& [button, value] : choices) {
        ChooseAndClose({button});
        EXPECT_EQ(blockInsert, value);
        EXPECT_EQ(IniValue("blockinsert"), std::to_string(value));
    }
}

TEST_F(PreferenceEffects, ReadOnlyOncePerSessionSeesNoNewDrawingAtTheNextOpeningReadEveryTimeDoes) {
    ChooseAndClose({"ReadOnlyOncePerSession"});
    EXPECT_EQ(IniValue("readdireverytime"), "0");
    folder.write(fs::path(doors->path) / "second.dwg", "AC1015" + std::string(100, '\0'));
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        EXPECT_EQ(dlg.BlockRowCount(), 1);
        Choose(dlg, {"ReadEveryTimeShowed"});
    });
    EXPECT_EQ(IniValue("readdireverytime"), "1");
    Run([&](BlockDlg& dlg) { EXPECT_TRUE(WaitFor([&] { return dlg.BlockRowCount() == 2; })); });
}

TEST_F(PreferenceEffects, UseCompressionGoesToTheNextCacheFileThatIsWrittenAndIsNotKept) {
    const auto cacheAfter = [&](const std::vector<const char*>& buttons) {
        Run([&](BlockDlg& dlg) {
            ASSERT_TRUE(WaitIdle());
            Choose(dlg, buttons);
            doors->dirty = true;
        });
        return tests::readFile(doors->cacheFile);
    };
    EXPECT_TRUE(cacheAfter({}).starts_with("IL")) << "the bare lists";
    const std::string packed = cacheAfter({"UseCompression"});
    EXPECT_FALSE(packed.empty());
    EXPECT_FALSE(packed.starts_with("IL"));
    EXPECT_EQ(IniValue("usecompression"), "absent");
}

TEST_F(PreferenceEffects, OnlyLoadClickedDirectoriesLeavesThePicturesOnDiskWhenTheCatalogueIsRead) {
    ChooseAndClose({});
    EXPECT_EQ(IniValue("demandloadcache"), "0");
    for (Directory* directory : {doors, windows}) {
        AddPictures(*directory);
        SaveDirCache(*directory);
        directory->dirty = false;
    }
    const auto picturesAfterARestart = [] {
        WriteMainCache();
        for (const Directory* directory : directories)
            delete directory;
        directories.clear();
        currentDirectory = nullptr;
        EXPECT_TRUE(ReadMainCache().opened);
        std::vector<int> counts;
        for (const Directory* directory : directories)
            counts.push_back(directory->largeImages->Count());
        return counts;
    };
    EXPECT_EQ(picturesAfterARestart(), (std::vector<int>{2, 2}));
    ChooseAndClose({kOnlyClicked});
    EXPECT_EQ(IniValue("demandloadcache"), "1");
    EXPECT_EQ(picturesAfterARestart(), (std::vector<int>{1, 1}));
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        EXPECT_EQ(directories.front()->largeImages->Count(), 2) << "it is shown";
        EXPECT_EQ(directories.back()->largeImages->Count(), 1);
        dlg.SelectDirectoryRow(1);
        EXPECT_EQ(directories.back()->largeImages->Count(), 2) << "read when it is clicked";
    });
}

TEST_F(PreferenceEffects, DeletingCachesOfOtherDirectoriesIsDoneAtOnceAndWheneverOneIsLeft) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        AddPictures(*doors);
        AddPictures(*windows);
        Choose(dlg, {kOnlyClicked, kOnlyCurrent});
        EXPECT_EQ(windows->largeImages->Count(), 1) << "at once";
        EXPECT_TRUE(fs::exists(windows->cacheFile)) << "written before";
        EXPECT_EQ(doors->largeImages->Count(), 2) << "the current one";
        dlg.SelectDirectoryRow(1);
        EXPECT_EQ(doors->largeImages->Count(), 1) << "left";
        EXPECT_EQ(windows->largeImages->Count(), 2) << "read again";
    });
    EXPECT_EQ(IniValue("onlycachecurrent"), "1");
    EXPECT_EQ(windows->largeImages->Count(), 2) << "the close leaves the current one's";
}

TEST_F(PreferenceEffects, DeletingAllCachesHappensWhenTheWindowCloses) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        AddPictures(*doors);
        AddPictures(*windows);
        Choose(dlg, {kOnlyClicked, kOnClose});
        EXPECT_EQ(doors->largeImages->Count(), 2);
        EXPECT_EQ(windows->largeImages->Count(), 2) << "not before the close";
    });
    EXPECT_EQ(IniValue("delcachememoryonclose"), "1");
    for (const Directory* directory : {doors, windows}) {
        EXPECT_EQ(directory->largeImages->Count(), 1);
        EXPECT_TRUE(fs::exists(directory->cacheFile));
    }
}

TEST_F(PreferenceEffects, OverlayChangesTheButtonAndItsNextOpening) {
    ChooseAndClose({"Overlay"});
    EXPECT_EQ(IniValue("overlayxref"), "1");
    Run([&](BlockDlg& dlg) {
        EXPECT_EQ(dlg.Controls().xref->text(), "XRef/O");
        Choose(dlg, {"Attach"});
        EXPECT_EQ(dlg.Controls().xref->text(), "XRef/A");
    });
    EXPECT_EQ(IniValue("overlayxref"), "0");
}

TEST_F(PreferenceEffects, BackupsOfTheIniFileAreMadeFromTheCloseOn) {
    const fs::path backup = folder.path() / "tessaro35.bk1";
    ChooseAndClose({});
    ChooseAndClose({});
    EXPECT_FALSE(fs::exists(backup));
    EXPECT_EQ(IniValue("backupini"), "0");
    const std::string before = tests::readFile(folder.path() / "tessaro35.ini");
    ChooseAndClose({"Createbackupsoftheinifile."});
    EXPECT_EQ(IniValue("backupini"), "1");
    EXPECT_EQ(tests::readFile(backup), before);
    ChooseAndClose({"Createbackupsoftheinifile."});
    EXPECT_EQ(IniValue("backupini"), "0");
    EXPECT_FALSE(fs::exists(folder.path() / "tessaro35.bk2")) << "from this close on there are none";
}

TEST_F(PreferenceEffects, TheCacheFilesPlaceIsInTheSettingsAndIsWhereTheNextSaveGoes) {
    const fs::path other = folder.path() / "other";
    fs::create_directory(other);
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        Choose(dlg, {}, (other / "big.cache").wstring());
        AddPictures(*doors);
    });
    EXPECT_EQ(IniValue("cachefile"), (other / "big.cache").string());
    EXPECT_TRUE(fs::exists(other / "path1_35.cache"));
    EXPECT_FALSE(fs::exists(folder.path() / "path0_35.cache"));
}

TEST_F(PreferenceEffects, TheCacheFilesMoveToAnotherFileSystem) {
    struct stat here, there;
    const fs::path memory = "/dev/shm";
    if (stat(memory.c_str(), &there) != 0 || stat(folder.path().c_str(), &here) != 0 || here.st_dev == there.st_dev ||
        access(memory.c_str(), W_OK) != 0)
        GTEST_SKIP() << "there is no second file system";
    const fs::path other = memory / folder.path().filename();
    fs::create_directory(other);
    AddPictures(*doors);
    SaveDirCache(*doors);
    const std::string pictures = tests::readFile(doors->cacheFile);
    folder.write("tessaro35.cache", "main");
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        doors->dirty = false;
        Choose(dlg, {}, (other / "tessaro35.cache").wstring());
        EXPECT_EQ(tests::readFile(other / "path1_35.cache"), pictures);
        EXPECT_EQ(tests::readFile(other / "tessaro35.cache"), "main");
        EXPECT_FALSE(fs::exists(folder.path() / "path0_35.cache"));
        EXPECT_FALSE(fs::exists(folder.path() / "tessaro35.cache"));
    });
    EXPECT_EQ(IniValue("cachefile"), (other / "tessaro35.cache").string());
    fs::remove_all(other);
}

TEST_F(PreferenceEffects, ACacheLocationThatIsAFolderOrIsMissingIsTakenAndEachSaveOfPicturesTellsIt) {
    const fs::path place = folder.path() / "place";
    fs::create_directories(place / "path1_35.cache");
    for (const fs::path& location : {place / "tessaro35.cache", folder.path() / "none" / "tessaro35.cache"}) {
        SCOPED_TRACE(location.string());
        const AllMessages messages;
        Run([&](BlockDlg& dlg) {
            ASSERT_TRUE(WaitIdle());
            Choose(dlg, {}, location.wstring());
            EXPECT_TRUE(messages.texts.isEmpty()) << "a failed move is not told";
            doors->dirty = true;
        });
        EXPECT_EQ(cachePath, location.wstring());
        EXPECT_EQ(IniValue("cachefile"), location.string());
        ASSERT_EQ(messages.texts.size(), 2) << messages.texts.join('|').toStdString();
        EXPECT_TRUE(messages.texts[1].startsWith("The cache file could not be written to:\n" +
                                                 QString::fromStdWString(doors->cacheFile) + "\n"));
    }
    EXPECT_TRUE(fs::is_directory(place / "path1_35.cache"));
}

} // namespace
