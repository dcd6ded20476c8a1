// Everything can be reached by the keyboard.
#include "tests/browser/BrowserFixture.h"

#include "tessaro/browser/DialogLayout.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>

namespace {

struct Keyboard : Browser {
    Keyboard() {
        AddFolder(L"Furniture", {"chair", "desk", "lamp"});
        AddFolder(L"Electrical", {"switch"});
    }
    /// The control of the dialog that has the focus, itself or by a child.
    static QString Focused(const BlockDlg& dlg) {
        const QWidget* widget = QApplication::focusWidget();
        while (widget != nullptr && widget->parentWidget() != &dlg)
            widget = widget->parentWidget();
        return widget == nullptr ? QString() : widget->objectName();
    }
};

TEST_F(Keyboard, TabGoesThroughAllControlsInTheOrderOfTheTable) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().close->setFocus(Qt::TabFocusReason);
        QStringList order{Focused(dlg)};
        for (int step = 0; step < 60; ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCoreApplication::processEvents();
            if (Focused(dlg) == "Close")
                break;
            order << Focused(dlg);
        }
        QStringList expected;
        for (const auto& [name, rectangle] : ControlPlaces()) {
            const auto* control = dlg.findChild<QWidget*>(QString::fromLatin1(name));
            if (control->isVisible() && control->isEnabled() && (control->focusPolicy() & Qt::TabFocus) != 0)
                expected << control->objectName();
        }
        const auto start = expected.indexOf("Close");
        EXPECT_EQ(order.join(' ').toStdString(),
                  (expected.mid(start) + expected.mid(0, start)).join(' ').toStdString());
        EXPECT_TRUE(order.contains("directoryList") && order.contains("blockList") && order.contains("viewButton"));
    });
}

TEST_F(Keyboard, TabsInQuickFindGoOnAndBack) {
    Run([&](BlockDlg& dlg) {
        dlg.Controls().quickFind->setFocus();
        QTest::keyClick(dlg.Controls().quickFind, Qt::Key_Tab);
        ASSERT_TRUE(WaitFor([&] { return Focused(dlg) == "Help"; }));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_EQ(Focused(dlg), "quickFind");
        QTest::keyClick(dlg.Controls().quickFind, Qt::Key_Backtab, Qt::ShiftModifier);
        ASSERT_TRUE(WaitFor([&] { return Focused(dlg) == "viewButton"; }));
        EXPECT_EQ(dlg.Controls().quickFind->text(), "");
    });
}

TEST_F(Keyboard, AltKeysPressButtonsAndFocusBoxes) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        for (const auto& [key, name] :
             {std::pair{Qt::Key_Q, "quickFind"}, {Qt::Key_A, "scaleCombo"}, {Qt::Key_R, "rotationCombo"}}) {
            dlg.Controls().blockList->setFocus();
            QTest::keyClick(&dlg, key, Qt::AltModifier);
            EXPECT_EQ(Focused(dlg), name);
        }
        QTest::keyClick(&dlg, Qt::Key_T, Qt::AltModifier);
        ASSERT_TRUE(WaitFor([&] { return dlg.Controls().repeat->isChecked(); })) << "a key presses for a moment";
        QTest::keyClick(&dlg, Qt::Key_V, Qt::AltModifier);
        ASSERT_TRUE(WaitFor([&] { return dlg.Controls().viewButton->view == 0; }));
        QTest::keyClick(&dlg, Qt::Key_W, Qt::AltModifier);
        ASSERT_TRUE(WaitFor([&] { return dlg.Controls().directoryList->Rows().Text(1, 0) == L"Furniture"; }));
        dlg.Controls().blockList->SelectRow(0);
        QTest::keyClick(&dlg, Qt::Key_O, Qt::AltModifier);
        ASSERT_TRUE(WaitFor([&] { return dlg.placementCallback != nullptr; }));
        dlg.placementCallback = nullptr;
    });
}

TEST_F(Keyboard, TheArrowsOfTheDirectoryListShowDirectories) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().directoryList->setFocus();
        QTest::keyClick(dlg.Controls().directoryList, Qt::Key_Down);
        EXPECT_EQ(currentDirectory.load()->description, L"Electrical");
        QTest::keyClick(dlg.Controls().directoryList, Qt::Key_Home);
        EXPECT_EQ(currentDirectory.load()->description, L"Furniture");
    });
}

TEST_F(Keyboard, FTwoRenamesTheCurrentDirectory) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        MyList2& list = *dlg.Controls().directoryList;
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_F2);
        auto* const editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(editor, nullptr);
        EXPECT_EQ(editor->accessibleName(), "Name of Furniture");
        EXPECT_EQ(editor->selectedText(), "Furniture");
        QTest::keyClicks(editor, "Chairs");
        QTest::keyClick(editor, Qt::Key_Return);
        ASSERT_TRUE(WaitFor([] { return directories.front()->description == L"Chairs"; }));
        EXPECT_TRUE(closeArmed) << "Enter in the label edit inserts nothing";
        EXPECT_EQ(dlg.placementCallback, nullptr);
        QTest::keyClick(&list, Qt::Key_F2);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QTest::qWait(1);
        EXPECT_TRUE(closeArmed) << "Escape in the label edit closes nothing";
    });
}

TEST_F(Keyboard, TheMenuKeyOpensTheListsMenus) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        for (ListView* list :
             std::initializer_list<ListView*>{dlg.Controls().blockList, dlg.Controls().directoryList}) {
            list->setFocus();
            const MenuAnswer menu;
            QContextMenuEvent event(QContextMenuEvent::Keyboard, list->viewport()->rect().center(),
                                    list->viewport()->mapToGlobal(list->viewport()->rect().center()));
            QCoreApplication::sendEvent(list, &event);
            EXPECT_FALSE(menu.Texts().isEmpty()) << list->objectName().toStdString();
        }
    });
}

TEST_F(Keyboard, DownOnTheViewButtonOpensItsMenu) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().viewButton->setFocus();
        QStringList texts;
        QTimer::singleShot(0, &dlg, [&] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (const QAction* action : menu->actions())
                texts << action->text() + (action->isChecked() ? "*" : "");
            QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        QTest::keyClick(dlg.Controls().viewButton, Qt::Key_Down);
        EXPECT_EQ(texts, QStringList({"Large Icons", "Small Icons", "List", "Report*"}));
        EXPECT_EQ(dlg.Controls().blockList->ViewBits(), 0);
    });
}

TEST_F(Keyboard, TypingInAListGoesToTheRowOfThatName) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->setFocus();
        QTest::keyClicks(dlg.Controls().blockList, "la");
        EXPECT_EQ(dlg.Controls().blockList->Rows().Text(dlg.SelectedBlockRow(), 0), L"lamp");
    });
}

} // namespace
