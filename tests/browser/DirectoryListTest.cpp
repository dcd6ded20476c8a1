#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"

#include <QApplication>
#include <QHeaderView>
#include <QTest>

namespace {

struct DirectoryList : Browser {
    DirectoryList() {
        furniture = AddFolder(L"Furniture", {"chair", "desk"});
        electrical = AddFolder(L"Electrical", {"switch"});
        mechanical = AddFolder(L"Mechanical", {"bolt"});
    }
    static std::wstring Rows(BlockDlg& dlg) {
        std::wstring names;
        for (int row = 0; row < dlg.DirectoryRowCount(); ++row) {
            names += dlg.Controls().directoryList->Rows().Text(row, 0) + L" ";
            EXPECT_EQ(dlg.DirectoryAt(row)->listIndex, row);
            EXPECT_EQ(*std::next(directories.begin(), row), dlg.DirectoryAt(row));
        }
        return names;
    }
    Directory *furniture, *electrical, *mechanical;
};

TEST_F(DirectoryList, AddAppendsTheFolderAndShowsIt) {
    const auto added = folder.write("more/valve.dwg", "AC1015" + std::string(100, '\0')).parent_path();
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        AnswerFolderPicker(QString::fromStdWString(added.wstring()));
        dlg.Controls().add->click();
        EXPECT_EQ(Rows(dlg), L"Furniture Electrical Mechanical New Directory ");
        EXPECT_EQ(dlg.Controls().directoryList->SelectedRow(), 3);
        EXPECT_EQ(browseFolder, added.wstring());
        EXPECT_EQ(currentDirectory.load()->path, added.wstring());
        ASSERT_TRUE(WaitFor([&] { return dlg.Controls().blockList->Rows().Text(0, 0) == L"valve"; }));
    });
}

TEST_F(DirectoryList, ACancelledPickerAddsNothing) {
    Run([&](BlockDlg& dlg) {
        const std::wstring before = browseFolder;
        AnswerFolderPicker({});
        dlg.Controls().add->click();
        EXPECT_EQ(dlg.DirectoryRowCount(), 3);
        EXPECT_EQ(browseFolder, before);
    });
}

TEST_F(DirectoryList, TheSameFolderCanBeAddedTwice) {
    Run([&](BlockDlg& dlg) {
        for (int time = 0; time < 2; ++time) {
            AnswerFolderPicker(QString::fromStdWString(furniture->path));
            dlg.Controls().add->click();
        }
        EXPECT_EQ(Rows(dlg), L"Furniture Electrical Mechanical New Directory New Directory ");
    });
}

TEST_F(DirectoryList, DeleteAsksAndTakesTheDirectoryOutWithItsCacheFile) {
    const std::wstring cacheFile = electrical->cacheFile;
    const std::wstring path = electrical->path;
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.SelectDirectoryRow(1);
        ASSERT_TRUE(WaitIdle());
        folder.write(std::filesystem::path(electrical->cacheFile).filename(), "cache");
        const MessageAnswer answer(QStringLiteral("Yes"));
        dlg.Controls().remove->click();
        EXPECT_EQ(answer.Text(), "Are you sure you wish to delete 'Electrical'?");
        EXPECT_EQ(currentDirectory.load(), furniture) << "the row before becomes current";
        ASSERT_TRUE(WaitFor([&] { return dlg.DirectoryRowCount() == 2; }));
        EXPECT_EQ(Rows(dlg), L"Furniture Mechanical ");
        ASSERT_TRUE(WaitFor([&] { return !platform::FileExists(cacheFile); }));
    });
    EXPECT_TRUE(platform::FileExists(path + L"/switch.dwg")) << "the folder is not touched";
    EXPECT_EQ(directories.size(), 2U);
}

TEST_F(DirectoryList, DeletingTheFirstRowShowsTheRowAfter) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        const MessageAnswer answer(QStringLiteral("Yes"));
        dlg.Controls().remove->click();
        EXPECT_EQ(currentDirectory.load(), electrical);
        ASSERT_TRUE(WaitFor([&] { return dlg.DirectoryRowCount() == 2; }));
        EXPECT_EQ(Rows(dlg), L"Electrical Mechanical ");
        EXPECT_EQ(dlg.Controls().directoryList->SelectedRow(), 0);
    });
}

TEST_F(DirectoryList, NoKeepsTheDirectory) {
    Run([&](BlockDlg& dlg) {
        const MessageAnswer answer(QStringLiteral("No"));
        dlg.Controls().remove->click();
        EXPECT_FALSE(answer.Text().isEmpty());
        QTest::qWait(50);
        EXPECT_EQ(dlg.DirectoryRowCount(), 3);
        EXPECT_EQ(currentDirectory.load(), furniture);
    });
}

TEST_F(DirectoryList, DeleteWithoutASelectedRowDoesNothing) {
    Run([&](BlockDlg& dlg) {
        dlg.Controls().directoryList->clearSelection();
        dlg.Controls().remove->click();
        EXPECT_EQ(dlg.DirectoryRowCount(), 3);
    });
}

