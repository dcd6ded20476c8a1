#include "tessaro/browser/CTitleTip.h"
#include "tessaro/browser/MyCEdit.h"
#include "tessaro/browser/ViewButton.h"
#include "tessaro/browser/ViewPictures.xpm"

#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QStyle>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

/// Looks at the menu that opens next, after which `choose` picks an entry or, with an empty text, dismisses it.
struct MenuVisit {
    explicit MenuVisit(const QString& entry) {
        QTimer::singleShot(0, [this, entry] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (menu == nullptr)
                return;
            seen = true;
            place = menu->pos();
            size = menu->size();
            QAction* picked = nullptr;
            for (QAction* action : menu->actions()) {
                texts << action->text();
                if (action->isChecked())
                    checked << action->text();
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
    }
    bool seen = false;
    QPoint place;
    QSize size;
    QStringList texts, checked;
};

struct ViewButtonTest : testing::Test {
    ViewButtonTest() : button(&window) {
        button.setGeometry(10, 10, 60, 30);
        button.hasDirectory = [this] { return hasDirectory; };
        button.hasLargeImages = [this] { return largeImages; };
        button.setView = [this](int view) { views.push_back(view); };
        QObject::connect(&button, &QPushButton::clicked, &button, [this] { ++clicks; });
        window.resize(200, 200);
        window.show();
    }
    QPoint Arrow() const { return {button.width() - 4, 10}; }
    QWidget window;
    ViewButton button;
    bool hasDirectory = true, largeImages = true;
    std::vector<int> views;
    int clicks = 0;
};

TEST_F(ViewButtonTest, ThePicturesAreFourOfTwentyTwoByTwentySeeThroughWhereMagenta) {
    for (int view = 0; view < 4; ++view) {
        const QImage picture = button.ViewPicture(view);
        EXPECT_EQ(picture.size(), QSize(22, 20));
        EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0);
        EXPECT_NE(picture, button.ViewPicture((view + 1) % 4));
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 22; ++x)
                EXPECT_NE(picture.pixel(x, y), qRgb(255, 0, 255));
    }
}

TEST_F(ViewButtonTest, StartsInReportViewAndShowsThePictureOfItsView) {
    EXPECT_EQ(button.view, 3);
    for (int view = 0; view < 4; ++view) {
        button.view = view;
        const QImage drawn = button.grab().toImage();
        const QImage picture = button.ViewPicture(view);
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 22; ++x)
                if (qAlpha(picture.pixel(x, y)) == 255) {
                    ASSERT_EQ(drawn.pixel(x + 2, y + 2), picture.pixel(x, y)) << view << ": " << x << "," << y;
                }
    }
}

TEST_F(ViewButtonTest, APressOnTheLeftPartIsAPlainClick) {
    const int scroll = button.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &button);
    EXPECT_FALSE(button.IsOnArrow(button.width() - scroll - 4));
    EXPECT_TRUE(button.IsOnArrow(button.width() - scroll - 3));
    QTest::mouseClick(&button, Qt::LeftButton, {}, {button.width() - scroll - 4, 10});
    EXPECT_EQ(clicks, 1);
    QTest::mouseClick(&button, Qt::RightButton, {}, {5, 10});
    EXPECT_EQ(clicks, 1) << "a right press there does nothing";
    EXPECT_TRUE(views.empty());
}

TEST_F(ViewButtonTest, APressOnTheArrowOpensTheMenuBelowTheButton) {
    button.view = 2;
    const MenuVisit visit(QStringLiteral("Small Icons"));
    QTest::mousePress(&button, Qt::LeftButton, {}, Arrow());
    ASSERT_TRUE(visit.seen);
    EXPECT_EQ(visit.texts, QStringList({"Large Icons", "Small Icons", "List", "Report"}));
    EXPECT_EQ(visit.checked, QStringList{"List"});
    EXPECT_EQ(visit.place, button.mapToGlobal(QPoint(0, button.height())));
    EXPECT_EQ(views, std::vector{1});
    EXPECT_EQ(button.view, 1);
    EXPECT_EQ(clicks, 0);
}

TEST_F(ViewButtonTest, TheRightButtonsMenuTakesClientCoordinatesForTheScreens) {
    window.move(500, 400);
    const MenuVisit visit(QStringLiteral("List"));
    QTest::mousePress(&button, Qt::RightButton, {}, Arrow());
    ASSERT_TRUE(visit.seen);
    EXPECT_EQ(visit.place.y(), button.height());
    EXPECT_LT(visit.place.x(), 100);
    EXPECT_EQ(views, std::vector{2});
}

TEST_F(ViewButtonTest, ADismissedMenuSwitchesToTheLargeView) {
    largeImages = false;
    const MenuVisit visit({});
    QTest::mousePress(&button, Qt::LeftButton, {}, Arrow());
    ASSERT_TRUE(visit.seen);
    EXPECT_EQ(visit.texts, QStringList({"Small Icons", "List", "Report"}));
    EXPECT_EQ(views, std::vector{0});
}

