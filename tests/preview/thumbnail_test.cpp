#include "tessaro/catalogue/Raster.h"
#include "tessaro/platform/Text.h"
#include "tests/preview/Dibs.h"
#include "tests/support/RecorderWindow.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <limits>

using namespace tests;

namespace {

constexpr std::uint32_t kBackground = 0x302821;
constexpr std::uint32_t kGreen = 0x00ff00;

/// The smallest rectangle that holds all pixels of that colour.
struct Extent {
    int left = 1000, top = 1000, right = -1, bottom = -1;
    bool operator==(const Extent&) const = default;
};

void PrintTo(const Extent& extent, std::ostream* out) {
    *out << extent.left << ", " << extent.top << " to " << extent.right << ", " << extent.bottom;
}

Extent extentOf(const Picture& picture, std::uint32_t colour) {
    Extent extent;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (wordAt(picture, x, y) != colour)
                continue;
            extent = {std::min(extent.left, x), std::min(extent.top, y), std::max(extent.right, x),
                      std::max(extent.bottom, y)};
        }
    }
    return extent;
}

class Thumbnail : public testing::Test {
protected:
    Thumbnail() { SetBackground(kBackground); }

    static Thumbnails draw(PreviewBytes preview, std::int32_t fileType = 16, bool isPng = false,
                           const MarkPoints& points = {}) {
        return DrawThumbnails(true, fileType, preview, isPng, points);
    }
};

TEST_F(Thumbnail, previewIsFittedAndCentredInBothBoxes) {
    struct Row {
        int width, height;
        Extent large, small;
    };
    const Row rows[] = {
        {256, 188, {0, 1, 129, 95}, {0, 0, 65, 47}},   // Wide: the width decides in both boxes.
        {100, 100, {17, 0, 112, 95}, {9, 0, 57, 48}},  // Square: the height decides.
        {256, 102, {0, 23, 129, 73}, {0, 11, 65, 36}}, // The truncated half is taken from the box's half.
        {10, 10, {17, 0, 112, 95}, {9, 0, 57, 48}},    // Grown.
        {65535, 1, {}, {}},                            // No row is left.
    };
    for (const Row& row : rows) {
        const Thumbnails pictures = draw(makePlainDib(row.width, row.height, kGreen));
        EXPECT_EQ(extentOf(*pictures.large, kGreen), row.large) << row.width << " by " << row.height;
        EXPECT_EQ(extentOf(pictures.small, kGreen), row.small) << row.width << " by " << row.height;
        EXPECT_EQ(pictures.large->width, 130);
        EXPECT_EQ(pictures.large->height, 96);
        EXPECT_EQ(pictures.small.width, 66);
        EXPECT_EQ(pictures.small.height, 49);
    }
}

TEST_F(Thumbnail, whatThePreviewDoesNotCoverIsBackground) {
    const Thumbnails pictures = draw(makePlainDib(100, 100, kGreen));
    EXPECT_EQ(wordAt(*pictures.large, 0, 0), kBackground);
    EXPECT_EQ(wordAt(*pictures.large, 129, 95), kBackground);
    EXPECT_EQ(wordAt(pictures.small, 65, 48), kBackground);
}

/// A frame of one pixel in blue around green.
PreviewBytes framedDib(int width, int height) {
    DibText text;
    text.width = width;
    text.height = height;
    text.colours.assign(256, 0xff0000);
    text.colours[1] = kGreen;
    for (int y = 0; y < height; ++y) {
        text.rows.emplace_back(static_cast<std::size_t>(width), 0);
        for (int x = 1; x < width - 1 && y > 0 && y < height - 1; ++x)
            text.rows.back()[static_cast<std::size_t>(x)] = 1;
    }
    return makeDib(text);
}

TEST_F(Thumbnail, upToType14AFrameOfOnePixelIsCut) {
    for (const std::int32_t fileType : {0, 13, 14, 15, 20}) {
        const Thumbnails pictures = draw(framedDib(130, 96), fileType);
        const bool cut = extentOf(*pictures.large, 0xff0000) == Extent{};
        EXPECT_EQ(cut, fileType <= 14) << "type " << fileType;
        if (cut) {
            EXPECT_EQ(extentOf(*pictures.large, kGreen), (Extent{0, 0, 129, 95})) << "the destination stays the same";
        }
    }
}

