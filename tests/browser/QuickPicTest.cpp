#include "tests/browser/BrowserFixture.h"

#include "tessaro/browser/QuickPic.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"

#include <QApplication>
#include <QImage>
#include <QPointer>
#include <QTest>

namespace {

class QuickPicTest : public Browser {
protected:
    static QPointer<QuickPic> Popup(BlockDlg& dlg) {
        return dynamic_cast<QuickPic*>(dlg.findChild<QWidget*>(QStringLiteral("QuickPic")));
    }
    /// Shows the only directory and selects its first block.
    static bool Show(BlockDlg& dlg) {
        dlg.SelectDirectoryRow(0);
        if (!WaitFor([] { return currentDirectory != nullptr && currentDirectory.load()->loaded; }) || !WaitIdle())
            return false;
        dlg.Controls().blockList->SelectRow(0);
        return dlg.SelectedBlockRow() == 0;
    }
    static void AltClick(BlockDlg& dlg, Qt::KeyboardModifiers modifiers = Qt::AltModifier) {
        MyList& list = *dlg.Controls().blockList;
        QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, list.RowBounds(0).topLeft() + QPoint(20, 10));
    }
    static QuickPic* Open(BlockDlg& dlg) {
        QTest::keyClick(dlg.Controls().blockList, Qt::Key_Space);
        return Popup(dlg);
    }
};

TEST_F(QuickPicTest, AltAndAClickOpenItAndAPlainClickDoesNot) {
    AddFolder(L"Parts", {"alpha"});
    Run([](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        AltClick(dlg, Qt::NoModifier);
        EXPECT_EQ(Popup(dlg), nullptr);
        AltClick(dlg);
        ASSERT_NE(Popup(dlg), nullptr);
        EXPECT_TRUE(Popup(dlg)->isVisible());
    });
}

TEST_F(QuickPicTest, TheSpaceBarOpensItToo) {
    AddFolder(L"Parts", {"alpha"});
    Run([](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        EXPECT_NE(Open(dlg), nullptr);
    });
}

TEST_F(QuickPicTest, WithoutASelectionNothingOpens) {
    AddFolder(L"Parts", {"alpha"});
    Run([](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        dlg.Controls().blockList->clearSelection();
        EXPECT_EQ(Open(dlg), nullptr);
    });
}

TEST_F(QuickPicTest, StandsInTheMiddleOfTheDialogAboveAllAndHoldsTheMouse) {
    AddFolder(L"Parts", {"alpha"});
    Run([](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        const QuickPic* const popup = Open(dlg);
        ASSERT_NE(popup, nullptr);
        EXPECT_EQ(popup->size(), QSize(260, 190));
        EXPECT_EQ(popup->windowTitle(), QStringLiteral("QuickPic"));
        EXPECT_TRUE(popup->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        EXPECT_EQ(popup->windowFlags() & Qt::WindowType_Mask, Qt::Tool);
        EXPECT_EQ(QWidget::mouseGrabber(), popup);
        const QRect middle = dlg.frameGeometry();
        const int border = popup->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, popup);
        const int caption = popup->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, popup);
        EXPECT_EQ(popup->x(), middle.left() + middle.width() / 2 - (260 + 2 * border) / 2);
        EXPECT_EQ(popup->y(), middle.top() + middle.height() / 2 - (190 + caption + 2 * border) / 2);
    });
}

TEST_F(QuickPicTest, AnyMouseButtonAnyKeyAndItsCrossCloseIt) {
    AddFolder(L"Parts", {"alpha"});
    Run([](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        const std::vector<std::function<void(QuickPic&)>> ways = {
            [](QuickPic& popup) { QTest::mousePress(&popup, Qt::LeftButton); },
            [](QuickPic& popup) { QTest::mousePress(&popup, Qt::MiddleButton); },
            [](QuickPic& popup) { QTest::mousePress(&popup, Qt::RightButton); },
            [](QuickPic& popup) { QTest::keyPress(&popup, Qt::Key_X); },
            [](QuickPic& popup) { QTest::keyPress(&popup, Qt::Key_Space); },
            [](QuickPic& popup) { QTest::keyPress(&popup, Qt::Key_Escape); },
            [](QuickPic& popup) { popup.close(); },
        };
        for (const auto& way : ways) {
            const QPointer<QuickPic> popup = Open(dlg);
            ASSERT_NE(popup, nullptr);
            way(*popup);
            ASSERT_NE(popup, nullptr) << "its owner frees it, on the command";
            EXPECT_FALSE(popup->isVisible());
            EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
            EXPECT_TRUE(WaitFor([&] { return popup == nullptr; }));
            EXPECT_TRUE(dlg.isVisible());
        }
    });
}

TEST_F(QuickPicTest, AKeyWithAltOrOneThatRepeatsDoesNotCloseIt) {
    AddFolder(L"Parts", {"alpha"});
    Run([](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        QuickPic* const popup = Open(dlg);
        ASSERT_NE(popup, nullptr);
        QTest::keyPress(popup, Qt::Key_Alt, Qt::AltModifier);
        QTest::keyPress(popup, Qt::Key_X, Qt::AltModifier);
        QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
        QApplication::sendEvent(popup, &repeated);
        EXPECT_TRUE(popup->isVisible());
    });
}

TEST_F(QuickPicTest, OfABlockWithoutAPictureItsBitmapStaysUnpainted) {
    AddFolder(L"Parts", {"alpha"});
    Run([](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        ASSERT_EQ(currentDirectory.load()->blocks.front()->imageIndex, 0);
        const QuickPic* const popup = Open(dlg);
        ASSERT_NE(popup, nullptr);
        EXPECT_EQ(popup->Shown(), Picture(260, 190));
    });
}

TEST_F(QuickPicTest, OfADrawingThatIsGoneTheListsPictureIsShownTwiceAsLarge) {
    Directory* const directory = AddFolder(L"Parts", {"alpha"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        Picture red(130, 96);
        for (std::size_t i = 0; i < red.pixels.size(); i += 3)
            red.pixels[i] = 255;
        Block& block = *directory->blocks.front();
        block.imageIndex = directory->LargeForWrite().Add(red);
        std::filesystem::remove(std::filesystem::path(directory->path) / "alpha.dwg");
        QuickPic* const popup = Open(dlg);
        ASSERT_NE(popup, nullptr);
        const Picture& shown = popup->Shown();
        const auto at = [&](std::size_t x, std::size_t y) { return shown.pixels[(y * 260 + x) * 3]; };
        EXPECT_EQ(at(0, 0), 255);
        EXPECT_EQ(at(257, 187), 255);
        EXPECT_EQ(at(259, 95), 0) << "the column past the picture is the bitmap's own";
        EXPECT_EQ(at(130, 189), 0) << "so is the row";
        EXPECT_EQ(popup->grab().toImage().pixelColor(100, 100), QColor(255, 0, 0));
    });
}

TEST_F(QuickPicTest, GoesWithTheDialog) {
    AddFolder(L"Parts", {"alpha"});
    QPointer<QuickPic> popup;
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        popup = Open(dlg);
        ASSERT_NE(popup, nullptr);
    });
    EXPECT_EQ(popup, nullptr);
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
}

} // namespace
