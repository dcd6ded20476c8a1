// Preferences, properties of a directory and the description of a block, through their widgets.
#include "tests/browser/BrowserFixture.h"

#include "editor/sdk/db.h"
#include "tessaro/browser/DirProps.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/IniStore.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include <memory>

namespace fs = std::filesystem;

namespace {

/// When the modal dialog of that object name is up, the action is carried out on it.
void WhenOpen(const QString& name, const std::function<void(QDialog&)>& action) {
    QTimer::singleShot(5, [name, action] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || dialog->objectName() != name)
            WhenOpen(name, action);
        else
            action(*dialog);
    });
}

/// Answers every message box with "OK" and keeps what they said.
class AllMessages {
public:
    AllMessages() {
        QObject::connect(&timer, &QTimer::timeout, [this] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            texts << box->text();
            box->button(QMessageBox::Ok)->click();
        });
        timer.start(5);
    }
    QStringList texts;

private:
    QTimer timer;
};

template <class T> T& Child(QDialog& dialog, const char* name) {
    T* const child = dialog.findChild<T*>(QString::fromLatin1(name));
    if (child == nullptr)
        throw std::runtime_error(name);
    return *child;
}

void Click(QDialog& dialog, const char* button) {
    Child<QAbstractButton>(dialog, button).click();
}

bool IsOn(QDialog& dialog, const char* button) {
    return Child<QAbstractButton>(dialog, button).isChecked();
}

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

struct Properties : Browser {
    Properties() {
        directory = AddFolder(L"Doors", {"a", "b", "c"});
        currentDirectory = directory;
    }
    static void Open(BlockDlg& dlg, const std::function<void(QDialog&)>& action) {
        WhenOpen("DirProps", action);
        MenuAnswer menu(QStringLiteral("Properties"));
        dlg.Controls().directoryList->customContextMenuRequested({5, 5});
    }
    static QStringList Lines(QDialog& properties) {
        QStringList lines;
        const auto& list = Child<QListWidget>(properties, "blockCounts");
        for (int row = 0; row < list.count(); ++row)
            lines << list.item(row)->text();
        return lines;
    }
    Directory* directory;
};

TEST_F(Properties, ShowTheDirectoryAndItsBlocksByFileType) {
    directory->showInsPts = false;
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        Open(dlg, [&](QDialog& properties) {
            EXPECT_EQ(properties.windowTitle(), "Tessaro - Directory Properties");
            EXPECT_EQ(theDirProps, &properties);
            EXPECT_EQ(Child<QLineEdit>(properties, "description").text(), "Doors");
            EXPECT_EQ(Child<QLineEdit>(properties, "path").text().toStdWString(), directory->path);
            EXPECT_TRUE(IsOn(properties, "Cache"));
            EXPECT_FALSE(Child<QCheckBox>(properties, "Cache").isEnabled());
            EXPECT_FALSE(IsOn(properties, "ShowIns.Pts."));
            EXPECT_TRUE(IsOn(properties, "UseLargeImages"));
            EXPECT_EQ(Lines(properties), QStringList({"2000\t3", "--------------------", "Total\t3"}));
            EXPECT_TRUE(Child<QPushButton>(properties, "ReloadBlocks").isEnabled());
            EXPECT_FALSE(Child<QPushButton>(properties, "SaveLSAs").isEnabled());
            Click(properties, "Cancel");
        });
        EXPECT_EQ(theDirProps, nullptr);
    });
}

TEST_F(Properties, CountTheBlocksInTheOrderOfTheFileTypes) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        auto block = directory->blocks.begin();
        (*block++)->fileType = 18;
        (*block++)->fileType = 0;
        (*block)->fileType = -7;
        Open(dlg, [&](QDialog& properties) {
            EXPECT_EQ(Lines(properties), QStringList({"Unknwn\t2", "2007\t1", "--------------------", "Total\t3"}));
            Click(properties, "Cancel");
        });
    });
}

TEST_F(Properties, OfADirectoryWithoutBlocksAreTheLineAndTheTotalAlone) {
    currentDirectory = AddFolder(L"Empty", {});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        Open(dlg, [&](QDialog& properties) {
            EXPECT_EQ(Lines(properties), QStringList({"--------------------", "Total\t0"}));
            Click(properties, "Cancel");
        });
    });
}