TEST_F(Thumbnail, ofAPreviewOfTwoPixelsNothingIsLeftInsideTheFrame) {
    for (const int width : {1, 2}) {
        const Thumbnails pictures = draw(makePlainDib(width, 2, kGreen), 14);
        EXPECT_EQ(extentOf(*pictures.large, kBackground), (Extent{0, 0, 129, 95}));
        EXPECT_EQ(extentOf(*pictures.large, kGreen), Extent{});
    }
    EXPECT_NE(extentOf(*draw(makePlainDib(2, 2, kGreen), 15).large, kGreen), Extent{});
}

/// Eight bits with a full table and a header that counts no colours; the first bytes of the table, taken as pixels,
/// lead to red, the true pixels to green.
PreviewBytes dibWithoutCount() {
    DibText text;
    text.width = 8;
    text.height = 8;
    text.coloursUsed = 0;
    text.colours.assign(256, 0x000000);
    text.colours[0] = 0x0000ff;
    text.colours[9] = kGreen;
    for (std::size_t i = 1; i < 30; ++i)
        text.colours[i] = i == 9 ? kGreen : 0x0000ff;
    text.rows.assign(8, std::vector<std::uint32_t>(8, 9));
    return makeDib(text);
}

TEST_F(Thumbnail, theLargePassPatchesNoColoursTo256AndTheSmallOneFindsIt) {
    PreviewBytes preview = dibWithoutCount();
    const Thumbnails pictures = DrawThumbnails(true, 16, preview, false, {});
    EXPECT_EQ(ReadDibHeader(preview).colours, 256U);
    EXPECT_EQ(extentOf(*pictures.large, kGreen), (Extent{17, 0, 112, 95}));
    EXPECT_EQ(extentOf(pictures.small, kGreen), (Extent{9, 0, 57, 48}));
}

TEST_F(Thumbnail, withoutTheLargePassTheSmallOneStartsBehindTheHeader) {
    PreviewBytes preview = dibWithoutCount();
    const Thumbnails pictures = DrawThumbnails(false, 16, preview, false, {});
    EXPECT_FALSE(pictures.large);
    EXPECT_EQ(ReadDibHeader(preview).colours, 0U);
    EXPECT_NE(extentOf(pictures.small, kGreen), (Extent{9, 0, 57, 48}));
}

TEST_F(Thumbnail, upToType14NoColoursStayNoColours) {
    PreviewBytes preview = dibWithoutCount();
    DrawThumbnails(true, 14, preview, false, {});
    EXPECT_EQ(ReadDibHeader(preview).colours, 0U);
}

TEST_F(Thumbnail, aPngIsNeitherAdaptedNorPatched) {
    DibText text;
    text.bits = 24;
    text.width = 40;
    text.height = 30;
    text.rows.assign(30, std::vector<std::uint32_t>(40, 0xffffff));
    PreviewBytes preview = makeDib(text);
    const PreviewBytes before = preview;
    const Thumbnails pictures = DrawThumbnails(true, 20, preview, true, {});
    EXPECT_EQ(preview, before);
    EXPECT_EQ(wordAt(*pictures.large, 65, 48), 0xffffffU) << "white stays white on any background";

    DrawThumbnails(true, 20, preview, false, {});
    EXPECT_NE(preview, before) << "the same bytes as a bitmap are";
}

TEST_F(Thumbnail, thePaletteIsAdaptedToTheBackground) {
    const Thumbnails pictures = draw(makePlainDib(130, 96, 0x000000));
    EXPECT_EQ(wordAt(*pictures.large, 65, 48), 0xffffffU);
    EXPECT_EQ(wordAt(*draw(makePlainDib(130, 96, 0xffffff)).large, 65, 48), kBackground);
}

TEST_F(Thumbnail, lightLinesSurviveOnDarkAndDarkLinesOnLight) {
    DibText text;
    text.width = 260;
    text.height = 192;
    text.colours.assign(256, 0x00ff00);
    text.colours[1] = 0x0000ff;
    text.rows.assign(192, std::vector<std::uint32_t>(260, 0));
    for (auto& row : text.rows)
        row[100] = 1;
    EXPECT_EQ(wordAt(*draw(makeDib(text)).large, 50, 48), 0x00ffffU) << "OR under a white contrast";
    SetBackground(0xffffff);
    EXPECT_EQ(wordAt(*draw(makeDib(text)).large, 50, 48), 0x000000U) << "AND under a black one";
}

