// The view button at its place in the dialog.
#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>

namespace {

struct ViewButtonInDialog : Browser {
    ViewButtonInDialog() { furniture = AddFolder(L"Furniture", {"chair", "desk", "lamp"}); }

    /// Presses the arrow with that button, and takes the entry from the menu; dismisses it for an empty one.
    static QStringList PressArrow(BlockDlg& dlg, Qt::MouseButton with, const QString& entry) {
        QStringList texts;
        QTimer::singleShot(0, &dlg, [&texts, entry] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            QAction* picked = nullptr;
            for (QAction* action : menu->actions()) {
                texts << action->text() + (action->isChecked() ? "*" : "");
                if (action->text() == entry)
                    picked = action;
            }
            if (picked == nullptr) {
                menu->close();
                return;
            }
            menu->setActiveAction(picked);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        ViewButton& button = *dlg.Controls().viewButton;
        QTest::mousePress(&button, with, {}, {button.width() - 4, button.height() / 2});
        return texts;
    }
    Directory* furniture;
};

TEST_F(ViewButtonInDialog, TheArrowsMenuSwitchesTheView) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        EXPECT_EQ(PressArrow(dlg, Qt::LeftButton, "Small Icons"),
                  QStringList({"Large Icons", "Small Icons", "List", "Report*"}));
        EXPECT_EQ(dlg.Controls().blockList->ViewBits(), 1);
        EXPECT_EQ(dlg.Controls().viewButton->view, 1);
        EXPECT_EQ(PressArrow(dlg, Qt::RightButton, "List"),
                  QStringList({"Large Icons", "Small Icons*", "List", "Report"}));
        EXPECT_EQ(dlg.Controls().blockList->ViewBits(), 2);
    });
    EXPECT_EQ(furniture->viewMode, 2) << "kept for the next opening";
}

TEST_F(ViewButtonInDialog, ADismissedMenuMeansLargeAlsoWithoutLargePictures) {
    furniture->useLargeImages = false;
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        EXPECT_EQ(PressArrow(dlg, Qt::LeftButton, {}), QStringList({"Small Icons", "List", "Report*"}));
        EXPECT_EQ(dlg.Controls().blockList->ViewBits(), 0);
        EXPECT_EQ(dlg.Controls().viewButton->view, 0);
    });
}

TEST_F(ViewButtonInDialog, WithoutADirectoryThePressOnTheArrowDoesNothing) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        currentDirectory = nullptr;
        ViewButton& button = *dlg.Controls().viewButton;
        QTest::mouseClick(&button, Qt::LeftButton, {}, {button.width() - 4, 5});
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        EXPECT_EQ(button.view, 3);
        currentDirectory = furniture;
    });
}

} // namespace