TEST_F(Properties, OkTakesTheBoxesAndTheDescriptionAndShowsItInTheRow) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        Open(dlg, [&](QDialog& properties) {
            Child<QLineEdit>(properties, "description").setText("Türen");
            Click(properties, "ShowIns.Pts.");
            Click(properties, "UseLargeImages");
            EXPECT_EQ(directory->description, L"Doors") << "not before OK";
            Click(properties, "OK");
        });
        EXPECT_EQ(currentDirectory, directory) << "not read anew";
        EXPECT_EQ(directory->description, L"Türen");
        EXPECT_FALSE(directory->showInsPts);
        EXPECT_FALSE(directory->useLargeImages);
        EXPECT_EQ(dlg.Controls().directoryList->Rows().Text(0, 0), L"Türen");
    });
}

TEST_F(Properties, CancelTakesNothing) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        Open(dlg, [&](QDialog& properties) {
            Child<QLineEdit>(properties, "description").setText("Türen");
            Click(properties, "ShowIns.Pts.");
            Click(properties, "Cancel");
        });
        EXPECT_EQ(directory->description, L"Doors");
        EXPECT_TRUE(directory->showInsPts);
    });
}

TEST_F(Properties, AnotherPathReadsTheDirectoryAnewFromThere) {
    const fs::path other = folder.path() / "other";
    folder.write("other/only.dwg", "AC1018" + std::string(100, '\0'));
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        Open(dlg, [&](QDialog& properties) {
            WhenOpen("folderDialog", [&](QDialog& picker) {
                EXPECT_EQ(picker.windowTitle(), "Select Directory");
                auto& folders = dynamic_cast<QFileDialog&>(picker);
                folders.setDirectory(QString::fromStdString(other.string()));
                folders.selectFile(QString::fromStdString(other.string()));
                picker.done(QDialog::Accepted);
            });
            Click(properties, "Browse");
            EXPECT_EQ(Child<QLineEdit>(properties, "path").text().toStdString(), other.string());
            EXPECT_EQ(currentDirectory, directory) << "nothing more happens before OK";
            Click(properties, "OK");
        });
        ASSERT_NE(currentDirectory, directory);
        EXPECT_EQ(currentDirectory.load()->path, other.wstring());
        EXPECT_TRUE(WaitFor([&] { return dlg.Controls().blockList->Rows().Text(0, 0) == L"only"; }));
        EXPECT_EQ(dlg.Controls().directoryList->Rows().Text(0, 0), L"Doors");
    });
}

TEST_F(Properties, TheSamePathInAnotherCaseIsAnotherPath) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        const std::wstring upper = platform::ToUpper(directory->path);
        Open(dlg, [&](QDialog& properties) {
            Child<QLineEdit>(properties, "path").setText(QString::fromStdWString(upper));
            Click(properties, "OK");
        });
        ASSERT_NE(currentDirectory, directory);
        EXPECT_EQ(currentDirectory.load()->path, upper);
        EXPECT_TRUE(WaitFor([&] { return dlg.BlockRowCount() == 3; }));
    });
}

TEST_F(Properties, ReloadBlocksReadsAnewWhileTheDialogStaysAndTheTimerWakesTheButton) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        folder.write(fs::path(directory->path) / "d.dwg", "AC1018" + std::string(100, '\0'));
        Open(dlg, [&](QDialog& properties) {
            Child<QLineEdit>(properties, "description").setText("Reloaded");
            auto& reload = Child<QPushButton>(properties, "ReloadBlocks");
            reload.click();
            EXPECT_FALSE(reload.isEnabled());
            EXPECT_TRUE(properties.isVisible());
            EXPECT_NE(currentDirectory, directory);
            EXPECT_EQ(currentDirectory.load()->description, L"Reloaded");
            EXPECT_TRUE(WaitFor([&] { return reload.isEnabled(); }));
            EXPECT_EQ(Lines(properties), QStringList({"2000\t3", "2004\t1", "--------------------", "Total\t4"}));
            Click(properties, "Cancel");
        });
    });
}