TEST_F(ViewButtonTest, TheArtworkIsOneBitmapOfEightyEightByTwentyInAtMostSixteenColours) {
    const QImage artwork(viewPictures);
    EXPECT_EQ(artwork.size(), QSize(88, 20));
    QSet<QRgb> colours;
    for (int y = 0; y < artwork.height(); ++y)
        for (int x = 0; x < artwork.width(); ++x)
            colours << artwork.pixel(x, y);
    EXPECT_LE(colours.size(), 16);
    EXPECT_TRUE(colours.contains(qRgb(255, 0, 255)));
}

TEST_F(ViewButtonTest, WithoutADirectoryAPressOnTheArrowIsThePlainPress) {
    hasDirectory = false;
    QTest::mouseClick(&button, Qt::LeftButton, {}, Arrow());
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(views.empty());
}

/// A dialog that counts what reaches it.
class KeyDialog : public QDialog {
public:
    void reject() override { ++rejects; }
    void accept() override { ++accepts; }
    int rejects = 0, accepts = 0;
};

struct MyCEditTest : testing::Test {
    MyCEditTest() : edit(&dialog), button(QStringLiteral("Insert"), &dialog) {
        auto* layout = new QVBoxLayout(&dialog);
        layout->addWidget(&edit);
        layout->addWidget(&button);
        button.setDefault(true);
        QObject::connect(&button, &QPushButton::clicked, &dialog, [this] { ++inserts; });
        edit.onChange = [this] { ++changes; };
        edit.onReturn = [this] { ++returns; };
        dialog.show();
        dialog.activateWindow();
        edit.setFocus();
        QTest::qWait(1);
    }
    KeyDialog dialog;
    MyCEdit edit;
    QPushButton button;
    int changes = 0, returns = 0, inserts = 0;
};

TEST_F(MyCEditTest, EachChangeOfTheTextSearches) {
    QTest::keyClicks(&edit, QStringLiteral("ch"));
    EXPECT_EQ(changes, 2);
}

TEST_F(MyCEditTest, ReturnLooksForTheNextMatchAndNeverInserts) {
    QTest::keyClick(&edit, Qt::Key_Return);
    QTest::keyClick(&edit, Qt::Key_Enter);
    EXPECT_EQ(returns, 2);
    EXPECT_EQ(inserts, 0);
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_EQ(inserts, 1);
}

TEST_F(MyCEditTest, EscapeActsOnTheDialog) {
    QTest::keyClick(&edit, Qt::Key_Escape);
    EXPECT_EQ(dialog.rejects, 0) << "it is posted";
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(dialog.rejects, 1);
}

TEST_F(MyCEditTest, TabMovesToTheNextControl) {
    ASSERT_TRUE(edit.hasFocus());
    QTest::keyClick(&edit, Qt::Key_Tab);
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(button.hasFocus());
    EXPECT_EQ(edit.text(), QString());
}

TEST_F(MyCEditTest, ASearchDoesNotRunInsideItself) {
    edit.onChange = [this] {
        ++changes;
        edit.setText(QStringLiteral("other"));
    };
    edit.onReturn = [this] {
        ++returns;
        QTest::keyClick(&edit, Qt::Key_Return);
    };
    edit.setText(QStringLiteral("a"));
    EXPECT_EQ(changes, 1);
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(returns, 1);
    EXPECT_FALSE(quickFindBusy);
    EXPECT_FALSE(quickFindNextBusy);
}

struct TitleTipTest : testing::Test {
    TitleTipTest() {
        window.resize(300, 200);
        window.setFocusPolicy(Qt::StrongFocus);
        window.show();
        window.activateWindow();
        window.setFocus();
        QTest::qWait(1);
    }
    QWidget window;
    CTitleTip tip;
    const QString longText = QString(100, 'x');
};

TEST_F(TitleTipTest, ShowsATextThatDoesNotFitIntoItsCell) {
    ASSERT_TRUE(tip.Create(&window));
    EXPECT_FALSE(tip.IsVisible());
    tip.Show({20, 30, 80, 16}, QStringLiteral("x"));
    EXPECT_FALSE(tip.IsVisible());
    tip.Show({20, 30, 80, 16}, longText, 5);
    ASSERT_TRUE(tip.IsVisible());
    EXPECT_EQ(tip.Window()->pos(), window.mapToGlobal(QPoint(25, 30)));
    EXPECT_EQ(tip.Window()->width(), window.fontMetrics().horizontalAdvance(longText) + 3);
    const QRect shown = tip.Window()->geometry();
    tip.Show({0, 0, 10, 10}, longText);
    EXPECT_EQ(tip.Window()->geometry(), shown) << "a visible tip stays as it is";
}

TEST_F(TitleTipTest, WithoutAFocusNothingShows) {
    tip.Create(&window);
    window.clearFocus();
    tip.Show({20, 30, 80, 16}, longText);
    EXPECT_FALSE(tip.IsVisible());
}

TEST_F(TitleTipTest, StaysWhileTheMouseIsInTheCellAndGoesWhenItLeaves) {
    tip.Create(&window);
    tip.Show({20, 30, 80, 16}, longText);
    QTest::mouseMove(tip.Window(), {10, 5});
    EXPECT_TRUE(tip.IsVisible());
    QTest::mouseMove(tip.Window(), {90, 5});
    EXPECT_FALSE(tip.IsVisible());
}

