#include "tessaro/browser/painting/PaintPreview.h"

#include "tessaro/browser/preview/PictureContext.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tests/painting/RecorderContext.h"
#include "tests/preview/Dibs.h"
#include "tests/reading/DrawingBuilder.h"
#include "tests/reading/HelperFixture.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <limits>

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class PaintPreviewTest : public HelperFixture {
protected:
    PaintPreviewTest() {
        SetBackground(0x302821);
        directory.path = platform::FromNarrow(folder.path().string());
        block.name = L"a";
        block.fileType = 16;
    }

    void write(const std::string& drawing) { folder.write("a.dwg", drawing); }
    bool paint(std::int64_t scale = 1, bool forScreen = true) {
        return PaintPreview(directory, block, dc, 0, 0, scale, forScreen);
    }
    /// The lines of a preview of that size with these marks.
    std::vector<std::string> drawn(int width, int height, const MarkPoints& points, std::int64_t x, std::int64_t y,
                                   std::int64_t scale, bool forScreen) {
        LoadedPreview preview{makePlainDib(width, height, 0x00ff00), false, points};
        DrawPreview(dc, preview, block.fileType, x, y, scale, forScreen);
        return dc.lines;
    }

    TemporaryFolder folder;
    Directory directory;
    Block block;
    RecorderContext dc;
};

TEST_F(PaintPreviewTest, onTheScreenTheFrameHasTheBackgroundsBrushAndThePresentPen) {
    EXPECT_THAT(drawn(256, 188, {}, 0, 0, 1, true),
                ElementsAre("rectangle 0,0,259,191 pen 000000/1 brush 212830", "dib 1,1,256,188 from 0,0,256,188 at "
                                                                               "1064 mode 2"));
    EXPECT_TRUE(dc.isAsFresh());
}

TEST_F(PaintPreviewTest, whereBlackIsTheContrastTheScreensModeIsOne) {
    SetBackground(0xffffff);
    EXPECT_EQ(drawn(256, 188, {}, 0, 0, 1, true)[1], "dib 1,1,256,188 from 0,0,256,188 at 1064 mode 1");
}

TEST_F(PaintPreviewTest, onPaperTheBrushStaysAndTheModeIsOne) {
    EXPECT_THAT(drawn(256, 188, {}, 0, 0, 2, false),
                ElementsAre("rectangle 0,0,515,379 pen 000000/1 brush ffffff", "dib 1,1,512,376 from 0,0,256,188 at "
                                                                               "1064 mode 1"));
}

TEST_F(PaintPreviewTest, aPreviewIsCentredWithTruncatingHalvesAndNotFitted) {
    // 100 + (256*3/2 - (101*3)/2) + 1 = 100 + 384 - 151 + 1; 50 + (188*3/2 - (33*3)/2) + 1 = 50 + 282 - 49 + 1.
    EXPECT_EQ(drawn(101, 33, {}, 100, 50, 3, true)[1], "dib 334,284,303,99 from 0,0,101,33 at 1064 mode 2");
    dc.lines.clear();
    // 1 + (128 - 300) + 1: a preview that is wider than the frame hangs over on both sides.
    EXPECT_EQ(drawn(600, 188, {}, 1, 1, 1, true)[1], "dib -170,2,600,188 from 0,0,600,188 at 1064 mode 2");
}

TEST_F(PaintPreviewTest, belowType15AFrameOfOnePixelIsCutOffTheSourceOnly) {
    block.fileType = 14;
    EXPECT_EQ(drawn(256, 188, {}, 0, 0, 1, true)[1], "dib 1,1,256,188 from 1,1,254,186 at 1064 mode 2");
    dc.lines.clear();
    block.fileType = 15;
    EXPECT_EQ(drawn(256, 188, {}, 0, 0, 1, true)[1], "dib 1,1,256,188 from 0,0,256,188 at 1064 mode 2");
}

TEST_F(PaintPreviewTest, ofAPreviewOfTwoPixelsUpToType14NothingIsCopied) {
    block.fileType = 14;
    EXPECT_EQ(drawn(2, 2, {}, 0, 0, 1, true)[1], "dib 128,94,2,2 from 1,1,0,0 at 1064 mode 2");
    Picture picture(260, 190);
    PictureContext context(picture);
    LoadedPreview preview{makePlainDib(2, 2, 0x0000ff), false, {}};
    DrawPreview(context, preview, 14, 0, 0, 1, true);
    EXPECT_EQ(wordAt(picture, 128, 94), 0x302821U) << "the frame's background is all";
}

