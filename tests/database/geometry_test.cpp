#include "editor/sdk/ge.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace {

void expectNear(const AcGeVector3d& value, double x, double y, double z) {
    EXPECT_NEAR(value.x, x, 1e-12);
    EXPECT_NEAR(value.y, y, 1e-12);
    EXPECT_NEAR(value.z, z, 1e-12);
}

void expectNear(const AcGePoint3d& value, double x, double y, double z) {
    expectNear(value - AcGePoint3d{}, x, y, z);
}

TEST(Geometry, normalOfAVectorWithinTheToleranceIsTheVectorItself) {
    expectNear(AcGeVector3d{3, 0, 4}.normal(), 0.6, 0, 0.8);
    const AcGeVector3d tiny = AcGeVector3d{1e-11, 0, 0}.normal();
    EXPECT_EQ(tiny.x, 1e-11);
    EXPECT_EQ((AcGeVector3d{1e-11, 0, 0}.normal({1e-10, 1e-12}).x), 1.0);
}

TEST(Geometry, crossProductFollowsTheRightHand) {
    expectNear(AcGeVector3d::kXAxis.crossProduct(AcGeVector3d::kYAxis), 0, 0, 1);
    expectNear(AcGeVector3d::kYAxis.crossProduct(AcGeVector3d::kZAxis), 1, 0, 0);
}

TEST(Geometry, rotationIsCounterClockwiseSeenAgainstTheAxis) {
    AcGePoint3d point{2, 1, 5};
    point.rotateBy(std::numbers::pi / 2, AcGeVector3d{0, 0, 7}, AcGePoint3d{1, 1, 0});
    expectNear(point, 1, 2, 5);
    AcGePoint3d oblique{1, 0, 0};
    oblique.rotateBy(2 * std::numbers::pi / 3, AcGeVector3d{1, 1, 1});
    expectNear(oblique, 0, 1, 0);
}

TEST(Geometry, rotationByNothingOrAboutNothingKeepsThePoint) {
    AcGePoint3d point{2, 1, 5};
    point.rotateBy(0, AcGeVector3d::kZAxis);
    EXPECT_EQ(point.x, 2);
    EXPECT_EQ(point.y, 1);
    EXPECT_EQ(point.z, 5);
    point.rotateBy(1, AcGeVector3d{});
    EXPECT_EQ(point.x, 2);
}

TEST(Geometry, axesOfAPlaneFollowTheArbitraryAxisRule) {
    const AcGePlane flat({}, {0, 0, 3});
    expectNear(flat.normal(), 0, 0, 1);
    expectNear(flat.xAxis(), 1, 0, 0);
    expectNear(flat.yAxis(), 0, 1, 0);

    const AcGePlane below({}, {0, 0, -1});
    expectNear(below.xAxis(), -1, 0, 0);
    expectNear(below.yAxis(), 0, 1, 0);

    const AcGePlane front({}, {0, -1, 0});
    expectNear(front.xAxis(), 1, 0, 0);
    expectNear(front.yAxis(), 0, 0, 1);

    const double half = std::sqrt(0.5);
    const AcGePlane corner({}, {-1, -1, 1});
    expectNear(corner.xAxis(), half, -half, 0);

    // Within 1/64 of the vertical the Y axis leads, beyond it the Z axis.
    const double inside = 0.0156;
    const double outside = 0.0157;
    EXPECT_NEAR(AcGePlane({}, {inside, 0, std::sqrt(1 - inside * inside)}).yAxis().y, 1, 1e-12);
    expectNear(AcGePlane({}, {outside, 0, std::sqrt(1 - outside * outside)}).xAxis(), 0, 1, 0);
}

TEST(Geometry, projectionRunsAlongTheDirection) {
    const AcGePlane plane({0, 0, 1}, {0, 0, 1});
    expectNear(AcGePoint3d{2, 3, 9}.project(plane, {0, 0, 5}), 2, 3, 1);
    expectNear(AcGePoint3d{2, 3, 9}.project(plane, {1, 0, 1}), -6, 3, 1);
}

TEST(Geometry, projectionAlongThePlaneGivesThePointItself) {
    const AcGePlane plane({0, 0, 1}, {0, 0, 1});
    expectNear(AcGePoint3d{2, 3, 9}.project(plane, {1, 0, 0}), 2, 3, 9);
}

TEST(Geometry, coordinatesInAPlaneCountFromItsOrigin) {
    const AcGePlane front({10, 0, 1}, {0, -1, 0});
    const AcGePoint2d flat = AcGePoint3d{12, 0, 5}.convert2d(front);
    EXPECT_NEAR(flat.x, 2, 1e-12);
    EXPECT_NEAR(flat.y, 4, 1e-12);
}

TEST(Geometry, aNotANumberPassesThrough) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    AcGePoint3d point{nan, 0, 0};
    point.rotateBy(1, AcGeVector3d::kZAxis);
    EXPECT_TRUE(std::isnan(point.x));
    EXPECT_TRUE(std::isnan(point.project(AcGePlane({}, {0, 0, 1}), {0, 0, 1}).convert2d(AcGePlane({}, {0, 0, 1})).x));
}

} // namespace