TEST_F(Thumbnail, aMarkIsACircleWithACrossOverIt) {
    SetBackground(0x000000);
    const Thumbnails pictures = draw(makePlainDib(130, 96, kGreen), 16, false, {30, 46});
    Picture part(14, 14);
    for (int y = 0; y < 14; ++y) {
        for (int x = 0; x < 14; ++x)
            SetPixel(part, x, y, PixelAt(*pictures.large, 23 + x, 43 + y));
    }
    // Each line leaves out its last pixel, and the circle is filled with the background.
    EXPECT_EQ(drawn(part), "GGGGGGGGGGGGGG\n"
                           "GGGGGGGGGGGGGG\n"
                           "GGRGGGGGGGGGRG\n"
                           "GGGRGGGGGGGRGG\n"
                           "GGGGRGRRGGRGGG\n"
                           "GGGGGR..RRGGGG\n"
                           "GGGGR.R.RRGGGG\n"
                           "GGGGR..R.RGGGG\n"
                           "GGGGGRR.RGGGGG\n"
                           "GGGGGRRRGRGGGG\n"
                           "GGGGRGGGGGRGGG\n"
                           "GGGRGGGGGGGRGG\n"
                           "GGGGGGGGGGGGGG\n"
                           "GGGGGGGGGGGGGG\n");
}

TEST_F(Thumbnail, theHeightOfAMarkCountsFromTheBottomOfThePreview) {
    // 100 by 100: factor 0.96, left 17, top 0; the circle reaches from 3 before to 2 behind its middle.
    const Thumbnails pictures = draw(makePlainDib(100, 100, kGreen), 16, false, {50.9, 25.5});
    const int markX = 17 + static_cast<int>(50.9 * 0.96);
    const int markY = static_cast<int>(96 - 25.5 * 0.96);
    EXPECT_EQ(extentOf(*pictures.large, 0x0000ff), (Extent{markX - 5, markY - 5, markX + 5, markY + 4}));
}

TEST_F(Thumbnail, theTopOfTheBoxCountsTwiceForAMark) {
    // 256 by 102: factor 130 / 256, top 48 - 25 = 23.
    const Thumbnails pictures = draw(makePlainDib(256, 102, kGreen), 16, false, {128, 51});
    const int markY = 23 + static_cast<int>(96 - 46 - 51 * (130.0 / 256));
    EXPECT_EQ(extentOf(*pictures.large, 0x0000ff), (Extent{60, markY - 5, 70, markY + 4}));
}

TEST_F(Thumbnail, aMarkOutsideOfThePreviewIsCutByThePictureOnly) {
    const Thumbnails pictures = draw(makePlainDib(100, 100, kGreen), 16, false, {-10, 50});
    EXPECT_LT(extentOf(*pictures.large, 0x0000ff).left, 17);
}

TEST_F(Thumbnail, aMarkThatIsNoNumberOrFarAwayIsNotSeen) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double odd : {nan, infinity, -infinity, 1e300, -1e300, 2147483647.0, -2147483648.0}) {
        EXPECT_EQ(extentOf(*draw(makePlainDib(100, 100, kGreen), 16, false, {odd, 50}).large, 0x0000ff), Extent{});
        EXPECT_EQ(extentOf(*draw(makePlainDib(100, 100, kGreen), 16, false, {50, odd}).large, 0x0000ff), Extent{});
    }
}

TEST_F(Thumbnail, everyPairIsMarkedAndALoneNumberIsNone) {
    const Thumbnails pictures = draw(makePlainDib(130, 96, kGreen), 16, false, {20, 48, 100, 48, 50});
    EXPECT_EQ(extentOf(*pictures.large, 0x0000ff), (Extent{15, 43, 105, 52}));
}

TEST_F(Thumbnail, anyHeaderEndsInAPictureOfBackground) {
    for (const std::int32_t width : {0, 1, -1, 100, 2147483647, -2147483647 - 1}) {
        for (const std::int32_t height : {0, 1, -1, 100, 2147483647, -2147483647 - 1}) {
            for (const std::uint32_t colours : {0U, 256U, 0xffffffffU}) {
                DibText text;
                text.width = width;
                text.height = height;
                text.coloursUsed = colours;
                for (const std::int32_t fileType : {14, 16}) {
                    const Thumbnails pictures = draw(makeDib(text), fileType, false, {5, 5});
                    EXPECT_EQ(pictures.small.width, 66);
                    if (width <= 0 || height <= 0) {
                        EXPECT_EQ(wordAt(pictures.small, 0, 48), kBackground) << width << " by " << height;
                    }
                }
            }
        }
    }
    EXPECT_EQ(wordAt(draw({}).small, 0, 0), kBackground) << "no header at all";
}

class UpdateRecorder : public RecorderWindow {
public:
    std::vector<int> updatedRows;
    void UpdateBlockRow(int row) override { updatedRows.push_back(row); }
};

