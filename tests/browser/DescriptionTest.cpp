// The description of a block, through its dialog, into its drawing.
#include "tests/browser/SmallDialogs.h"

#include "editor/sdk/db.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"

#include <QLabel>
#include <QLineEdit>

#include <memory>

namespace fs = std::filesystem;
using namespace small_dialogs;

namespace {

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
