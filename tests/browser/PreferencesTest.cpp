// Preferences, through their widgets.
#include "tests/browser/SmallDialogs.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>

namespace fs = std::filesystem;
using namespace small_dialogs;

namespace {

constexpr const char* kOnlyClicked = "Onlyloadclickeddirectories.";
constexpr const char* kOnlyCurrent = "Deletedirectorycachefrommemorywhennotthecurrentdirectory.";
constexpr const char* kOnClose = "DeletealldirectorycachesfrommemorywhenTessarocloses.";

struct Preferences : Browser {
    Preferences() {
        directory = AddFolder(L"Doors", {"door"});
        blockInsert = readDirEveryTime = overlayXRef = useCompression = backupIni = 0;
        demandLoadCache = onlyCacheCurrent = delCacheMemoryOnClose = 0;
    }
    ~Preferences() override {
        blockInsert = readDirEveryTime = overlayXRef = useCompression = backupIni = 0;
        demandLoadCache = onlyCacheCurrent = delCacheMemoryOnClose = 0;
    }
    /// Opens the dialog by its button; the action ends it.
    static void Open(BlockDlg& dlg, const std::function<void(QDialog&)>& action) {
        WhenOpen("Prefs", action);
        dlg.Controls().preferences->click();
    }
    Directory* directory;
};

TEST_F(Preferences, ShowTheSettings) {
    blockInsert = 1;
    readDirEveryTime = 1;
    overlayXRef = 1;
    useCompression = demandLoadCache = delCacheMemoryOnClose = backupIni = 1;
    Run([&](BlockDlg& dlg) {
        Open(dlg, [&](QDialog& prefs) {
            EXPECT_EQ(prefs.windowTitle(), "Tessaro - Preferences");
            EXPECT_EQ(Child<QLineEdit>(prefs, "cacheFile").text().toStdWString(), cachePath);
            EXPECT_FALSE(IsOn(prefs, "Asktoupdate"));
            EXPECT_TRUE(IsOn(prefs, "Asktoupdateonceperblockperdrawing"));
            EXPECT_FALSE(IsOn(prefs, "Alwaysupdate"));
            EXPECT_TRUE(IsOn(prefs, "ReadEveryTimeShowed"));
            EXPECT_TRUE(IsOn(prefs, "Overlay"));
            EXPECT_TRUE(IsOn(prefs, "UseCompression"));
            EXPECT_TRUE(IsOn(prefs, kOnlyClicked));
            EXPECT_FALSE(IsOn(prefs, kOnlyCurrent));
            EXPECT_TRUE(IsOn(prefs, kOnClose));
            EXPECT_TRUE(IsOn(prefs, "Createbackupsoftheinifile."));
            Click(prefs, "Cancel");
        });
    });
}

TEST_F(Preferences, CancelChangesNothing) {
    const std::wstring cache = cachePath;
    Run([&](BlockDlg& dlg) {
        Open(dlg, [&](QDialog& prefs) {
            Child<QLineEdit>(prefs, "cacheFile").setText("/nowhere/else.cache");
            for (const char* button : {"Alwaysupdate", "ReadEveryTimeShowed", "Overlay", "UseCompression"})
                Click(prefs, button);
            Click(prefs, "Cancel");
        });
        EXPECT_EQ(dlg.Controls().xref->text(), "Xref/A");
    });
    EXPECT_EQ(cachePath, cache);
    EXPECT_EQ(blockInsert, 0);
    EXPECT_EQ(readDirEveryTime, 0);
    EXPECT_EQ(overlayXRef, 0);
    EXPECT_EQ(useCompression, 0);
}

TEST_F(Preferences, OkTakesAllSettingsAndTheyAreInTheIniFileAfterTheClose) {
    Run([&](BlockDlg& dlg) {
        Open(dlg, [&](QDialog& prefs) {
            for (const char* button : {"Alwaysupdate", "ReadEveryTimeShowed", "Overlay", "UseCompression", kOnlyClicked,
                                       kOnlyCurrent, kOnClose, "Createbackupsoftheinifile."})
                Click(prefs, button);
            Click(prefs, "OK");
        });
        EXPECT_EQ(dlg.Controls().xref->text(), "XRef/O");
        EXPECT_EQ(blockInsert, 2);
        EXPECT_EQ(readDirEveryTime, 1);
        EXPECT_EQ(overlayXRef, 1);
        EXPECT_NE(useCompression, 0);
        EXPECT_NE(demandLoadCache, 0);
        EXPECT_NE(onlyCacheCurrent, 0);
        EXPECT_NE(delCacheMemoryOnClose, 0);
        EXPECT_NE(backupIni, 0);
        EXPECT_FALSE(fs::exists(iniPath)) << "written at the close, not here";
    });
    const std::string ini = tests::readFile(iniPath);
    for (const char* line : {"blockinsert=2", "readdireverytime=1", "overlayxref=1", "demandloadcache=1",
                             "onlycachecurrent=1", "delcachememoryonclose=1", "backupini=1"})
        EXPECT_NE(ini.find(line), std::string::npos) << line << '\n' << ini;
}

TEST_F(Preferences, ReturningToAttachChangesTheCaptionOfTheReferenceButton) {
    overlayXRef = 1;
    Run([&](BlockDlg& dlg) {
        ASSERT_EQ(dlg.Controls().xref->text(), "XRef/O");
        Open(dlg, [&](QDialog& prefs) {
            Click(prefs, "Attach");
            Click(prefs, "OK");
        });
        EXPECT_EQ(dlg.Controls().xref->text(), "XRef/A");
        EXPECT_EQ(overlayXRef, 0);
    });
}

TEST_F(Preferences, WithoutLoadingOfClickedDirectoriesTheTwoBoxesBelowAreClearedAndDisabled) {
    onlyCacheCurrent = delCacheMemoryOnClose = 1;
    Run([&](BlockDlg& dlg) {
        Open(dlg, [&](QDialog& prefs) {
            for (const char* box : {kOnlyCurrent, kOnClose}) {
                EXPECT_FALSE(IsOn(prefs, box));
                EXPECT_FALSE(Child<QCheckBox>(prefs, box).isEnabled());
            }
            Click(prefs, kOnlyClicked);
            for (const char* box : {kOnlyCurrent, kOnClose}) {
                EXPECT_TRUE(Child<QCheckBox>(prefs, box).isEnabled());
                Click(prefs, box);
                EXPECT_TRUE(IsOn(prefs, box));
            }
            Click(prefs, kOnlyClicked);
            for (const char* box : {kOnlyCurrent, kOnClose}) {
                EXPECT_FALSE(IsOn(prefs, box));
                EXPECT_FALSE(Child<QCheckBox>(prefs, box).isEnabled());
            }
            Click(prefs, "OK");
        });
    });
    EXPECT_EQ(demandLoadCache, 0);
    EXPECT_EQ(onlyCacheCurrent, 0);
    EXPECT_EQ(delCacheMemoryOnClose, 0);
}

TEST_F(Preferences, AnotherCachePathMovesAllCacheFilesWithNumbersInDisplayOrder) {
    const fs::path other = folder.path() / "other";
    fs::create_directories(other);
    Directory* const second = AddFolder(L"Windows", {"window"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        folder.write(fs::path(directory->cacheFile).filename(), "first");
        folder.write(fs::path(second->cacheFile).filename(), "second");
        folder.write(fs::path(cachePath).filename(), "main");
        Open(dlg, [&](QDialog& prefs) {
            Child<QLineEdit>(prefs, "cacheFile").setText(QString::fromStdString((other / "big.cache").string()));
            Click(prefs, "OK");
        });
        EXPECT_EQ(cachePath, (other / "big.cache").wstring());
        EXPECT_EQ(directory->cacheFile, (other / "path1_35.cache").wstring());
        EXPECT_EQ(second->cacheFile, (other / "path2_35.cache").wstring());
        EXPECT_EQ(tests::readFile(other / "path1_35.cache"), "first");
        EXPECT_EQ(tests::readFile(other / "path2_35.cache"), "second");
        EXPECT_EQ(tests::readFile(other / "big.cache"), "main");
    });
}

TEST_F(Preferences, TheSamePathInAnotherCaseMovesTheFilesTo) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        folder.write(fs::path(cachePath).filename(), "main");
        Open(dlg, [&](QDialog& prefs) {
            Child<QLineEdit>(prefs, "cacheFile")
                .setText(QString::fromStdString((folder.path() / "TESSARO35.cache").string()));
            Click(prefs, "OK");
        });
        EXPECT_EQ(cachePath, (folder.path() / "TESSARO35.cache").wstring());
        EXPECT_EQ(directory->cacheFile, (folder.path() / "path1_35.cache").wstring());
        EXPECT_TRUE(fs::exists(folder.path() / "TESSARO35.cache"));
    });
}

