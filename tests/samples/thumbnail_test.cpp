// The pictures for file managers: the embedded one, else what the editor draws.
#include "samples/Library.h"
#include "tests/support/TemporaryFolder.h"
#include "tools/thumbnail.h"

#include "editor/dwg/image_section.h"
#include "editor/dwg/thumbnail.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <lodepng.h>

namespace {

class Thumbnail : public testing::Test {
protected:
    std::filesystem::path plan(AcDb::AcDbDwgVersion release = AcDb::kDHL_1015) {
        auto file = place.path() / ("plan" + std::to_string(release) + ".dwg");
        samples::Sketch sketch(samples::flatPlan.comments);
        samples::flatPlan.draw(sketch);
        EXPECT_TRUE(sketch.save(file.wstring(), release));
        return file;
    }
    /// The plan with its list of pictures cut off.
    std::filesystem::path planWithoutPicture() {
        const auto file = plan();
        std::string bytes = tests::readFile(file);
        constexpr std::size_t imageAddress = 0x0D;
        std::fill_n(bytes.begin() + imageAddress, 4, '\0');
        return place.write("bare.dwg", bytes);
    }
    /// Width and height of the one picture that the file embeds.
    static std::pair<int, int> embedded(const std::filesystem::path& file) {
        const auto source = dwg::openSource(file);
        const auto section = dwg::readImageSection(**source);
        for (const dwg::ImageEntry& entry : (*section)->entries)
            if (entry.measures)
                return {entry.measures->width, entry.measures->height};
        return {};
    }
    static int run(const std::string& arguments) {
        const int status = std::system((TESSARO_BIN_DIR "/tessaro-thumbnailer " + arguments + " 2>/dev/null").c_str());
        return WEXITSTATUS(status);
    }

    tests::TemporaryFolder place;
};

std::size_t darkPixels(const Picture& picture) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < picture.pixels.size(); i += 3)
        count += picture.pixels[i] < 128 && picture.pixels[i + 1] < 128 && picture.pixels[i + 2] < 128 ? 1 : 0;
    return count;
}

TEST_F(Thumbnail, TheEmbeddedPictureIsTakenAsItIsInEveryRelease) {
    for (const auto release :
         {AcDb::kDHL_1015, AcDb::kDHL_1800, AcDb::kDHL_1021, AcDb::kDHL_1024, AcDb::kDHL_1027, AcDb::kDHL_1032}) {
        const auto file = plan(release);
        const auto picture = tools::thumbnailOf(file, 256);
        ASSERT_TRUE(picture) << release;
        EXPECT_EQ(std::pair(picture->width, picture->height), embedded(file)) << release;
        EXPECT_GT(darkPixels(*picture), 500U) << release;
    }
}

TEST_F(Thumbnail, OfASampleIsDarkWhereItIsStoredAsAPngAndWhiteWhereItIsABitmap) {
    for (const auto& [release, dark] :
         {std::pair(AcDb::kDHL_1015, false), {AcDb::kDHL_1024, false}, {AcDb::kDHL_1027, true}}) {
        const auto picture = tools::thumbnailOf(plan(release), 256);
        ASSERT_TRUE(picture);
        EXPECT_EQ(darkPixels(*picture) > picture->pixels.size() / 3 / 2, dark) << release;
    }
}

TEST_F(Thumbnail, IsAsLargeAsWasAskedAtTheMostAndKeepsItsProportions) {
    const auto file = plan();
    const auto small = tools::thumbnailOf(file, 64);
    ASSERT_TRUE(small);
    EXPECT_EQ(small->width, 64);
    const auto [width, height] = embedded(file);
    ASSERT_GT(width, 0);
    EXPECT_EQ(small->height, 64 * height / width);
    const auto dot = tools::thumbnailOf(file, 1);
    ASSERT_TRUE(dot);
    EXPECT_EQ(dot->pixels.size(), 3U);
    const auto large = tools::thumbnailOf(file, 1024);
    ASSERT_TRUE(large);
    EXPECT_EQ(large->width, width) << "an embedded picture is not enlarged";
}

TEST_F(Thumbnail, ADrawingWithoutPictureIsDrawnInTheSizeThatWasAsked) {
    const auto picture = tools::thumbnailOf(planWithoutPicture(), 512);
    ASSERT_TRUE(picture);
    EXPECT_EQ(std::max(picture->width, picture->height), 512);
    EXPECT_GT(darkPixels(*picture), 1000U);
}

TEST_F(Thumbnail, ABitmapThatClaimsMoreThanThereMayBeIsPassedOver) {
    std::string bytes = tests::readFile(plan());
    const auto section = dwg::readImageSection(*dwg::memorySource({bytes.begin(), bytes.end()}));
    ASSERT_TRUE(section && *section);
    for (const dwg::ImageEntry& entry : (*section)->entries)
        if (entry.code == dwg::image_code::png || entry.code == dwg::image_code::bitmap)
            std::fill_n(bytes.begin() + entry.start + 4, 8, '\x7F'); // width and height
    const auto picture = tools::thumbnailOf(place.write("huge.dwg", bytes), 300);
    ASSERT_TRUE(picture);
    EXPECT_EQ(std::max(picture->width, picture->height), 300) << "drawn";
}

TEST_F(Thumbnail, TheProgramWritesAPngAndTellsWhyItCannot) {
    const std::string file = plan().string(), png = (place.path() / "out.png").string();
    ASSERT_EQ(run("'" + file + "' '" + png + "' -s 128"), 0);
    std::vector<unsigned char> pixels;
    unsigned width = 0, height = 0;
    ASSERT_EQ(lodepng::decode(pixels, width, height, png, LCT_RGB), 0U);
    EXPECT_EQ(width, 128U);
    EXPECT_EQ(run("'" + place.write("text.dwg", "no drawing").string() + "' '" + png + "'"), 1);
    EXPECT_EQ(run("'" + (place.path() / "missing.dwg").string() + "' '" + png + "'"), 1);
    EXPECT_EQ(run("'" + file + "' '" + (place.path() / "no/folder.png").string() + "'"), 1);
    for (const char* const wrong : {"", "one", "a b c", "a b -s", "a b -s 0", "a b -s x", "a b -s 5000"})
        EXPECT_EQ(run(wrong), 2) << wrong;
}

} // namespace