TEST_F(DirectoryList, TheInternalBlocksCannotBeDeletedOrRenamedButMoved) {
    electrical->isInternal = true;
    Run([&](BlockDlg& dlg) {
        dlg.SelectDirectoryRow(1);
        const MessageAnswer answer(QStringLiteral("OK"));
        dlg.Controls().remove->click();
        EXPECT_EQ(answer.Text(), "You may not delete Internal Blocks");
        const ListModel& rows = dlg.Controls().directoryList->Rows();
        EXPECT_FALSE(rows.flags(rows.index(1, 0)) & Qt::ItemIsEditable);
        EXPECT_TRUE(rows.flags(rows.index(0, 0)) & Qt::ItemIsEditable);
        dlg.Controls().moveUp->click();
        EXPECT_EQ(Rows(dlg), L"Electrical Furniture Mechanical ");
    });
}

TEST_F(DirectoryList, DeletingTheOnlyDirectoryLeavesNoneAndAddStartsAfresh) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        for (int left = 3; left > 0; --left) {
            const MessageAnswer answer(QStringLiteral("Yes"));
            dlg.Controls().remove->click();
            ASSERT_TRUE(WaitFor([&] { return dlg.DirectoryRowCount() == left - 1; }));
        }
        EXPECT_EQ(currentDirectory.load(), nullptr);
        EXPECT_EQ(dlg.BlockRowCount(), 0);
        EXPECT_TRUE(directories.empty());
        dlg.Controls().moveUp->click();
        dlg.Controls().insert->click();
        dlg.Controls().remove->click();
        AnswerFolderPicker(QString::fromStdWString((folder.path() / "library0").wstring()));
        dlg.Controls().add->click();
        ASSERT_TRUE(WaitFor([&] { return dlg.BlockRowCount() == 2; }));
    });
}

TEST_F(DirectoryList, MovingExchangesTheNeighboursAndKeepsTheSelection) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.SelectDirectoryRow(1);
        dlg.SetDirectoryCell(0, 2, L"V");
        dlg.Controls().moveUp->click();
        EXPECT_EQ(Rows(dlg), L"Electrical Furniture Mechanical ");
        EXPECT_EQ(dlg.Controls().directoryList->SelectedRow(), 0);
        EXPECT_EQ(currentDirectory.load(), electrical);
        EXPECT_EQ(dlg.Controls().directoryList->Rows().Text(1, 1), L"2");
        EXPECT_EQ(dlg.Controls().directoryList->Rows().Text(1, 2), L"") << "the neighbour's state is gone";
        dlg.Controls().moveUp->click();
        EXPECT_EQ(Rows(dlg), L"Electrical Furniture Mechanical ") << "the first row stays";
        dlg.Controls().moveDown->click();
        dlg.Controls().moveDown->click();
        EXPECT_EQ(Rows(dlg), L"Furniture Mechanical Electrical ");
        dlg.Controls().moveDown->click();
        EXPECT_EQ(Rows(dlg), L"Furniture Mechanical Electrical ") << "the last row stays";
        EXPECT_EQ(dlg.Controls().directoryList->SelectedRow(), 2);
    });
}

TEST_F(DirectoryList, ARowIsRenamedInPlace) {
    Run([&](BlockDlg& dlg) {
        MyList2& list = *dlg.Controls().directoryList;
        list.setFocus();
        list.edit(list.Rows().index(0, 0));
        auto* editor = list.viewport()->findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->setText("Chairs & Co");
        QTest::keyClick(editor, Qt::Key_Return);
        QTest::qWait(1);
        EXPECT_EQ(furniture->description, L"Chairs & Co");
        EXPECT_EQ(list.Rows().Text(0, 0), L"Chairs & Co");
        list.edit(list.Rows().index(1, 0));
        for (auto* open : list.viewport()->findChildren<QLineEdit*>())
            if (open->isVisible()) {
                open->setText("x");
                QTest::keyClick(open, Qt::Key_Escape);
            }
        QTest::qWait(1);
        EXPECT_EQ(electrical->description, L"Electrical") << "a cancelled edit changes nothing";
        EXPECT_TRUE(dlg.isVisible());
        EXPECT_TRUE(closeArmed);
    });
}

TEST_F(DirectoryList, TheMenuActsOnTheCurrentDirectory) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().explode->setChecked(true);
        {
            const MenuAnswer menu;
            emit dlg.Controls().directoryList->customContextMenuRequested({5, 5});
            EXPECT_EQ(menu.Texts(), QStringList({"Properties", "-", "Reload Directory"}));
            EXPECT_TRUE(furniture->explode) << "the state is stored first";
        }
        furniture->loaded = false;
        const MenuAnswer menu;
        emit dlg.Controls().directoryList->customContextMenuRequested({5, 5});
        EXPECT_TRUE(menu.Texts().contains("[Reload Directory]"));
    });
}

TEST_F(DirectoryList, SortingHeadingsDoesNotTouchTheDirectoryList) {
    Run([&](BlockDlg& dlg) {
        QHeaderView* header = dlg.Controls().directoryList->Header();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {10, header->height() / 2});
        EXPECT_EQ(Rows(dlg), L"Furniture Electrical Mechanical ");
    });
}

} // namespace
