// The view of a drawing: what the mouse does, what a prompt shows.
#include "editor/window/drawing_view.h"

#include <QImage>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace {

using namespace editor;

struct DrawingViewTest : testing::Test {
    DrawingViewTest() {
        view.resize(400, 300);
        Stroke frame;
        frame.points = {{0, 0, 0}, {100, 0, 0}, {100, 50, 0}, {0, 50, 0}, {0, 0, 0}};
        frame.entity = {nullptr, 5};
        wireframe.strokes = {frame};
        view.setSource([this] {
            ++sourceAsked;
            return wireframe;
        });
        view.show();
        view.zoomExtents();
    }
    QPoint place(double x, double y) {
        const View seen = view.view();
        return {static_cast<int>(std::lround(200 + (x - seen.center.x) * 400 / seen.width)),
                static_cast<int>(std::lround(150 - (y - seen.center.y) * 300 / seen.height))};
    }
    void turnWheel(QPoint at, int delta) {
        QWheelEvent event(at, view.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&view, &event);
    }
    Wireframe wireframe;
    int sourceAsked = 0;
    DrawingView view;
};

TEST_F(DrawingViewTest, ShowsTheWholeDrawingWithAMargin) {
    EXPECT_NEAR(view.view().center.x, 50, 1e-9);
    EXPECT_NEAR(view.view().center.y, 25, 1e-9);
    EXPECT_NEAR(view.view().width, 100 / 0.94, 1e-9);
}

TEST_F(DrawingViewTest, AChangeIsLookedAtOnceWhenItIsPaintedOrAskedFor) {
    view.view();
    const int before = sourceAsked;
    wireframe.strokes.front().points[2] = {100, 150, 0};
    view.outdate();
    view.outdate();
    EXPECT_EQ(sourceAsked, before) << "whoever makes a change doesn't wait for its picture";
    EXPECT_NEAR(view.view().center.y, 75, 1e-9) << "a view that was fitted is fitted anew";
    EXPECT_EQ(sourceAsked, before + 1);
    view.grab();
    EXPECT_EQ(sourceAsked, before + 1);
    view.outdate();
    view.grab();
    EXPECT_EQ(sourceAsked, before + 2);
}

TEST_F(DrawingViewTest, OnlyAViewThatWasZoomedIsAChosenOne) {
    EXPECT_FALSE(view.chosenView());
    turnWheel(place(50, 25), 120);
    const auto zoomed = view.chosenView();
    ASSERT_TRUE(zoomed);
    wireframe.strokes.front().points[2] = {100, 150, 0};
    view.outdate();
    EXPECT_EQ(view.view().center.y, zoomed->center.y) << "a change doesn't move it";
    view.zoomExtents();
    EXPECT_FALSE(view.chosenView());
    EXPECT_NEAR(view.view().center.y, 75, 1e-9);
}

TEST_F(DrawingViewTest, AClickPicksThePointUnderIt) {
    QSignalSpy picked(&view, &DrawingView::pointPicked);
    QTest::mouseClick(&view, Qt::LeftButton, {}, place(100, 50));
    ASSERT_EQ(picked.size(), 1);
    EXPECT_NEAR(picked[0][0].toDouble(), 100, 0.3);
    EXPECT_NEAR(picked[0][1].toDouble(), 50, 0.3);
}

TEST_F(DrawingViewTest, TheRightButtonIsEnter) {
    QSignalSpy entered(&view, &DrawingView::entered);
    QTest::mouseClick(&view, Qt::RightButton);
    EXPECT_EQ(entered.size(), 1);
}

TEST_F(DrawingViewTest, TheWheelZoomsAtThePointer) {
    const QPoint corner = place(100, 50);
    const double before = view.view().width;
    turnWheel(corner, 480);
    EXPECT_LT(view.view().width, before);
    EXPECT_EQ(place(100, 50), corner);
}

TEST_F(DrawingViewTest, TheMiddleButtonDragsAndItsDoubleClickShowsTheWhole) {
    const View before = view.view();
    QTest::mousePress(&view, Qt::MiddleButton, {}, {200, 150});
    QTest::mouseMove(&view, {240, 130});
    QMouseEvent move(QEvent::MouseMove, QPointF(240, 130), view.mapToGlobal(QPointF(240, 130)), Qt::NoButton,
                     Qt::MiddleButton, {});
    QCoreApplication::sendEvent(&view, &move);
    QTest::mouseRelease(&view, Qt::MiddleButton, {}, {240, 130});
    EXPECT_NEAR(view.view().center.x, before.center.x - 40 * before.width / 400, 1e-6);
    EXPECT_NEAR(view.view().center.y, before.center.y - 20 * before.width / 400, 1e-6);
    QTest::mouseDClick(&view, Qt::MiddleButton);
    EXPECT_NEAR(view.view().center.x, before.center.x, 1e-9);
}

