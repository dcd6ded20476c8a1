// Properties of a directory, through their widgets.
#include "tests/browser/SmallDialogs.h"

#include "tessaro/browser/DirProps.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

namespace fs = std::filesystem;
using namespace small_dialogs;

namespace {

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

} // namespace
