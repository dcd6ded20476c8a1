// Tips, the view button and the Quick Find box at their places in the window; the large picture.
#include "tests/browser/module/LoadedModule.h"

#include <QApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QToolTip>

namespace {

/// "Furniture" with a chair and a real drawing "desk" with a comment of 200 characters.
class Controls : public tests::LoadedModule {
protected:
    Controls() {
        furniture = AddFolder("Furniture", {"chair"}, "AC1015", "ShowInsertionPoints=No\n");
        WriteDrawing(furniture / "desk.dwg", std::wstring(200, L'x'));
    }
    void BrowseTwo(const Script& script) {
        Load();
        Browse([&](tests::Window& window) {
            ASSERT_TRUE(window.WaitLoaded(2));
            script(window);
        });
    }
    static QString TipOf(QAbstractItemView& list, int row) {
        QToolTip::hideText();
        EXPECT_TRUE(tests::Window::WaitFor([] { return !QToolTip::isVisible(); }));
        const QPoint place = list.visualRect(list.model()->index(row, 0)).center();
        QHelpEvent event(QEvent::ToolTip, place, list.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list.viewport(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }
    /// Presses the view button's arrow; the menu's texts.
    static QStringList PressArrow(tests::Window& window, const QString& entry) {
        QStringList texts;
        QTimer::singleShot(0, &window.Dialog(), [&texts, entry] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (menu == nullptr)
                return;
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
        auto& button = window.Control("viewButton");
        QTest::mousePress(&button, Qt::LeftButton, {}, {button.width() - 4, button.height() / 2});
        QCoreApplication::processEvents();
        return texts;
    }
    static QWidget* Popup(const tests::Window& window) { return window.Dialog().findChild<QWidget*>("QuickPic"); }
    std::filesystem::path furniture;
};

TEST_F(Controls, ATipStandsInAllViewsButTheReportCutToEightyCharacters) {
    BrowseTwo([](tests::Window& window) {
        EXPECT_EQ(TipOf(window.Blocks(), 1), "") << "report";
        for (int view = 0; view < 3; ++view) {
            window.Press("viewButton");
            EXPECT_EQ(TipOf(window.Blocks(), 0), "chair") << view;
            EXPECT_EQ(TipOf(window.Blocks(), 1), "desk / " + QString(73, 'x')) << view;
        }
        EXPECT_EQ(TipOf(window.Directories(), 0), "Furniture");
        QToolTip::hideText();
    });
}

TEST_F(Controls, TheLeftPartOfTheViewButtonCyclesAndTheArrowOpensTheMenu) {
    BrowseTwo([](tests::Window& window) {
        window.Press("viewButton");
        EXPECT_EQ(PressArrow(window, "List"), QStringList({"Large Icons*", "Small Icons", "List", "Report"}));
        EXPECT_EQ(PressArrow(window, {}), QStringList({"Large Icons", "Small Icons", "List*", "Report"}));
        EXPECT_EQ(PressArrow(window, "Report"), QStringList({"Large Icons*", "Small Icons", "List", "Report"}))
            << "a dismissed menu means large";
    });
}

TEST_F(Controls, WithoutADirectoryThePressOnTheArrowIsThePlainPress) {
    BrowseTwo([](tests::Window& window) {
        const MessageAnswer yes("Yes");
        window.Press("Delete");
        ASSERT_TRUE(window.WaitFor([&] { return window.Rows(window.Directories()) == 0; }));
        EXPECT_TRUE(PressArrow(window, "List").isEmpty());
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    });
}

TEST_F(Controls, InTheQuickFindBoxTabGoesOnAndReturnFindsTheNext) {
    BrowseTwo([](tests::Window& window) {
        window.Dialog().activateWindow();
        window.Type(window.QuickFind(), "e"); // of the name or of the comment
        const int first = window.Selected(window.Blocks());
        ASSERT_GE(first, 0);
        window.QuickFind().setText("*");
        QTest::keyClick(&window.QuickFind(), Qt::Key_Return);
        EXPECT_EQ(window.Selected(window.Blocks()), 1);
        QTest::keyClick(&window.QuickFind(), Qt::Key_Return);
        EXPECT_EQ(window.Selected(window.Blocks()), 0) << "and from the end to the top";
        EXPECT_TRUE(window.Dialog().isVisible());
        QTest::keyClick(&window.QuickFind(), Qt::Key_Tab);
        EXPECT_TRUE(window.WaitFor([&] { return QApplication::focusWidget() == &window.Control("Help"); }));
    });
}

TEST_F(Controls, AltAndAClickOpenTheLargePictureAndAnyKeyClosesIt) {
    BrowseTwo([](tests::Window& window) {
        window.Click(window.Blocks(), 1);
        EXPECT_EQ(Popup(window), nullptr) << "an ordinary click";
        const std::vector<std::function<void(QWidget&)>> ends{
            [](QWidget& popup) { QTest::keyClick(&popup, Qt::Key_X); },
            [](QWidget& popup) { QTest::mousePress(&popup, Qt::RightButton); },
            [](QWidget& popup) { popup.close(); },
        };
        for (const auto& end : ends) {
            window.Click(window.Blocks(), 1, Qt::AltModifier);
            QWidget* const popup = Popup(window);
            ASSERT_NE(popup, nullptr);
            EXPECT_EQ(popup->size(), QSize(260, 190));
            EXPECT_EQ(popup->windowTitle(), "QuickPic");
            end(*popup);
            EXPECT_TRUE(window.WaitFor([&] { return Popup(window) == nullptr; }));
            EXPECT_TRUE(window.Dialog().isVisible());
        }
    });
}

/// What a popup shows: whether it is black all over, and the share of its pixels that are.
double BlackShare(QWidget& popup) {
    const QImage image = popup.grab().toImage();
    int black = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            black += (image.pixel(x, y) & 0xFFFFFF) == 0 ? 1 : 0;
    return static_cast<double>(black) / (image.width() * image.height());
}

TEST_F(Controls, TheLargePictureIsTheDrawingsTheListsOrNone) {
    // A drawing with a preview of two by two pixels, all of the colour 1, which is red.
    AcDbDatabase drawing;
    std::string bitmap(40 + 256 * 4 + 2 * 4, '\0');
    bitmap[0] = 40;
    bitmap[4] = bitmap[8] = 2;
    bitmap[12] = 1;
    bitmap[14] = 8;
    bitmap[40 + 4 + 2] = '\xFF';
    for (const std::size_t pixel : {0, 1, 4, 5})
        bitmap[40 + 256 * 4 + pixel] = 1;
    drawing.setThumbnailBitmap(bitmap);
    ASSERT_EQ(drawing.saveAs((furniture / "lamp.dwg").wstring().c_str()), eOk);
    Load();
    host->setColours({0xFF0000, 0xFFFFFF}); // blue
    Browse([&](tests::Window& window) {
        ASSERT_TRUE(window.WaitLoaded(3));
        const auto open = [&](int row) -> QWidget& {
            window.Click(window.Blocks(), row);
            QTest::keyClick(&window.Blocks(), Qt::Key_Space);
            if (Popup(window) == nullptr)
                throw std::runtime_error("no popup");
            return *Popup(window);
        };
        const auto close = [&] {
            Popup(window)->close();
            ASSERT_TRUE(window.WaitFor([&] { return Popup(window) == nullptr; }));
        };
        EXPECT_EQ(BlackShare(open(0)), 1) << "no picture of its own: the bitmap as it was made";
        close();
        QWidget& painted = open(2);
        EXPECT_EQ(painted.grab().toImage().pixelColor(50, 50), QColor(0, 0, 255)) << "the frame in the background";
        EXPECT_EQ(painted.grab().toImage().pixelColor(129, 94), QColor(Qt::red)) << "the preview in its middle";
        close();
        std::filesystem::remove(furniture / "lamp.dwg");
        QWidget& enlarged = open(2);
        EXPECT_EQ(enlarged.grab().toImage().pixelColor(130, 95), QColor(Qt::red)) << "the list's, enlarged";
        EXPECT_LT(BlackShare(enlarged), 0.1);
        close();
    });
}

} // namespace