TEST_F(Preferences, ACachePathThatDoesNotExistIsTakenAllTheSameAndTheCloseReportsIt) {
    AllMessages messages;
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        Open(dlg, [&](QDialog& prefs) {
            Child<QLineEdit>(prefs, "cacheFile").setText("/no/such/folder/x.cache");
            Click(prefs, "OK");
        });
        EXPECT_EQ(cachePath, L"/no/such/folder/x.cache");
        EXPECT_EQ(directory->cacheFile, L"/no/such/folder/path1_35.cache");
    });
    const QString said = messages.texts.join(QLatin1Char('|'));
    EXPECT_TRUE(said.contains("The cache file could not be written to:\n/no/such/folder/path1_35.cache\n"))
        << said.toStdString();
}

TEST_F(Preferences, BrowseStartsAtTheCacheFileAndTakesWhatIsChosen) {
    Run([&](BlockDlg& dlg) {
        Open(dlg, [&](QDialog& prefs) {
            WhenOpen("saveDialog", [&](QDialog& picker) {
                auto& files = dynamic_cast<QFileDialog&>(picker);
                EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptSave);
                EXPECT_EQ(files.directory().absolutePath().toStdString(), folder.path().string());
                EXPECT_EQ(files.selectedFiles().constFirst().toStdWString(), cachePath);
                files.selectFile(QString::fromStdString((folder.path() / "chosen.cache").string()));
                picker.done(QDialog::Accepted);
            });
            Click(prefs, "Browse");
            EXPECT_EQ(Child<QLineEdit>(prefs, "cacheFile").text().toStdString(),
                      (folder.path() / "chosen.cache").string());
            Click(prefs, "Cancel");
        });
    });
}

} // namespace