TEST_F(PaintPreviewTest, marksCountFromTheLowerLeftAndAreLargerThanThoseOfAThumbnail) {
    // x: 1 + trunc(40.5), y: 1 + trunc(188 - 33.25).
    EXPECT_THAT(drawn(256, 188, {40.5, 33.25}, 0, 0, 1, true),
                ElementsAre(testing::_, testing::_, "ellipse 37,151,45,159 pen ff0000/1 brush 212830",
                            "line 33,147,49,163 pen ff0000/1", "line 49,147,33,163 pen ff0000/1"));
    EXPECT_TRUE(dc.isAsFresh());
}

TEST_F(PaintPreviewTest, onPaperMarksAreLargerStillAndFilledByThePresentBrush) {
    // x: 1 + trunc(40.5 * 2), y: 1 + trunc((188 - 33.25) * 2).
    EXPECT_THAT(drawn(256, 188, {40.5, 33.25}, 0, 0, 2, false),
                ElementsAre(testing::_, testing::_, "ellipse 70,298,94,322 pen ff0000/1 brush ffffff",
                            "line 62,290,102,330 pen ff0000/1", "line 102,290,62,330 pen ff0000/1"));
}

TEST_F(PaintPreviewTest, everyPairIsMarkedAndALoneNumberIsNone) {
    EXPECT_EQ(drawn(256, 188, {1, 2, 3, 4, 5}, 0, 0, 1, true).size(), 2U + 2 * 3);
}

TEST_F(PaintPreviewTest, aMarkThatIsNoNumberOrFarAwayIsNotSeen) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    Picture with(260, 190), without(260, 190);
    for (Picture* picture : {&with, &without}) {
        PictureContext context(*picture);
        LoadedPreview preview{makePlainDib(100, 100, 0x00ff00), false, {}};
        if (picture == &with)
            preview.points = {nan, nan, 1e300, -1e300, 20, nan};
        DrawPreview(context, preview, 16, 0, 0, 1, true);
    }
    EXPECT_EQ(with, without);
}

TEST_F(PaintPreviewTest, atScaleZeroTheFrameHasThreePixelsAndThePictureNoSize) {
    EXPECT_THAT(drawn(256, 188, {}, 10, 20, 0, false),
                ElementsAre("rectangle 10,20,13,23 pen 000000/1 brush ffffff", "dib 11,21,0,0 from 0,0,256,188 at 1064 "
                                                                               "mode 1"));
}

TEST_F(PaintPreviewTest, coordinatesOfAnyScaleAreCountedWithoutOverflow) {
    LoadedPreview preview{makePlainDib(4, 4, 0), false, {1, 1}};
    for (const std::size_t at : {4U, 8U}) {
        preview.bytes[at] = preview.bytes[at + 1] = preview.bytes[at + 2] = 0xff;
        preview.bytes[at + 3] = 0x7f;
    }
    DrawPreview(dc, preview, 16, 0, 0, 0x3fffffff, false);
    EXPECT_EQ(dc.lines[0], "rectangle 0,0,274877906691,201863462727 pen 000000/1 brush ffffff");
    // 256 * s / 2 - (w * s) / 2 + 1 with the largest width and scale.
    EXPECT_TRUE(dc.lines[1].starts_with("dib -1152921365557280895,")) << dc.lines[1];
    dc.lines.clear();
    EXPECT_EQ(drawn(256, 188, {}, 0, 0, -3, false)[0], "rectangle 0,0,-765,-561 pen 000000/1 brush ffffff");
}

TEST_F(PaintPreviewTest, thePaletteIsAdaptedOnTheScreenOnly) {
    for (const bool forScreen : {true, false}) {
        LoadedPreview preview{makePlainDib(4, 4, 0xffffff), false, {}};
        Picture picture(260, 190);
        PictureContext context(picture);
        DrawPreview(context, preview, 16, 0, 0, 1, forScreen);
        EXPECT_EQ(wordAt(picture, 129, 95), forScreen ? 0x302821U : 0xffffffU);
    }
}

TEST_F(PaintPreviewTest, aCountOfNoColoursIsTakenAs256AlsoOfAPngWhosePixelsThusStartTooLate) {
    block.fileType = 21;
    write(DrawingBuilder("AC1032").entry(6, plainPng(100, 100, 0x0080ff)));
    answer = answerPlainly;
    ASSERT_TRUE(paint());
    EXPECT_EQ(dc.lines[1], "dib 79,45,100,100 from 0,0,100,100 at 1064 mode 2");

    Picture picture(260, 190);
    PictureContext context(picture);
    ASSERT_TRUE(PaintPreview(directory, block, context, 0, 0, 1, true));
    // 1,024 bytes are three rows of 300 bytes and 41 pixels with one byte; behind the end zero bytes stand.
    EXPECT_EQ(wordAt(picture, 79 + 50, 45 + 50), 0x80ff00U) << "the channels are one byte off";
    EXPECT_EQ(wordAt(picture, 79 + 50, 45), 0U) << "the top rows lie past the end";
    EXPECT_EQ(wordAt(picture, 79 + 50, 45 + 2), 0U);
    EXPECT_EQ(wordAt(picture, 79 + 50, 45 + 4), 0x80ff00U);
}

