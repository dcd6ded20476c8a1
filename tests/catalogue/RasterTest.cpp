#include "tessaro/catalogue/Raster.h"

#include "tessaro/catalogue/Directory.h"
#include "tests/catalogue/Support.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

using catalogue_tests::DataFile;
using catalogue_tests::ReadBitmap;

namespace {

constexpr Rgb kPen{255, 0, 0, 0}, kBrush{0, 0, 255, 0};

using Rows = std::vector<std::string>;

/// '#' pen, 'o' brush, '.' the rest.
Rows Drawn(const Picture& picture) {
    Rows rows;
    for (int y = 0; y < picture.height; ++y) {
        std::string row;
        for (int x = 0; x < picture.width; ++x) {
            const Rgb colour = PixelAt(picture, x, y);
            row += colour == kPen ? '#' : colour == kBrush ? 'o' : '.';
        }
        rows.push_back(row);
    }
    return rows;
}

Rows DrawnLine(int width, int height, int fromX, int fromY, int toX, int toY) {
    Picture picture(width, height);
    Line(picture, fromX, fromY, toX, toY, kPen);
    return Drawn(picture);
}

} // namespace

TEST(Raster, ARectangleExcludesItsRightAndBottomEdge) {
    Picture picture(6, 5);
    Rectangle(picture, 1, 1, 5, 4, kPen, kBrush);
    EXPECT_EQ(Drawn(picture), (Rows{"......", ".####.", ".#oo#.", ".####.", "......"}));
}

TEST(Raster, ARectangleTakesItsCornersInAnyOrderAndIsNothingWithoutAnArea) {
    Picture picture(4, 4);
    Rectangle(picture, 4, 4, 0, 0, kPen, kBrush);
    EXPECT_EQ(Drawn(picture), (Rows{"####", "#oo#", "#oo#", "####"}));
    Picture empty(2, 2);
    Rectangle(empty, 1, 0, 1, 2, kPen, kBrush);
    EXPECT_EQ(Drawn(empty), (Rows{"..", ".."}));
    Rectangle(empty, 0, 0, 1, 1, kPen, kBrush);
    EXPECT_EQ(Drawn(empty), (Rows{"#.", ".."}));
}

TEST(Raster, ShapesAreCutAtThePicture) {
    Picture picture(3, 3);
    Rectangle(picture, INT_MIN, INT_MIN, INT_MAX, INT_MAX, kPen, kBrush);
    EXPECT_EQ(Drawn(picture), (Rows{"ooo", "ooo", "ooo"}));
    FillRectangle(picture, -5, 1, 2, 100, kPen);
    EXPECT_EQ(Drawn(picture), (Rows{"ooo", "##o", "##o"}));
    SetPixel(picture, 3, 0, kPen);
    SetPixel(picture, -1, -1, kPen);
    SetPixel(picture, 2, 0, kPen);
    EXPECT_EQ(Drawn(picture), (Rows{"oo#", "##o", "##o"}));
    EXPECT_EQ(PixelAt(picture, 3, 0), Rgb{});
}

TEST(Raster, ALineLeavesOutItsLastPixel) {
    EXPECT_EQ(DrawnLine(4, 1, 0, 0, 3, 0), (Rows{"###."}));
    EXPECT_EQ(DrawnLine(4, 1, 3, 0, 0, 0), (Rows{".###"}));
    EXPECT_EQ(DrawnLine(1, 3, 0, 0, 0, 2), (Rows{"#", "#", "."}));
    EXPECT_EQ(DrawnLine(1, 3, 0, 2, 0, 0), (Rows{".", "#", "#"}));
    EXPECT_EQ(DrawnLine(3, 3, 0, 0, 2, 2), (Rows{"#..", ".#.", "..."}));
    EXPECT_EQ(DrawnLine(1, 1, 0, 0, 0, 0), (Rows{"."}));
}

TEST(Raster, HalfwayBetweenTwoPixelsALineTakesTheUpperOrLeftOne) {
    EXPECT_EQ(DrawnLine(4, 3, 0, 0, 4, 2), (Rows{"##..", "..##", "...."}));
    EXPECT_EQ(DrawnLine(5, 3, 4, 0, 0, 2), (Rows{"...##", ".##..", "....."}));
    EXPECT_EQ(DrawnLine(3, 4, 0, 0, 2, 4), (Rows{"#..", "#..", ".#.", ".#."}));
    EXPECT_EQ(DrawnLine(4, 3, 0, 2, 4, 0), (Rows{"...#", ".##.", "#..."}));
}

TEST(Raster, LongLinesAreCutWithoutBeingWalked) {
    EXPECT_EQ(DrawnLine(3, 1, INT_MIN, 0, INT_MAX, 0), (Rows{"###"}));
    EXPECT_EQ(DrawnLine(3, 1, INT_MAX, 0, INT_MIN, 0), (Rows{"###"}));
    EXPECT_EQ(DrawnLine(3, 3, INT_MIN, INT_MIN, INT_MAX, INT_MAX), (Rows{"#..", ".#.", "..#"}));
    EXPECT_EQ(DrawnLine(2, 2, 5, 5, INT_MAX, 9), (Rows{"..", ".."}));
    EXPECT_EQ(DrawnLine(1, 3, 0, -5, 0, 2), (Rows{"#", "#", "."}));
}

TEST(Raster, ThePlaceholderIsABoxWithBothDiagonals) {
    EXPECT_EQ(PlaceholderPicture(66, 49), ReadBitmap(DataFile("placeholder-66x49.bmp")));
    const auto reference = tests::sharedFolder("reference");
    if (reference.empty())
        GTEST_SKIP() << "the large reference picture is absent";
    EXPECT_EQ(PlaceholderPicture(130, 96), ReadBitmap(reference / "platform/placeholder-130x96.bmp"));
}
