// The tips of the two lists, as the window shows them.
#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"

#include <QApplication>
#include <QHelpEvent>
#include <QToolTip>

namespace {

struct Tips : Browser {
    Tips() { AddFolder(L"Furniture", {"chair", "desk"}); }

    /// The tip that resting on the row brings up.
    static QString TipOf(ListView& list, int row) {
        QToolTip::hideText();
        EXPECT_TRUE(WaitFor([] { return !QToolTip::isVisible(); })) << "the last tip takes a moment to go";
        const QPoint place = list.RowBounds(row).center();
        QHelpEvent event(QEvent::ToolTip, place, list.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list.viewport(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }
};

TEST_F(Tips, ABlocksTipIsNameAndDescriptionInAllViewsButTheReport) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.SetBlockCell(0, 2, L"a <b>chair</b>");
        for (const int view : {0, 1, 2}) {
            dlg.SetView(view);
            EXPECT_EQ(QString(TipOf(*dlg.Controls().blockList, 0)).replace("&lt;", "<").replace("&gt;", ">"),
                      "chair / a <b>chair</b>")
                << view;
            EXPECT_EQ(TipOf(*dlg.Controls().blockList, 1), "desk");
        }
        dlg.SetView(3);
        dlg.SetBlockCell(0, 2, L"a chair");
        EXPECT_EQ(TipOf(*dlg.Controls().blockList, 0), "");
    });
}

TEST_F(Tips, ADirectorysTipIsDescriptionAndState) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        EXPECT_EQ(TipOf(*dlg.Controls().directoryList, 0), "Furniture");
        dlg.SetDirectoryCell(0, 2, L"D");
        EXPECT_EQ(TipOf(*dlg.Controls().directoryList, 0), "Furniture / D");
    });
}

TEST_F(Tips, ALongDescriptionIsCutToEightyCharactersWithTheNameCountedIn) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.SetView(1);
        dlg.SetBlockCell(0, 2, std::wstring(200, L'x'));
        EXPECT_EQ(TipOf(*dlg.Controls().blockList, 0), "chair / " + QString(72, 'x'));
    });
}

TEST_F(Tips, TheTipStandsBelowTheMiddleOfItsRow) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.SetView(0);
        MyList& list = *dlg.Controls().blockList;
        ASSERT_EQ(TipOf(list, 1), "desk");
        const QWidget* tip = nullptr;
        for (const QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible() && window->inherits("QTipLabel"))
                tip = window;
        ASSERT_NE(tip, nullptr);
        const QRect bounds = list.RowBounds(1);
        const QPoint middle = list.viewport()->mapToGlobal(QPoint(bounds.center().x(), bounds.bottom() + 1));
        EXPECT_NEAR(2 * tip->x() + tip->width(), 2 * middle.x(), 2);
        EXPECT_EQ(tip->y(), middle.y());
        QToolTip::hideText();
    });
}

} // namespace