TEST_F(Properties, OfTheInternalBlocksCantBeRenamedMovedOrReloadedButMayLoseTheLargePictures) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        directory->isInternal = true;
        Open(dlg, [&](QDialog& properties) {
            for (const char* control : {"description", "path", "Browse", "ReloadBlocks", "SaveLSAs"})
                EXPECT_FALSE(Child<QWidget>(properties, control).isEnabled()) << control;
            EXPECT_TRUE(Child<QCheckBox>(properties, "UseLargeImages").isEnabled());
            QTest::qWait(1200);
            EXPECT_FALSE(Child<QPushButton>(properties, "ReloadBlocks").isEnabled());
            Click(properties, "UseLargeImages");
            Click(properties, "OK");
        });
        EXPECT_FALSE(directory->useLargeImages);
        directory->isInternal = false;
    });
}

TEST_F(Properties, ClearingLargeImagesLeavesTheLargeViewAtOnceSettingThemDoesNothing) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.SetView(0);
        Open(dlg, [&](QDialog& properties) {
            Click(properties, "UseLargeImages");
            EXPECT_EQ(dlg.Controls().viewButton->view, 3);
            Click(properties, "UseLargeImages");
            EXPECT_EQ(dlg.Controls().viewButton->view, 3);
            dlg.SetView(1);
            Click(properties, "UseLargeImages");
            EXPECT_EQ(dlg.Controls().viewButton->view, 1);
            Click(properties, "Cancel");
        });
    });
}

TEST_F(Properties, SaveLsasWritesWaitingDescriptionsAndDisablesItself) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        directory->descriptionsPending = true;
        directory->blocks.front()->descriptionPending = true;
        Open(dlg, [&](QDialog& properties) {
            auto& save = Child<QPushButton>(properties, "SaveLSAs");
            EXPECT_TRUE(save.isEnabled());
            save.click();
            EXPECT_FALSE(save.isEnabled());
            Click(properties, "Cancel");
        });
        EXPECT_FALSE(directory->descriptionsPending);
        EXPECT_FALSE(directory->blocks.front()->descriptionPending);
    });
}

struct Description : Browser {
    Description() {
        directory = AddFolder(L"Doors", {"other"});
        AcDbDatabase made(true, false);
        EXPECT_EQ(made.saveAs(Drawing().wstring().c_str()), 0);
        currentDirectory = directory;
    }
    fs::path Drawing() const { return fs::path(directory->path) / "door.dwg"; }
    std::wstring Comments() const {
        AcDbDatabase database(false, false);
        AcDbDatabaseSummaryInfo* made = nullptr;
        if (database.readDwgFile(Drawing().wstring().c_str()) != 0 || acdbGetSummaryInfo(&database, made) != 0)
            return L"unreadable";
        const std::unique_ptr<AcDbDatabaseSummaryInfo> summary(made);
        std::wstring text;
        summary->getComments(text);
        return text;
    }
    /// The dialog on "door", selected and examined.
    void RunOnDoor(const std::function<void(BlockDlg&)>& script) {
        Run([&](BlockDlg& dlg) {
            ASSERT_TRUE(WaitIdle());
            dlg.Controls().blockList->SelectRow(0);
            ASSERT_EQ(dlg.Controls().blockList->Rows().Text(0, 0), L"door");
            script(dlg);
        });
    }
    static void Enter(BlockDlg& dlg, const QString& text, const char* button = "OK") {
        WhenOpen("EditDesc", [text, button](QDialog& edit) {
            Child<QLineEdit>(edit, "description").setText(text);
            Click(edit, button);
        });
        dlg.Controls().editDescription->click();
    }
    Directory* directory;
};

TEST_F(Description, IsWrittenIntoTheDrawingAndShownInRowAndPane) {
    RunOnDoor([&](BlockDlg& dlg) {
        Enter(dlg, "Swing door, 門");
        EXPECT_EQ(dlg.Controls().blockList->Rows().Text(0, 2), L"Swing door, 門");
        EXPECT_EQ(dlg.SelectedBlockRow(), 0);
        EXPECT_NE(dlg.Controls().properties->text().indexOf("Desc: Swing door, 門"), -1);
        EXPECT_EQ(Comments(), L"Swing door, 門");
        EXPECT_FALSE(fs::exists(Drawing().string() + "2"));
    });
}

TEST_F(Description, TheNextPassFindsTheSameTextInTheDrawing) {
    RunOnDoor([&](BlockDlg& dlg) { Enter(dlg, "Swing door"); });
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        EXPECT_EQ(dlg.Controls().blockList->Rows().Text(0, 2), L"Swing door");
    });
}

