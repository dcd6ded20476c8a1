// What a user keeps who may not change the catalogue.
#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

namespace {

struct RestrictedUser : Browser {
    RestrictedUser() {
        host.addSupportFolder(folder.path().wstring());
        folder.write("tessaroadmin.ini", "[Users]\nnobody of that name\n");
        furniture = AddFolder(L"Furniture", {"chair", "desk"});
        AddFolder(L"Electrical", {"switch"});
    }
    Directory* furniture;
};

TEST_F(RestrictedUser, KeepsPlacingWithTheOptionsOfTheDialog) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        EXPECT_FALSE(dlg.MayChangeCatalogue());
        dlg.Controls().blockList->SelectRow(1);
        for (const char* name : {"Insert", "Open", "Xref/A", "Print", "Help", "Close", "Explode", "MultipleInsert",
                                 "Repeat", "scaleCombo", "rotationCombo", "quickFind", "viewButton"})
            EXPECT_TRUE(dlg.findChild<QWidget*>(name)->isEnabled()) << name;
        dlg.Controls().repeat->setChecked(true);
        dlg.Controls().insert->click();
        EXPECT_NE(dlg.placementCallback, nullptr);
        dlg.placementCallback = nullptr;
    });
    EXPECT_TRUE(furniture->repeat);
}

TEST_F(RestrictedUser, KeepsPropertiesReloadAndRefresh) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        {
            const MenuAnswer menu;
            emit dlg.Controls().directoryList->customContextMenuRequested({5, 5});
            EXPECT_EQ(menu.Texts(), QStringList({"Properties", "-", "Reload Directory"}));
        }
        dlg.Controls().blockList->SelectRow(0);
        const MenuAnswer menu;
        emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
        EXPECT_TRUE(menu.Texts().contains("Refresh Directory"));
        EXPECT_FALSE(menu.Texts().contains("Edit Description"));
    });
}

TEST_F(RestrictedUser, KeepsQuickFindAndTheRenamingInARow) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().quickFind->setText("desk");
        EXPECT_EQ(dlg.SelectedBlockRow(), 1);
        dlg.Controls().directoryList->setFocus();
        QTest::keyClick(dlg.Controls().directoryList, Qt::Key_F2);
        QTest::keyClicks(QApplication::focusWidget(), "Chairs");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        ASSERT_TRUE(WaitFor([&] { return furniture->description == L"Chairs"; }));
    });
}

TEST_F(RestrictedUser, NeitherASelectionNorAnotherDirectoryEnablesWhatIsDisabled) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        const auto expectDisabled = [&](const char* when) {
            EXPECT_FALSE(dlg.Controls().editDescription->isEnabled()) << when;
            EXPECT_FALSE(dlg.Controls().scheme->isEnabled()) << when;
        };
        static_cast<Block*>(dlg.Controls().blockList->Rows().Data(1))->fileType = 20;
        dlg.Controls().blockList->SelectRow(1);
        expectDisabled("a late file type");
        dlg.SelectDirectoryRow(1);
        expectDisabled("another directory");
        ASSERT_TRUE(WaitIdle());
        expectDisabled("the list was filled");
    });
}

} // namespace
