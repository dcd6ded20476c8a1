#include "tests/preview/Dibs.h"

#include <gtest/gtest.h>

using namespace tests;

namespace {

constexpr std::uint32_t kRed = 0x0000ff;

/// Columns of the large picture that hold red, as "first-last"; "none" without any.
std::string redColumns(const MarkPoints& points) {
    SetBackground(0x302821);
    PreviewBytes preview = makePlainDib(130, 96, 0x00ff00);
    const Thumbnails pictures = DrawThumbnails(true, 16, preview, false, points);
    int first = -1, last = -1;
    for (int x = 0; x < pictures.large->width; ++x) {
        for (int y = 0; y < pictures.large->height; ++y) {
            if (wordAt(*pictures.large, x, y) != kRed)
                continue;
            first = first < 0 ? x : first;
            last = x;
        }
    }
    return first < 0 ? "none" : std::to_string(first) + "-" + std::to_string(last);
}

TEST(MarkAtTheEdge, ofAMarkWhoseMiddleLiesOutsideThePictureItsPartInsideIsDrawn) {
    EXPECT_EQ(redColumns({10, 48}), "5-15") << "wholly inside";
    EXPECT_EQ(redColumns({-2, 48}), "0-3");
    EXPECT_EQ(redColumns({133, 48}), "128-129");
    EXPECT_EQ(redColumns({-6, 48}), "none");
}

} // namespace