TEST_F(DrawingViewTest, AViewIsShownWholeInTheWidgetsShape) {
    view.setView({{10, 20, 0}, 40, 1});
    EXPECT_NEAR(view.view().width, 40, 1e-9);
    EXPECT_NEAR(view.view().height, 30, 1e-9);
    EXPECT_NEAR(view.view().center.x, 10, 1e-9);
}

TEST_F(DrawingViewTest, AViewWithoutAPlaceOrSizeChangesNothing) {
    const View before = view.view();
    view.setView({{std::nan(""), 0, 0}, 1, 1});
    EXPECT_NEAR(view.view().center.x, before.center.x, 1e-9);
}

TEST_F(DrawingViewTest, HighlightedObjectsAreMarkedUntilNoneIs) {
    const QImage plain = view.grab().toImage();
    view.highlight({{nullptr, 6}});
    EXPECT_EQ(view.grab().toImage(), plain) << "no such object is shown";
    view.highlight({{nullptr, 5}});
    EXPECT_NE(view.grab().toImage(), plain);
    view.highlight({});
    EXPECT_EQ(view.grab().toImage(), plain);
}

TEST_F(DrawingViewTest, APromptWithABaseDrawsALineToThePointer) {
    Prompt prompt;
    prompt.kind = Prompt::Kind::Point;
    prompt.base = AcGePoint3d{50, 25, 0};
    view.setPrompt(prompt);
    QTest::mouseMove(&view, {300, 150});
    QMouseEvent move(QEvent::MouseMove, QPointF(300, 150), view.mapToGlobal(QPointF(300, 150)), Qt::NoButton,
                     Qt::NoButton, {});
    QCoreApplication::sendEvent(&view, &move);
    const QImage with = view.grab().toImage();
    view.endPrompt();
    const QImage without = view.grab().toImage();
    EXPECT_NE(with, without);
}

TEST_F(DrawingViewTest, APickedPointIsDrawnToTheSnapThatIsNearWhileAPromptTakesPoints) {
    QSignalSpy picked(&view, &DrawingView::pointPicked);
    double asked = 0;
    view.setSnapper([&](const AcGePoint3d&, double reach) {
        asked = reach;
        return std::optional(Snap{{100, 50, 3}, SnapKind::End});
    });
    QTest::mouseClick(&view, Qt::LeftButton, {}, place(98, 49));
    EXPECT_NEAR(picked.takeFirst()[0].toDouble(), 98, 0.3) << "no prompt takes points";
    Prompt prompt;
    prompt.kind = Prompt::Kind::Selection;
    view.setPrompt(prompt);
    QTest::mouseClick(&view, Qt::LeftButton, {}, place(98, 49));
    EXPECT_NEAR(picked.takeFirst()[0].toDouble(), 98, 0.3) << "objects are picked as they lie";
    for (const auto kind : {Prompt::Kind::Point, Prompt::Kind::Number, Prompt::Kind::Angle}) {
        prompt.kind = kind;
        view.setPrompt(prompt);
        QTest::mouseClick(&view, Qt::LeftButton, {}, place(98, 49));
        const QList<QVariant> point = picked.takeFirst();
        EXPECT_EQ(point[0].toDouble(), 100);
        EXPECT_EQ(point[2].toDouble(), 3);
    }
    EXPECT_NEAR(asked, 10 * view.view().width / 400, 1e-9) << "ten pixels";
    view.endPrompt();
}

TEST_F(DrawingViewTest, EveryKindOfSnapHasAMarkOfItsOwn) {
    Prompt prompt;
    prompt.kind = Prompt::Kind::Point;
    std::vector<QImage> looks;
    for (const SnapKind kind : {SnapKind::End, SnapKind::Middle, SnapKind::Center, SnapKind::Insertion}) {
        view.setSnapper([kind](const AcGePoint3d&, double) { return std::optional(Snap{{50, 25, 0}, kind}); });
        view.setPrompt(prompt);
        QMouseEvent move(QEvent::MouseMove, QPointF(300, 100), view.mapToGlobal(QPointF(300, 100)), Qt::NoButton,
                         Qt::NoButton, {});
        QCoreApplication::sendEvent(&view, &move);
        const QImage look = view.grab().toImage();
        for (const QImage& other : looks)
            EXPECT_NE(look, other);
        looks.push_back(look);
        view.endPrompt();
    }
}

TEST_F(DrawingViewTest, APointedObjectIsFound) {
    EXPECT_EQ(view.objectAt({50, 0.2, 0}).handle, 5u);
    EXPECT_EQ(view.objectAt({50, 25, 0}).handle, 0u);
}

} // namespace
