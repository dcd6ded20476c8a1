#include "tessaro/browser/preview/Ellipse.h"
#include "tests/preview/Dibs.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace tests;

namespace {

constexpr Rgb kPen{255, 0, 0, 0};
constexpr Rgb kBrush{0, 0, 255, 0};

/// An ellipse of that radius about (radius + 1, radius + 1), with a rim of one pixel around.
std::string ellipseOf(int radius) {
    Picture picture(2 * radius + 2, 2 * radius + 2);
    const int middle = radius + 1;
    Ellipse(picture, middle - radius, middle - radius, middle + radius, middle + radius, kPen, kBrush);
    return drawn(picture);
}

TEST(Ellipse, ofAMarkHasItsPlatformShape) {
    EXPECT_EQ(ellipseOf(3), "........\n"
                            "...RR...\n"
                            "..RBBR..\n"
                            ".RBBBBR.\n"
                            ".RBBBBR.\n"
                            "..RBBR..\n"
                            "...RR...\n"
                            "........\n");
}

TEST(Ellipse, stepsRightAndUpAtOnceOnlyWhereBothAreNear) {
    EXPECT_EQ(ellipseOf(8), "..................\n"
                            "......RRRRRR......\n"
                            ".....RBBBBBBR.....\n"
                            "...RRBBBBBBBBRR...\n"
                            "...RBBBBBBBBBBR...\n"
                            "..RBBBBBBBBBBBBR..\n"
                            ".RBBBBBBBBBBBBBBR.\n"
                            ".RBBBBBBBBBBBBBBR.\n"
                            ".RBBBBBBBBBBBBBBR.\n"
                            ".RBBBBBBBBBBBBBBR.\n"
                            ".RBBBBBBBBBBBBBBR.\n"
                            ".RBBBBBBBBBBBBBBR.\n"
                            "..RBBBBBBBBBBBBR..\n"
                            "...RBBBBBBBBBBR...\n"
                            "...RRBBBBBBBBRR...\n"
                            ".....RBBBBBBR.....\n"
                            "......RRRRRR......\n"
                            "..................\n");
}

TEST(Ellipse, equalsTheReferenceAtEveryRadius) {
    const auto reference = sharedFolder("reference");
    if (reference.empty())
        GTEST_SKIP() << "no shared reference pictures";
    std::istringstream lines(readFile(reference / "platform" / "ellipses.txt"));
    std::string line;
    int compared = 0;
    while (std::getline(lines, line)) {
        int radius = 0;
        if (std::sscanf(line.c_str(), "Ellipse(-%d", &radius) != 1)
            continue;
        std::string expected(static_cast<std::size_t>(2 * radius + 2), '.');
        const std::string rim = expected + '\n';
        expected = rim;
        while (std::getline(lines, line) && !line.empty()) {
            for (char& letter : line)
                letter = letter == '#' ? 'R' : letter == 'o' ? 'B' : '.';
            expected += '.' + line + ".\n";
        }
        EXPECT_EQ(ellipseOf(radius), expected + rim) << "radius " << radius;
        ++compared;
    }
    EXPECT_EQ(compared, 8);
}

TEST(Ellipse, isCutAtThePictureOnly) {
    Picture picture(4, 4);
    Ellipse(picture, -3, -3, 3, 3, kPen, kBrush);
    EXPECT_EQ(drawn(picture), "BBR.\n"
                              "BR..\n"
                              "R...\n"
                              "....\n");
    const Picture before = picture;
    Ellipse(picture, 40, 40, 46, 46, kPen, kBrush);
    EXPECT_EQ(picture, before);
}

TEST(Ellipse, flatAndNarrowOnesStayClosed) {
    Picture flat(10, 4);
    Ellipse(flat, 0, 1, 10, 3, kPen, kBrush);
    EXPECT_EQ(drawn(flat), "..........\n"
                           "RRRRRRRRRR\n"
                           "RRRRRRRRRR\n"
                           "..........\n");
    Picture narrow(4, 6);
    Ellipse(narrow, 1, 0, 2, 6, kPen, kBrush);
    EXPECT_EQ(drawn(narrow), ".R..\n.R..\n.R..\n.R..\n.R..\n.R..\n");
    Picture none(3, 3);
    Ellipse(none, 1, 1, 1, 3, kPen, kBrush);
    Ellipse(none, 2, 2, 1, 1, kPen, kBrush);
    EXPECT_EQ(none, Picture(3, 3));
}

} // namespace
