// Roads of a description through the window that reach further than its dialog: real drawings, the next pass, drawings
// that are lost by it.
#include "tests/browser/SmallDialogs.h"

#include "editor/sdk/db.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"

#include <QLabel>
#include <QLineEdit>

#include <map>
#include <memory>

namespace fs = std::filesystem;
using namespace small_dialogs;

namespace {

constexpr int kTypeCell = 1, kDescriptionCell = 2;

std::wstring CommentsOf(const fs::path& file) {
    AcDbDatabase database(false, false);
    AcDbDatabaseSummaryInfo* made = nullptr;
    if (database.readDwgFile(file.wstring().c_str()) != 0 || acdbGetSummaryInfo(&database, made) != 0)
        return L"unreadable";
    const std::unique_ptr<AcDbDatabaseSummaryInfo> summary(made);
    std::wstring text;
    summary->getComments(text);
    return text;
}

struct DescriptionRoads : Browser {
    DescriptionRoads() {
        directory = AddFolder(L"Doors", {});
        currentDirectory = directory;
    }
    ~DescriptionRoads() override { readDirEveryTime = 0; }

    fs::path Drawing(const std::string& name) const { return fs::path(directory->path) / (name + ".dwg"); }
    void Save(const std::string& name, AcDb::AcDbDwgVersion version) const {
        AcDbDatabase made(true, false);
        ASSERT_EQ(made.saveAs(Drawing(name).wstring().c_str(), false, version), 0);
    }
    static void Enter(BlockDlg& dlg, const QString& text) {
        WhenOpen("EditDesc", [text](QDialog& edit) {
            Child<QLineEdit>(edit, "description").setText(text);
            Click(edit, "OK");
        });
        dlg.Controls().editDescription->click();
    }
    static std::wstring Cell(BlockDlg& dlg, int row, int column) {
        return dlg.Controls().blockList->Rows().Text(row, column);
    }
    /// The next opening compares all drawings with their files again.
    void Forget(const std::wstring& description) const {
        readDirEveryTime = 1;
        for (Block* block : directory->blocks)
            block->description = description;
    }
    Directory* directory;
};

TEST_F(DescriptionRoads, TheNextPassExaminesTheFileAgainAndFindsTheTextInIt) {
    Save("door", AcDb::kDHL_1015);
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->SelectRow(0);
        Enter(dlg, "Swing door, 門");
    });
    Forget(L"forgotten");
    Run([&](BlockDlg& dlg) {
        EXPECT_TRUE(WaitFor([&] { return Cell(dlg, 0, kDescriptionCell) == L"Swing door, 門"; }))
            << QString::fromStdWString(Cell(dlg, 0, kDescriptionCell)).toStdString();
    });
}

TEST_F(DescriptionRoads, RealDrawingsOfTheFiveFormatsTakeTheTextAndTheNextPassFindsIt) {
    const fs::path real = tests::sharedFolder("drawings");
    if (real.empty())
        GTEST_SKIP() << "no real drawings beside the checkout";
    for (const char* release : {"2000", "2004", "2007", "2010", "2013"}) {
        fs::copy_file(real / (std::string("example_") + release + ".dwg"), Drawing(release));
        fs::permissions(Drawing(release), fs::perms::owner_write, fs::perm_options::add);
    }
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        ASSERT_EQ(dlg.BlockRowCount(), 5);
        for (int row = 0; row < 5; ++row) {
            dlg.Controls().blockList->SelectRow(row);
            EXPECT_EQ(Cell(dlg, row, kTypeCell), Cell(dlg, row, 0)) << "each has its format's name";
            Enter(dlg, QStringLiteral("Tür %1").arg(row));
            EXPECT_NE(dlg.Controls().properties->text().indexOf(QStringLiteral("Desc: Tür %1").arg(row)), -1);
        }
    });
    Forget(L"forgotten");
    Run([&](BlockDlg& dlg) {
        EXPECT_TRUE(WaitFor([&] {
            for (int row = 0; row < 5; ++row)
                if (Cell(dlg, row, kDescriptionCell) != L"Tür " + std::to_wstring(row))
                    return false;
            return true;
        }));
        for (int row = 0; row < 5; ++row)
            EXPECT_EQ(Cell(dlg, row, kTypeCell), Cell(dlg, row, 0)) << "and keeps it";
    });
}

TEST_F(DescriptionRoads, OfTwoSelectedRowsOnlyTheFirstIsEdited) {
    Save("a", AcDb::kDHL_1015);
    Save("b", AcDb::kDHL_1015);
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        MyList& list = *dlg.Controls().blockList;
        list.setSelectionMode(QAbstractItemView::ExtendedSelection);
        list.selectAll();
        ASSERT_EQ(list.selectionModel()->selectedRows().size(), 2);
        Enter(dlg, "first");
        EXPECT_EQ(Cell(dlg, 0, kDescriptionCell), L"first");
        EXPECT_EQ(Cell(dlg, 1, kDescriptionCell), L"");
    });
    EXPECT_EQ(CommentsOf(Drawing("a")), L"first");
    EXPECT_EQ(CommentsOf(Drawing("b")), L"");
}

TEST_F(DescriptionRoads, AnEmptyTextIsWritten) {
    Save("door", AcDb::kDHL_1015);
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->SelectRow(0);
        Enter(dlg, "to be taken away");
        ASSERT_EQ(CommentsOf(Drawing("door")), L"to be taken away");
        Enter(dlg, "");
        EXPECT_EQ(Cell(dlg, 0, kDescriptionCell), L"");
        EXPECT_EQ(CommentsOf(Drawing("door")), L"");
    });
}

// The window enables the button at its opening, and asks for a format only where a selection changes.
TEST_F(DescriptionRoads, AReopenedWindowOffersTheEditOfASelectedDrawingOf2018OfWhichOnlyTheBackupThenRemains) {
    Save("door", AcDb::kDHL_1032);
    const std::string before = tests::readFile(Drawing("door"));
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->SelectRow(0);
        EXPECT_EQ(Cell(dlg, 0, kTypeCell), L"Unknwn");
        EXPECT_FALSE(dlg.Controls().editDescription->isEnabled()) << "as long as it was selected here";
        dlg.Controls().close->click();
    });
    AllMessages messages;
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        ASSERT_TRUE(WaitFor([&] { return dlg.SelectedBlockRow() == 0; }));
        ASSERT_TRUE(dlg.Controls().editDescription->isEnabled());
        Enter(dlg, "gone");
        EXPECT_EQ(Cell(dlg, 0, kDescriptionCell), L"gone");
    });
    EXPECT_TRUE(messages.texts.isEmpty()) << "nothing is told: " << messages.texts.join('|').toStdString();
    EXPECT_FALSE(fs::exists(Drawing("door")));
    EXPECT_EQ(tests::readFile(Drawing("door").replace_extension(".bak")), before);
    EXPECT_FALSE(fs::exists(Drawing("door").string() + "2"));
}

} // namespace