TEST_F(Description, ACancelledEditWritesNothing) {
    const std::string before = tests::readFile(Drawing());
    RunOnDoor([&](BlockDlg& dlg) {
        Enter(dlg, "never", "Cancel");
        EXPECT_EQ(dlg.Controls().blockList->Rows().Text(0, 2), L"");
    });
    EXPECT_EQ(tests::readFile(Drawing()), before);
}

TEST_F(Description, TheEditShowsThePresentText) {
    RunOnDoor([&](BlockDlg& dlg) {
        directory->blocks.front()->description = L"as it is";
        WhenOpen("EditDesc", [](QDialog& edit) {
            EXPECT_EQ(edit.windowTitle(), "Edit Block Description");
            EXPECT_EQ(Child<QLineEdit>(edit, "description").text(), "as it is");
            Click(edit, "Cancel");
        });
        dlg.Controls().editDescription->click();
    });
}

TEST_F(Description, SeventyCharactersAreTakenSeventyOneRefusedWithTheDialogOpen) {
    RunOnDoor([&](BlockDlg& dlg) {
        WhenOpen("EditDesc", [](QDialog& edit) {
            auto& text = Child<QLineEdit>(edit, "description");
            text.setText(QString(71, 'x'));
            MessageAnswer refusal("OK");
            Click(edit, "OK");
            EXPECT_EQ(refusal.Text(), "Enter no more than 70 characters.");
            EXPECT_TRUE(edit.isVisible());
            text.setText(QString(70, 'x'));
            Click(edit, "OK");
        });
        dlg.Controls().editDescription->click();
        EXPECT_EQ(Comments(), std::wstring(70, L'x'));
    });
}

TEST_F(Description, OfAFileThatIsGoneCantBeEdited) {
    RunOnDoor([&](BlockDlg& dlg) {
        fs::remove(Drawing());
        MessageAnswer message("OK");
        dlg.Controls().editDescription->click();
        EXPECT_EQ(message.Text(), "File no longer exists.");
    });
}

TEST_F(Description, OfAReadOnlyFileCantBeEdited) {
    RunOnDoor([&](BlockDlg& dlg) {
        fs::permissions(Drawing(), fs::perms::owner_read);
        MessageAnswer message("OK");
        dlg.Controls().editDescription->click();
        EXPECT_EQ(message.Text(), "This file is read only.\nThe description cannot be changed.");
    });
}

TEST_F(Description, ThatCantBeWrittenIsReportedAndStaysInTheList) {
    RunOnDoor([&](BlockDlg& dlg) {
        folder.write(Drawing(), "AC1015 damaged");
        MessageAnswer message("OK");
        Enter(dlg, "kept in the list");
        EXPECT_EQ(message.Text(), "Could not write to file.\nDescription not saved.");
        EXPECT_EQ(dlg.Controls().blockList->Rows().Text(0, 2), L"kept in the list");
        EXPECT_EQ(tests::readFile(Drawing()), "AC1015 damaged");
    });
}

TEST_F(Description, OfAnR14DrawingEndsWithTheWordsOfTheFileThatIsMissing) {
    RunOnDoor([&](BlockDlg& dlg) {
        directory->blocks.front()->fileType = 15;
        AcDbDatabase made(true, false);
        std::string bitmap(40 + 24, '\0');
        bitmap[0] = 40;
        bitmap[4] = 4;
        bitmap[8] = 2;
        bitmap[12] = 1;
        bitmap[14] = 24;
        made.setThumbnailBitmap(bitmap);
        ASSERT_EQ(made.saveAs(Drawing().wstring().c_str()), 0);
        MessageAnswer message("OK");
        Enter(dlg, "lost");
        EXPECT_NE(message.Text().indexOf("door.dwg"), -1) << message.Text().toStdString();
        EXPECT_FALSE(fs::exists(Drawing()));
        EXPECT_TRUE(fs::exists(Drawing().replace_extension(".bak")));
    });
}

TEST_F(Description, WithoutASelectionNothingHappens) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->clearSelection();
        dlg.Controls().editDescription->setEnabled(true);
        dlg.Controls().editDescription->click();
        EXPECT_EQ(QApplication::activeModalWidget(), &dlg);
    });
}

} // namespace