TEST_F(PaintPreviewTest, aBridgeThatSucceedsRefreshesDatesAndDescription) {
    write(DrawingBuilder("AC1015").entry(2, plainBitmap(20, 20, 0x00ff00)));
    block.description = L"old";
    answer = answerPlainly;
    EXPECT_TRUE(paint());
    EXPECT_EQ(block.description, L"from the helper");
    EXPECT_NE(block.created, 0);
    EXPECT_EQ(block.modified, block.created);
}

TEST_F(PaintPreviewTest, aBridgeThatFailsIsNotLookedAt) {
    write(DrawingBuilder("AC1015").entry(2, plainBitmap(20, 20, 0x00ff00)));
    block.description = L"old";
    EXPECT_TRUE(paint());
    EXPECT_EQ(block.description, L"old");
    EXPECT_EQ(calls.size(), 1U);
}

TEST_F(PaintPreviewTest, theDirectoryTellsWhetherPointsAreWanted) {
    write(DrawingBuilder("AC1015").entry(2, plainBitmap(20, 20, 0x00ff00)));
    directory.showInsPts = false;
    EXPECT_TRUE(paint());
    directory.showInsPts = true;
    EXPECT_TRUE(paint());
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_FALSE(calls[0].wantInsPts);
    EXPECT_TRUE(calls[1].wantInsPts);
}

TEST_F(PaintPreviewTest, aMissingHelperIsRaised) {
    write(DrawingBuilder("AC1015").entry(2, plainBitmap(20, 20, 0x00ff00)));
    LocalPath = directory.path;
    ForgetServices();
    EXPECT_THROW(paint(), std::runtime_error);
    EXPECT_THAT(dc.lines, IsEmpty());
}

TEST_F(PaintPreviewTest, aDrawingThatCantBeOpenedIsFalse) {
    EXPECT_FALSE(paint());
    EXPECT_THAT(dc.lines, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(PaintPreviewTest, aDrawingWithoutAnImageEntryIsFalse) {
    write(DrawingBuilder("AC1015").entry(1, "text"));
    EXPECT_FALSE(paint());
    write("AC1015");
    EXPECT_FALSE(paint());
    write("");
    EXPECT_FALSE(paint());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(PaintPreviewTest, aFileExceptionIsFalse) {
    // What opens for reading and can't be read.
    std::filesystem::create_directory(folder.path() / "a.dwg");
    EXPECT_FALSE(paint());
    std::filesystem::remove(folder.path() / "a.dwg");
    write(DrawingBuilder("AC1015").address(0xfffffff0).entry(2, plainBitmap(20, 20, 0)));
    EXPECT_FALSE(paint());
}

TEST_F(PaintPreviewTest, anImageThatIsNoneIsFalse) {
    write(DrawingBuilder("AC1032").entry(6, "no picture"));
    EXPECT_FALSE(paint());
    write(DrawingBuilder("AC1015").entry(2, "short"));
    EXPECT_FALSE(paint());
}

TEST_F(PaintPreviewTest, anEarlyFormatTakesTheBitmapBesideTheDrawing) {
    block.fileType = 13;
    write("AC1009");
    EXPECT_FALSE(paint()) << "no bitmap";
    folder.write("a.bmp", bitmapFile(plainBitmap(20, 20, 0x00ff00)));
    EXPECT_TRUE(paint());
    EXPECT_EQ(dc.lines.at(1), "dib 119,85,20,20 from 1,1,18,18 at 1064 mode 2");
    std::filesystem::remove(folder.path() / "a.dwg");
    EXPECT_TRUE(paint()) << "the drawing itself isn't opened";
}

TEST_F(PaintPreviewTest, theLastImageWinsAndAPngStaysAPng) {
    // The bitmap behind the PNG is taken for a PNG, and can't be decoded.
    write(DrawingBuilder("AC1032").entry(6, plainPng(30, 30, 0)).entry(2, plainBitmap(20, 20, 0)));
    EXPECT_FALSE(paint());
    write(DrawingBuilder("AC1032").entry(2, plainBitmap(20, 20, 0)).entry(6, plainPng(30, 30, 0)));
    EXPECT_TRUE(paint());
    EXPECT_EQ(dc.lines.at(1), "dib 114,80,30,30 from 0,0,30,30 at 1064 mode 2");
}

} // namespace
