#include "tessaro/reading/Bridge.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <stdexcept>

namespace {

/// The numbers of one record by their names; the rest as in a view from above that fills the picture.
struct Record {
    double x = 0, y = 0, z = 0;
    double left = 0, bottom = 0, right = 1, top = 1;
    double targetX = 0, targetY = 0, targetZ = 0;
    double directionX = 0, directionY = 0, directionZ = 1;
    double width = 20, height = 10;
    double twist = 0;
    double centerX = 0, centerY = 0;

    std::vector<double> numbers() const {
        return {x,       y,          z,          left,       bottom, right,  top,   targetX, targetY,
                targetZ, directionX, directionY, directionZ, width,  height, twist, centerX, centerY};
    }
};

/// The position in a picture of 200 by 100; two numbers or none.
MarkPoints project(const Record& record) {
    MarkPoints points;
    ProjectInsertionPoint(record.numbers(), 200, 100, points);
    return points;
}

void expectAt(const Record& record, double x, double y) {
    const MarkPoints points = project(record);
    ASSERT_EQ(points.size(), 2U);
    EXPECT_NEAR(points[0], x, 1e-9);
    EXPECT_NEAR(points[1], y, 1e-9);
}

TEST(Projection, theCentreOfTheViewIsTheMiddleOfThePicture) {
    expectAt({}, 100, 50);
    expectAt({.x = 7, .y = 8, .centerX = 7, .centerY = 8}, 100, 50);
}

TEST(Projection, heightsCountFromTheBottom) {
    expectAt({.x = 5, .y = 2.5}, 150, 75);
    expectAt({.x = -5, .y = -2.5}, 50, 25);
}

TEST(Projection, aPointOnTheEdgeOfTheViewIsKept) {
    expectAt({.x = -10, .y = -5}, 0, 0);
    expectAt({.x = 10, .y = 5}, 200, 100);
}

TEST(Projection, aPointBeyondAnEdgeIsLeftOut) {
    EXPECT_TRUE(project({.x = -10.001}).empty());
    EXPECT_TRUE(project({.x = 10.001}).empty());
    EXPECT_TRUE(project({.y = -5.001}).empty());
    EXPECT_TRUE(project({.y = 5.001}).empty());
}

TEST(Projection, theViewMayFillAPartOfThePicture) {
    expectAt({.left = 0.25, .bottom = 0.1, .right = 0.75, .top = 0.5}, 100, 30);
    expectAt({.x = 10, .y = 5, .left = 0.25, .bottom = 0.1, .right = 0.75, .top = 0.5}, 150, 50);
}

TEST(Projection, theHeightOfThePointDoesNotCountFromAbove) {
    expectAt({.x = 5, .z = 1234}, 150, 50);
}

TEST(Projection, theTwistTurnsAboutTheTarget) {
    expectAt({.x = 5, .twist = std::numbers::pi / 2}, 100, 100);
    expectAt({.x = 2, .y = 1, .twist = std::numbers::pi}, 80, 40);
}

TEST(Projection, aTargetShiftsThePlaneAwayFromTheNegatedPoint) {
    // The plane's origin is target plus direction, and the point is negated about the drawing's origin, so the target
    // counts against the point's own direction.
    expectAt({.x = 2, .y = 1, .targetX = 1, .targetY = 2}, 130, 80);
}

TEST(Projection, lengthOfTheDirectionDoesNotCount) {
    expectAt({.x = 5, .y = 2.5, .directionZ = 250}, 150, 75);
}

TEST(Projection, aViewFromTheFrontShowsXAndZ) {
    expectAt({.x = 5, .y = 77, .z = 2.5, .directionY = -1, .directionZ = 0}, 150, 75);
}

TEST(Projection, anObliqueViewFollowsTheArbitraryAxes) {
    // Seen from (-1, -1, 1) the x axis of the plane is (1, -1, 0) / sqrt 2, its y axis (1, 1, 2) / sqrt 6.
    const double x = (3.0 - 1.0) / std::numbers::sqrt2;
    const double y = (3.0 + 1.0 + 2 * 0.5) / std::sqrt(6.0);
    expectAt({.x = 3, .y = 1, .z = 0.5, .directionX = -1, .directionY = -1}, 100 + 10 * x, 50 + 10 * y);
}

TEST(Projection, aNotANumberPassesTheTests) {
    const MarkPoints points = project({.width = 0});
    ASSERT_EQ(points.size(), 2U) << "0 divided by 0";
    EXPECT_TRUE(std::isnan(points[0]));
    EXPECT_EQ(points[1], 50);
    EXPECT_TRUE(project({.x = 1, .width = 0}).empty()) << "1 divided by 0 lies outside";
    EXPECT_EQ(project({.x = std::numeric_limits<double>::quiet_NaN()}).size(), 2U);
}

TEST(Projection, aViewWithoutDirectionRaisesNothing) {
    MarkPoints points;
    ProjectInsertionPoint(Record{.directionZ = 0}.numbers(), 200, 100, points);
    EXPECT_EQ(points.size(), 2U);
}

TEST(Projection, fewerThan18NumbersRaise) {
    MarkPoints points;
    EXPECT_THROW(ProjectInsertionPoint(std::vector<double>(17), 1, 1, points), std::out_of_range);
    EXPECT_THROW(ProjectInsertionPoint({}, 1, 1, points), std::out_of_range);
}

} // namespace