TEST_F(TitleTipTest, TheKeptRectangleIsTheCellsWithAPixelAround) {
    tip.Create(&window);
    const std::pair<QPoint, bool> places[]{
        // Left and top are in, right and bottom are out: from -6 to 75 and from -1 to 17.
        {{-6, -1}, true}, {{-7, 5}, false}, {{0, -2}, false}, {{74, 16}, true}, {{75, 5}, false}, {{10, 17}, false},
    };
    for (const auto& [place, stays] : places) {
        tip.Show({20, 30, 80, 16}, longText, 5);
        ASSERT_TRUE(tip.IsVisible());
        QTest::mouseMove(tip.Window(), place);
        EXPECT_EQ(tip.IsVisible(), stays) << place.x() << "," << place.y();
        if (tip.IsVisible())
            QTest::mousePress(tip.Window(), Qt::LeftButton, {}, {1, 1});
    }
}

TEST_F(TitleTipTest, ATextIsClippedWhereItWouldPassTheCellLessTheOffset) {
    tip.Create(&window);
    const int text = window.fontMetrics().horizontalAdvance("some text") + 3;
    tip.Show({0, 0, text + 10, 16}, "some text", 5);
    EXPECT_FALSE(tip.IsVisible()) << "its right edge reaches the cell's, less the offset";
    tip.Show({0, 0, text + 9, 16}, "some text", 5);
    EXPECT_TRUE(tip.IsVisible());
}

TEST_F(TitleTipTest, AMoveOutOfTheCellIsPostedToWhatLiesBeneath) {
    struct Beneath : QWidget {
        using QWidget::QWidget;
        void mouseMoveEvent(QMouseEvent* event) override { place = event->position().toPoint(); }
        QPoint place{-1, -1};
    } beneath(&window);
    beneath.setGeometry(0, 60, 300, 100);
    beneath.setMouseTracking(true);
    beneath.show();
    tip.Create(&window);
    tip.Show({20, 30, 80, 16}, longText);
    QTest::mouseMove(tip.Window(), {30, 50});
    EXPECT_FALSE(tip.IsVisible());
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(beneath.place, QPoint(50, 20));
}

TEST_F(TitleTipTest, AllThreeButtonsGoToWhatLiesBeneath) {
    struct Beneath : QWidget {
        using QWidget::QWidget;
        void mousePressEvent(QMouseEvent* event) override { button = event->button(); }
        Qt::MouseButton button = Qt::NoButton;
    } beneath(&window);
    beneath.setGeometry(20, 30, 200, 100);
    beneath.show();
    tip.Create(&window);
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        tip.Show({20, 30, 80, 16}, longText);
        QTest::mousePress(tip.Window(), button, {}, {12, 6});
        EXPECT_FALSE(tip.IsVisible());
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(beneath.button, button);
    }
}

TEST_F(TitleTipTest, OtherInputIsLeftAloneWhileSomethingHasTheFocusAndEndsTheTipOtherwise) {
    tip.Create(&window);
    tip.Show({20, 30, 80, 16}, longText);
    QTest::mouseRelease(tip.Window(), Qt::LeftButton, {}, {12, 6});
    EXPECT_TRUE(tip.IsVisible());
    window.clearFocus();
    QTest::mouseRelease(tip.Window(), Qt::LeftButton, {}, {12, 6});
    EXPECT_FALSE(tip.IsVisible());
}

TEST_F(TitleTipTest, WithoutAWindowNothingShows) {
    tip.Show({20, 30, 80, 16}, longText);
    EXPECT_FALSE(tip.IsVisible());
    EXPECT_EQ(tip.Window(), nullptr);
}

TEST_F(TitleTipTest, AKeyGoesToTheParent) {
    struct Parent : QWidget {
        void keyPressEvent(QKeyEvent* event) override { key = event->key(); }
        int key = 0;
    } parent;
    parent.setFocusPolicy(Qt::StrongFocus);
    parent.show();
    parent.activateWindow();
    parent.setFocus();
    QTest::qWait(1);
    tip.Create(&parent);
    tip.Show({20, 30, 80, 16}, longText);
    ASSERT_TRUE(tip.IsVisible());
    QTest::keyClick(tip.Window(), Qt::Key_Down);
    EXPECT_FALSE(tip.IsVisible());
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(parent.key, Qt::Key_Down);
}

TEST_F(TitleTipTest, APressGoesToWhatLiesBeneath) {
    struct Beneath : QWidget {
        using QWidget::QWidget;
        void mousePressEvent(QMouseEvent* event) override { place = event->position().toPoint(); }
        QPoint place{-1, -1};
    } beneath(&window);
    beneath.setGeometry(20, 30, 200, 100);
    beneath.show();
    tip.Create(&window);
    tip.Show({20, 30, 80, 16}, longText);
    QTest::mousePress(tip.Window(), Qt::LeftButton, {}, {12, 6});
    EXPECT_FALSE(tip.IsVisible());
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(beneath.place, QPoint(12, 6));
}

} // namespace
