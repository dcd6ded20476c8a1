// What works on the current directory while the list still shows another one, or while a delete is about to take it.
#include "tests/browser/PrintFixture.h"

#include "editor/sdk/db.h"
#include "tessaro/browser/QuickPic.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/mapping/dialogs/SchemePrefs.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/reading/DirectoryUsers.h"
#include "tessaro/reading/LoaderThreads.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QMessageBox>
#include <QTest>

#include <algorithm>
#include <memory>
#include <optional>

namespace {

using testing::HasSubstr;

constexpr int kSomeLooks = 400; ///< milliseconds, in which a delete looks three times whether it may go on

class LeavingDirectory : public PrintBrowser {
protected:
    ~LeavingDirectory() override { blockInsert = 0; }

    /// Both directories are read, and the rows are those of the first one.
    bool ShowFirst(BlockDlg& dlg) { return Show(dlg) && other->loaded && dlg.BlockRowCount() == 1; }
    /// Deletes the first directory and selects it anew. It stays until `held` goes.
    bool DeleteAndReturn(BlockDlg& dlg) {
        if (!ShowFirst(dlg))
            return false;
        held.emplace(parts);
        const MessageAnswer answer(QStringLiteral("Yes"));
        dlg.Controls().remove->click();
        dlg.SelectDirectoryRow(0);
        return WaitIdle() && currentDirectory == parts && dlg.BlockRowCount() == 1;
    }
    bool IsListed() const { return std::ranges::find(directories, parts) != directories.end(); }
    bool OutlivesSomeLooks() {
        held.reset();
        QTest::qWait(kSomeLooks);
        return IsListed();
    }
    void ExpectGone() {
        EXPECT_TRUE(WaitFor([] { return loaderThreads.deletes == 0; }));
        EXPECT_FALSE(IsListed());
    }

    Directory* const parts = AddFolder(L"Parts", {"alpha"});
    Directory* const other = AddFolder(L"Other", {"alpha"});
    std::optional<HeldDirectory> held;
};

TEST_F(LeavingDirectory, ASheetIsNotPrintedOfTheRowsOfAnotherOne) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(ShowFirst(dlg));
        dlg.SelectDirectoryRow(1);
        ASSERT_EQ(dlg.Controls().blockList->Rows().Data(0), parts->blocks.front());
        const MessageAnswer answer(QStringLiteral("OK"));
        dlg.Controls().print->click();
        EXPECT_EQ(answer.Text(), QStringLiteral("The directory is not done loading. Please try again later."));
        ASSERT_TRUE(WaitIdle());
        EXPECT_EQ(PrintTo(dlg, folder.path() / "sheet.pdf", 300), QStringLiteral("Done Printing"));
    });
}

TEST_F(LeavingDirectory, ASheetIsNotPrintedOfRowsThatAreBeingFilledAnew) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(ShowFirst(dlg));
        const auto file = folder.path() / "sheet.pdf";
        const QString said = PrintTo(dlg, file, 300, [&] { dlg.InsertBlockRow(L"12345678"); });
        EXPECT_EQ(said, QStringLiteral("The directory is not done loading. Please try again later."));
        EXPECT_FALSE(std::filesystem::exists(file));
    });
}

TEST_F(LeavingDirectory, TheLargePictureOfARowOfAnotherOneDoesNotOpen) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(ShowFirst(dlg));
        dlg.Controls().blockList->SelectRow(0);
        dlg.SelectDirectoryRow(1);
        ASSERT_EQ(dlg.Controls().blockList->Rows().Data(0), parts->blocks.front());
        QTest::keyClick(dlg.Controls().blockList, Qt::Key_Space);
        EXPECT_EQ(dlg.findChild<QWidget*>(QStringLiteral("QuickPic")), nullptr);
    });
}

TEST_F(LeavingDirectory, AnotherDeletesQuestionOutlivesTheRowsThatMoveUp) {
    AddFolder(L"Third", {"beta"});
    const Directory* const fourth = AddFolder(L"Fourth", {"gamma"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(DeleteAndReturn(dlg));
        dlg.SelectDirectoryRow(2);
        Answer([&](QWidget& window) {
            auto* const box = qobject_cast<QMessageBox*>(&window);
            if (box == nullptr)
                return false;
            EXPECT_EQ(box->text(), QStringLiteral("Are you sure you wish to delete 'Third'?"));
            held.reset();
            EXPECT_TRUE(WaitFor([&] { return dlg.DirectoryRowCount() == 3; })) << "the first one is gone";
            box->done(QMessageBox::Yes);
            return true;
        });
        dlg.Controls().remove->click();
        EXPECT_EQ(currentDirectory.load(), other) << "the row before";
        ExpectGone();
        EXPECT_THAT(directories, testing::ElementsAre(other, fourth));
    });
}

TEST_F(LeavingDirectory, ADeleteWaitsForThePrint) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(DeleteAndReturn(dlg));
        const auto file = folder.path() / "sheet.pdf";
        bool outlived = false;
        const QString said = PrintTo(dlg, file, 300, [&] { outlived = OutlivesSomeLooks(); });
        EXPECT_TRUE(outlived);
        EXPECT_EQ(said, QStringLiteral("Done Printing"));
        EXPECT_THAT(tests::readFile(file), HasSubstr("%PDF"));
        ExpectGone();
    });
}

TEST_F(LeavingDirectory, ADeleteWaitsForTheListOfSchemes) {
    SetScheme(L"Walls", new MapScheme);
    parts->schemeName = L"Walls";
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(DeleteAndReturn(dlg));
        bool outlived = false;
        Answer([&](QWidget& window) {
            if (dynamic_cast<SchemePrefs*>(&window) == nullptr || !held)
                return false;
            outlived = OutlivesSomeLooks();
            window.close();
            return true;
        });
        dlg.Controls().schemes->click();
        EXPECT_TRUE(outlived);
        EXPECT_EQ(dlg.Controls().scheme->currentText(), QStringLiteral("Walls"));
        ExpectGone();
    });
}

TEST_F(LeavingDirectory, ADeleteWaitsForTheQuestionOfAPlacement) {
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(drawing->getBlockTable(table, AcDb::kForWrite), 0);
    auto record = std::make_unique<AcDbBlockTableRecord>();
    record->setName(L"alpha");
    ASSERT_EQ(table->add(record.get()), 0);
    record.release()->close();
    table->close();
    blockInsert = 1;
    bool outlived = false;
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(DeleteAndReturn(dlg));
        dlg.Controls().blockList->SelectRow(0);
        Answer([&](QWidget& window) {
            auto* const box = qobject_cast<QMessageBox*>(&window);
            if (box == nullptr || !held)
                return false;
            EXPECT_EQ(box->text(), QStringLiteral("alpha already exists, do you wish to overwrite?"));
            outlived = OutlivesSomeLooks();
            box->done(QMessageBox::No);
            return true;
        });
        dlg.Controls().insert->click();
    });
    EXPECT_TRUE(outlived);
    EXPECT_EQ(placement.pendingBlockName, L"alpha");
    ExpectGone();
}

} // namespace
