// What is left of lines and areas inside of a box.
#include "editor/window/clipping.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace editor;

const QRectF kBox(0, 0, 10, 10);

TEST(Clipping, ALineIsCutAtTheSidesAndKeepsItsDirection) {
    const auto part = clippedLine({-1e9, -1e9}, {1e9, 1e9}, kBox);
    ASSERT_TRUE(part);
    EXPECT_NEAR(part->x1(), 0, 1e-6);
    EXPECT_NEAR(part->y1(), 0, 1e-6);
    EXPECT_NEAR(part->x2(), 10, 1e-6);
    EXPECT_EQ(clippedLine({1, 2}, {3, 4}, kBox), QLineF(1, 2, 3, 4));
    EXPECT_FALSE(clippedLine({-5, 0}, {0, 20}, kBox));
    EXPECT_FALSE(clippedLine({20, 5}, {30, 5}, kBox));
}

TEST(Clipping, AnEndlessLineReachesTheSides) {
    EXPECT_EQ(clippedLine({5, 5}, {6, 5}, kBox, false, true), QLineF(5, 5, 10, 5));
    EXPECT_EQ(clippedLine({5, 5}, {6, 5}, kBox, true, true), QLineF(0, 5, 10, 5));
    EXPECT_EQ(clippedLine({-9, 5}, {-8, 5}, kBox, false, true), QLineF(0, 5, 10, 5));
    EXPECT_FALSE(clippedLine({20, 5}, {21, 5}, kBox, false, true)) << "it leads away";
    EXPECT_FALSE(clippedLine({5, 5}, {5, 5}, kBox, true, true)) << "it has no direction";
}

TEST(Clipping, AnAreaIsCutDownToTheBox) {
    const QPointF large[] = {{-1e9, -1e9}, {1e9, -1e9}, {1e9, 1e9}, {-1e9, 1e9}};
    for (const QPointF& corner : clippedArea(large, kBox)) {
        EXPECT_TRUE(std::abs(corner.x()) < 1e-3 || std::abs(corner.x() - 10) < 1e-3) << corner.x();
        EXPECT_TRUE(std::abs(corner.y()) < 1e-3 || std::abs(corner.y() - 10) < 1e-3) << corner.y();
    }
    EXPECT_EQ(clippedArea(large, kBox).size(), 4u);
    const QPointF small[] = {{1, 1}, {2, 1}, {2, 2}};
    EXPECT_EQ(clippedArea(small, kBox), std::vector<QPointF>(std::begin(small), std::end(small)));
    const QPointF outside[] = {{11, 1}, {12, 1}, {12, 2}};
    EXPECT_TRUE(clippedArea(outside, kBox).empty());
}

} // namespace
