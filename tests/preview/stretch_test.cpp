#include "tessaro/browser/preview/Stretch.h"
#include "tests/preview/Dibs.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tests;

namespace {

/// The platform's rule as it is told, step by step: for each source pixel its destination pixel.
std::vector<std::int64_t> walkShrinking(std::int64_t s, std::int64_t d) {
    std::vector<std::int64_t> to;
    std::int64_t e = 3 * d - 2 * s;
    std::int64_t at = 0;
    for (std::int64_t i = 0; i < s; ++i) {
        to.push_back(at);
        if (e > 0) {
            ++at;
            e += 2 * d - 2 * s;
        } else {
            e += 2 * d;
        }
    }
    return to;
}

/// For each destination pixel its source pixel.
std::vector<std::int64_t> walkGrowing(std::int64_t s, std::int64_t d) {
    std::vector<std::int64_t> from;
    std::int64_t e = 3 * s - 2 * d;
    std::int64_t at = 0;
    for (std::int64_t i = 0; i < d; ++i) {
        from.push_back(at);
        if (e > 0) {
            ++at;
            e += 2 * s - 2 * d;
        } else {
            e += 2 * s;
        }
    }
    return from;
}

TEST(SourceRun, shrinkingEqualsTheStepByStepRule) {
    for (std::int64_t s = 1; s <= 70; ++s) {
        for (std::int64_t d = 1; d <= s; ++d) {
            const auto to = walkShrinking(s, d);
            for (std::int64_t k = 0; k < d; ++k) {
                const PixelRun run = SourceRun(k, s, d);
                for (std::int64_t i = 0; i < s; ++i)
                    ASSERT_EQ(i >= run.first && i < run.end, to[static_cast<std::size_t>(i)] == k)
                        << s << " to " << d << ", source " << i << ", destination " << k;
            }
        }
    }
}

TEST(SourceRun, growingEqualsTheStepByStepRule) {
    for (std::int64_t s = 1; s <= 70; ++s) {
        for (std::int64_t d = s; d <= 140; ++d) {
            const auto from = walkGrowing(s, d);
            for (std::int64_t k = 0; k < d; ++k) {
                const PixelRun run = SourceRun(k, s, d);
                ASSERT_EQ(run.first, from[static_cast<std::size_t>(k)]) << s << " to " << d << ", destination " << k;
                ASSERT_EQ(run.end, run.first + 1);
            }
        }
    }
}

TEST(SourceRun, coversEveryPixelOfAHugeLength) {
    const std::int64_t s = 2147483647;
    EXPECT_EQ(SourceRun(0, s, 130).first, 0);
    for (std::int64_t k = 1; k < 130; ++k)
        ASSERT_EQ(SourceRun(k, s, 130).first, SourceRun(k - 1, s, 130).end);
    EXPECT_EQ(SourceRun(129, s, 130).end, s);
}

Picture stretched(const DibText& text, int width, int height, StretchMode mode) {
    const PreviewBytes preview = makeDib(text);
    Picture picture(width, height);
    StretchDib(picture, {0, 0, width, height}, preview, ReadDibHeader(preview).PixelOffset(),
               {0, 0, text.width, text.height}, mode);
    return picture;
}

TEST(Stretch, rowsRunFromTheBottomAndEqualLengthsCopy) {
    DibText text;
    text.width = 3;
    text.height = 2;
    text.colours = {0x000000, 0xffffff, 0x0000ff, 0x00ff00};
    text.rows = {{0, 1, 2}, {3, 0, 1}};
    EXPECT_EQ(drawn(stretched(text, 3, 2, StretchMode::BlackOnWhite)), ".#R\nG.#\n");
}

TEST(Stretch, colourTablesOfOneAndFourBits) {
    DibText text;
    text.bits = 1;
    text.width = 10;
    text.height = 1;
    text.colours = {0x0000ff, 0xffffff};
    text.rows = {{1, 0, 1, 1, 0, 0, 0, 1, 1, 0}};
    EXPECT_EQ(drawn(stretched(text, 10, 1, StretchMode::BlackOnWhite)), "#R##RRR##R\n");
    text.bits = 4;
    text.width = 3;
    text.colours = {0x000000, 0x0000ff, 0x00ff00, 0xff0000};
    text.rows = {{3, 2, 1}};
    EXPECT_EQ(drawn(stretched(text, 3, 1, StretchMode::BlackOnWhite)), "BGR\n");
}

TEST(Stretch, anIndexPastTheColourTableIsBlack) {
    DibText text;
    text.width = 2;
    text.height = 1;
    text.colours = {0xffffff, 0xffffff};
    text.rows = {{1, 2}};
    EXPECT_EQ(drawn(stretched(text, 2, 1, StretchMode::BlackOnWhite)), "#.\n");
}

TEST(Stretch, aCountOfNoColoursIsAFullTable) {
    DibText text;
    text.width = 1;
    text.height = 1;
    text.coloursUsed = 0;
    text.colours.assign(256, 0x00ff00);
    text.rows = {{200}};
    const PreviewBytes preview = makeDib(text);
    Picture picture(1, 1);
    StretchDib(picture, {0, 0, 1, 1}, preview, 40 + 1024, {0, 0, 1, 1}, StretchMode::BlackOnWhite);
    EXPECT_EQ(drawn(picture), "G\n");
}

TEST(Stretch, trueColoursOf16And24And32Bits) {
    DibText text;
    text.width = 3;
    text.height = 1;
    text.bits = 16;
    text.rows = {{0x7c00, 0x03e0, 0x001f}};
    EXPECT_EQ(drawn(stretched(text, 3, 1, StretchMode::BlackOnWhite)), "RGB\n");
    text.rows = {{0x0421, 0x7fff, 0xffff}};
    const Picture dark = stretched(text, 3, 1, StretchMode::BlackOnWhite);
    EXPECT_EQ(wordAt(dark, 0, 0), 0x080808U) << "five bits become eight";
    EXPECT_EQ(wordAt(dark, 1, 0), 0xffffffU);
    EXPECT_EQ(wordAt(dark, 2, 0), 0xffffffU) << "the top bit counts nothing";

    text.bits = 24;
    text.rows = {{0xff0000, 0x00ff00, 0x0000ff}};
    EXPECT_EQ(drawn(stretched(text, 3, 1, StretchMode::BlackOnWhite)), "RGB\n");
    text.bits = 32;
    text.rows = {{0x12ff0000, 0x3400ff00, 0x560000ff}};
    EXPECT_EQ(drawn(stretched(text, 3, 1, StretchMode::BlackOnWhite)), "RGB\n");
}

TEST(Stretch, colourMasksOf16And32Bits) {
    DibText text;
    text.compression = 3;
    text.width = 3;
    text.height = 1;
    text.bits = 16;
    text.masks = {0xf800, 0x07e0, 0x001f};
    text.rows = {{0xf800, 0x07e0, 0x001f}};
    PreviewBytes preview = makeDib(text);
    Picture picture(3, 1);
    StretchDib(picture, {0, 0, 3, 1}, preview, 52, {0, 0, 3, 1}, StretchMode::BlackOnWhite);
    EXPECT_EQ(drawn(picture), "RGB\n");

    text.bits = 32;
    text.masks = {0x000003ff, 0x000ffc00, 0x3ff00000};
    text.rows = {{0x000003ff, 0x000ffc00, 0x3ff00000}};
    preview = makeDib(text);
    StretchDib(picture, {0, 0, 3, 1}, preview, 52, {0, 0, 3, 1}, StretchMode::BlackOnWhite);
    EXPECT_EQ(drawn(picture), "RGB\n") << "ten bits become eight";
}

TEST(Stretch, pixelsThatMeetAreCombinedByAndOrOr) {
    DibText text;
    text.width = 4;
    text.height = 1;
    text.colours = {0x000000, 0xffffff, 0x0000ff, 0x00ff00};
    text.rows = {{1, 0, 2, 3}};
    EXPECT_EQ(drawn(stretched(text, 2, 1, StretchMode::BlackOnWhite)), "..\n");
    const Picture either = stretched(text, 2, 1, StretchMode::WhiteOnBlack);
    EXPECT_EQ(wordAt(either, 0, 0), 0xffffffU);
    EXPECT_EQ(wordAt(either, 1, 0), 0x00ffffU);
}

TEST(Stretch, bytesPastTheEndCountAsZero) {
    DibText text;
    text.width = 4;
    text.height = 3;
    text.colours = {0x0000ff, 0xffffff};
    text.rows = {{1, 1, 1, 1}, {1, 1, 1, 1}, {1, 1, 1, 1}};
    PreviewBytes preview = makeDib(text);
    preview.resize(preview.size() - 6); // The top row and half of the middle one.
    Picture picture(4, 3);
    StretchDib(picture, {0, 0, 4, 3}, preview, 48, {0, 0, 4, 3}, StretchMode::BlackOnWhite);
    EXPECT_EQ(drawn(picture), "RRRR\n##RR\n####\n");

    Picture small(1, 1);
    StretchDib(small, {0, 0, 1, 1}, preview, 48, {0, 0, 4, 3}, StretchMode::BlackOnWhite);
    EXPECT_EQ(drawn(small), "R\n") << "what is missing meets what is there";

    Picture nothing(4, 3);
    StretchDib(nothing, {0, 0, 4, 3}, preview, 1'000'000'000'000, {0, 0, 4, 3}, StretchMode::BlackOnWhite);
    EXPECT_EQ(drawn(nothing), "RRRR\nRRRR\nRRRR\n");
}

TEST(Stretch, destinationIsClippedToThePicture) {
    DibText text;
    text.width = 4;
    text.height = 1;
    text.colours = {0x0000ff, 0x00ff00, 0xff0000, 0xffffff};
    text.rows = {{0, 1, 2, 3}};
    const PreviewBytes preview = makeDib(text);
    Picture left(2, 1);
    StretchDib(left, {-2, 0, 4, 1}, preview, 56, {0, 0, 4, 1}, StretchMode::BlackOnWhite);
    EXPECT_EQ(drawn(left), "B#\n");
    Picture right(2, 2);
    StretchDib(right, {1, 1, 4, 1}, preview, 56, {0, 0, 4, 1}, StretchMode::BlackOnWhite);
    EXPECT_EQ(drawn(right), "..\n.R\n");
}

TEST(Stretch, nothingIsCopiedOfWhatCantBeDrawn) {
    DibText text;
    text.width = 2;
    text.height = 2;
    text.colours = {0xffffff, 0xffffff};
    text.rows = {{1, 1}, {1, 1}};
    const auto copies = [](const DibText& bent) {
        return stretched(bent, 2, 2, StretchMode::BlackOnWhite) != Picture(2, 2);
    };
    EXPECT_TRUE(copies(text));
    for (const std::uint16_t bits : {0, 2, 3, 64, 65535}) {
        PreviewBytes preview = makeDib(text);
        preview[14] = static_cast<std::uint8_t>(bits);
        preview[15] = static_cast<std::uint8_t>(bits >> 8);
        Picture picture(2, 2);
        StretchDib(picture, {0, 0, 2, 2}, preview, 48, {0, 0, 2, 2}, StretchMode::BlackOnWhite);
        EXPECT_EQ(picture, Picture(2, 2)) << bits << " bits";
    }
    for (const std::uint32_t compression : {1U, 2U, 3U, 4U, 0xffffffffU}) {
        DibText bent = text;
        bent.compression = compression;
        EXPECT_FALSE(copies(bent)) << "compression " << compression;
    }
    DibText negative = text;
    negative.height = -2;
    EXPECT_FALSE(copies(negative)) << "a negative height";
    negative = text;
    negative.width = -2;
    EXPECT_FALSE(copies(negative)) << "a negative width";
    DibText shortHeader = text;
    shortHeader.headerSize = 12;
    EXPECT_FALSE(copies(shortHeader)) << "a header of another kind";
}

TEST(Stretch, aLongerHeaderMovesTheColourTable) {
    DibText text;
    text.headerSize = 108;
    text.width = 1;
    text.height = 1;
    text.colours = {0x000000, 0x00ff00};
    text.rows = {{1}};
    EXPECT_EQ(drawn(stretched(text, 1, 1, StretchMode::BlackOnWhite)), "G\n");
}

TEST(Stretch, workIsBoundedByTheBytesThatAreThere) {
    DibText text;
    text.width = 2147483647;
    text.height = 2147483647;
    text.colours = {0x0000ff, 0x0000ff};
    for (const std::uint16_t bits : {1, 4, 8, 16, 24, 32}) {
        text.bits = bits;
        const PreviewBytes preview = makeDib(text);
        Picture picture(130, 96);
        StretchDib(picture, {0, 0, 130, 96}, preview, 48, {0, 0, text.width, text.height}, StretchMode::BlackOnWhite);
        EXPECT_EQ(wordAt(picture, 129, 95), bits <= 8 ? 0x0000ffU : 0U) << bits << " bits";
    }
}

/// The pixels of one of the reference's bitmaps: 32 bits, top row first.
Picture readReference(const std::filesystem::path& file) {
    const std::string bytes = readFile(file);
    const auto number = [&](std::size_t at) {
        std::uint32_t value = 0;
        for (std::size_t i = 4; i-- > 0;)
            value = value << 8 | static_cast<std::uint8_t>(bytes.at(at + i));
        return static_cast<std::int32_t>(value);
    };
    Picture picture(number(18), -number(22));
    std::size_t at = static_cast<std::size_t>(number(10));
    for (std::size_t i = 0; i < picture.pixels.size(); i += 3, at += 4) {
        picture.pixels[i] = static_cast<std::uint8_t>(bytes.at(at + 2));
        picture.pixels[i + 1] = static_cast<std::uint8_t>(bytes.at(at + 1));
        picture.pixels[i + 2] = static_cast<std::uint8_t>(bytes.at(at));
    }
    return picture;
}

TEST(Stretch, equalsTheReferenceInBothModesAndSizes) {
    const auto reference = sharedFolder("reference");
    if (reference.empty())
        GTEST_SKIP() << "no shared reference pictures";
    for (const StretchMode mode : {StretchMode::BlackOnWhite, StretchMode::WhiteOnBlack}) {
        const std::string name = std::to_string(static_cast<int>(mode));
        const std::string source = readFile(reference / "platform" / ("stretch-source-mode" + name + ".dib"));
        const PreviewBytes preview(source.begin(), source.end());
        for (const auto& [width, height] : {std::pair{130, 96}, std::pair{66, 49}}) {
            const Picture expected = readReference(
                reference / "platform" /
                ("stretch-mode" + name + "-" + std::to_string(width) + "x" + std::to_string(height) + ".bmp"));
            ASSERT_EQ(expected.width, width);
            // Placed as in a thumbnail of that size, on black.
            const PixelBox place = width == 130 ? PixelBox{0, 1, 130, 95} : PixelBox{0, 0, 66, 48};
            Picture picture(width, height);
            StretchDib(picture, place, preview, ReadDibHeader(preview).PixelOffset(), {0, 0, 256, 188}, mode);
            EXPECT_EQ(picture, expected) << "mode " << name << ", " << width << " by " << height;
        }
    }
}

} // namespace