class StoredThumbnail : public Thumbnail {
protected:
    ~StoredThumbnail() override {
        currentDirectory = nullptr;
        theBlockDlg = nullptr;
    }
    Directory directory;
    Block block;
    UpdateRecorder window;

    void render(std::uint32_t colour) {
        PreviewBytes preview = makePlainDib(130, 96, colour);
        RenderThumbnail(directory, block, preview, false, {});
    }
};

TEST_F(StoredThumbnail, theFirstPictureTakesTheNextSlotOfBothLists) {
    block.fileType = 16;
    render(kGreen);
    EXPECT_EQ(block.imageIndex, 1);
    ASSERT_EQ(directory.largeImages->Count(), 2);
    ASSERT_EQ(directory.smallImages->Count(), 2);
    EXPECT_EQ(wordAt(directory.largeImages->Draw(1), 65, 48), kGreen);
    EXPECT_EQ(wordAt(directory.smallImages->Draw(1), 33, 24), kGreen);
    EXPECT_EQ(directory.largeImages->Draw(0), Directory().largeImages->Draw(0)) << "the placeholder stays";
}

TEST_F(StoredThumbnail, aLaterPictureReplacesTheSlot) {
    block.fileType = 16;
    render(kGreen);
    render(0x0000ff);
    EXPECT_EQ(block.imageIndex, 1);
    EXPECT_EQ(directory.largeImages->Count(), 2);
    EXPECT_EQ(directory.smallImages->Count(), 2);
    EXPECT_EQ(wordAt(directory.largeImages->Draw(1), 65, 48), 0x0000ffU);
    EXPECT_EQ(wordAt(directory.smallImages->Draw(1), 33, 24), 0x0000ffU);
}

TEST_F(StoredThumbnail, withoutLargePicturesTheLargeListKeepsItsPlaceholder) {
    block.fileType = 16;
    directory.useLargeImages = false;
    render(kGreen);
    EXPECT_EQ(block.imageIndex, 1);
    EXPECT_EQ(directory.largeImages->Count(), 1);
    EXPECT_EQ(directory.smallImages->Count(), 2);
}

TEST_F(StoredThumbnail, pastTheLastSlotADrawingKeepsThePlaceholderAndTheLogSaysSo) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto session = [this] {
        const TemporaryFolder folder;
        std::filesystem::create_directory(folder.path() / "Log");
        moduleFolder = platform::FromNarrow(folder.path().native());
        directory.path = L"/library";
        directory.largeImages = std::make_shared<ImageList>(1, 1, 1, 25);
        directory.smallImages = std::make_shared<ImageList>(1, 1, 1, 25);
        for (int slot = 0; slot < 65534; ++slot) {
            directory.largeImages->Add(Picture(1, 1));
            directory.smallImages->Add(Picture(1, 1));
        }
        block.name = L"last";
        block.fileType = 16;
        render(kGreen);
        EXPECT_EQ(block.imageIndex, 65534);
        for (const bool large : {true, false}) {
            directory.useLargeImages = large;
            Block late;
            late.name = L"late";
            late.fileType = 16;
            PreviewBytes preview = makePlainDib(130, 96, kGreen);
            RenderThumbnail(directory, late, preview, false, {});
            EXPECT_EQ(late.imageIndex, 0);
        }
        EXPECT_EQ(directory.largeImages->Count(), 65535);
        EXPECT_EQ(directory.smallImages->Count(), 65535);
        std::string log;
        for (const auto& file : std::filesystem::directory_iterator(folder.path() / "Log"))
            log = readFile(file.path());
        const std::string line = "The picture lists of /library are full, late keeps the placeholder\r\n";
        EXPECT_EQ(log, line + line);
        std::filesystem::remove_all(folder.path());
        std::_Exit(HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(session(), testing::ExitedWithCode(0), "");
}

TEST_F(StoredThumbnail, onlyAReplacedPictureOfTheShownDirectoryRepaintsItsRow) {
    block.fileType = 16;
    block.listIndex = 2;
    window.blockRows.resize(3);
    theBlockDlg = &window;
    currentDirectory = &directory;
    render(kGreen);
    EXPECT_TRUE(window.updatedRows.empty()) << "added";
    render(kGreen);
    EXPECT_EQ(window.updatedRows, std::vector<int>{2}) << "replaced";
    Directory other;
    currentDirectory = &other;
    render(kGreen);
    EXPECT_EQ(window.updatedRows.size(), 1U) << "replaced, but not shown";
    currentDirectory = &directory;
    block.listIndex = 3;
    render(kGreen);
    EXPECT_EQ(window.updatedRows.size(), 1U) << "a row that is not there";
}

} // namespace
