#include "tests/preview/Dibs.h"

#include <gtest/gtest.h>

using namespace tests;

namespace {

constexpr Rgb kBlack{0, 0, 0, 0};
constexpr Rgb kWhite{255, 255, 255, 0};

TEST(ColourRule, blackStandsOnlyOnTheEightPureColours) {
    struct Row {
        std::uint32_t background;
        Rgb contrast;
    };
    const Row rows[] = {
        {0x0000ff, kBlack}, {0x00ff00, kBlack}, {0x00ffff, kBlack},   {0xc0c0c0, kBlack},   {0xff0000, kBlack},
        {0xff00ff, kBlack}, {0xffff00, kBlack}, {0xffffff, kBlack},   {0x000000, kWhite},   {0xc0c0c1, kWhite},
        {0xc0c0bf, kWhite}, {0xfffffe, kWhite}, {0xfefefe, kWhite},   {0xff0001, kWhite},   {0x0000fe, kWhite},
        {0xfffff0, kWhite}, {0x302821, kWhite}, {0xffffffff, kWhite}, {0x01c0c0c0, kWhite},
    };
    for (const Row& row : rows) {
        SetBackground(row.background);
        EXPECT_EQ(foreColor.load(), row.contrast) << std::hex << row.background;
        EXPECT_EQ(backColor.load(), colourOf(row.background)) << std::hex << row.background;
    }
}

TEST(ColourRule, theLowByteOfTheColourWordIsRed) {
    SetBackground(0x302821);
    EXPECT_EQ(backColor.load(), (Rgb{0x21, 0x28, 0x30, 0}));
}

class Palette : public testing::Test {
protected:
    Palette() { SetBackground(0x302821); }
};

TEST_F(Palette, whiteBecomesBackgroundAndBlackBecomesContrast) {
    DibText text;
    text.colours = {0xffffff, 0x000000, 0xfeffff, 0xfffeff, 0xfffffe, 0x000001, 0x000100, 0x010000};
    PreviewBytes preview = makeDib(text);
    AdaptPalette(preview);
    text.colours[0] = 0x302821;
    text.colours[1] = 0xffffff;
    EXPECT_EQ(preview, makeDib(text));
}

TEST_F(Palette, onABackgroundWithBlackContrastBlackStays) {
    SetBackground(0xc0c0c0);
    DibText text;
    text.colours = {0xffffff, 0x000000};
    PreviewBytes preview = makeDib(text);
    AdaptPalette(preview);
    text.colours = {0xc0c0c0, 0x000000};
    EXPECT_EQ(preview, makeDib(text));
}

TEST_F(Palette, theReservedByteStays) {
    DibText text;
    text.colours = {0xffffff};
    PreviewBytes preview = makeDib(text);
    preview[43] = 0x5a;
    AdaptPalette(preview);
    EXPECT_EQ(preview[40], 0x30);
    EXPECT_EQ(preview[42], 0x21);
    EXPECT_EQ(preview[43], 0x5a);
}

TEST_F(Palette, entries256AreWalkedWhateverCountAndDepthSay) {
    DibText text;
    text.bits = 24;
    text.coloursUsed = 1;
    text.colours.assign(257, 0xffffff);
    PreviewBytes preview = makeDib(text);
    AdaptPalette(preview);
    EXPECT_EQ(preview[40 + 4 * 255], 0x30) << "the last of the 256";
    EXPECT_EQ(preview[40 + 4 * 256], 0xff) << "the first behind them";
}

TEST_F(Palette, anEntryThatIsNotWhollyThereStays) {
    PreviewBytes preview(40, 0);
    preview.insert(preview.end(), {255, 255});
    const PreviewBytes before = preview;
    AdaptPalette(preview);
    EXPECT_EQ(preview, before);
    PreviewBytes tiny(3, 255);
    AdaptPalette(tiny);
    EXPECT_EQ(tiny, PreviewBytes(3, 255));
}

} // namespace
