// Descriptions written into real drawings of the formats that are saved in their own.
#include "tests/database/only_the_summary.h"
#include "tests/reading/WriteDescriptionFixture.h"

#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/File.h"
#include "tessaro/reading/DrawingType.h"
#include "tessaro/reading/PreviewSection.h"
#include "tessaro/reading/WriteDescription.h"
#include "tests/support/Shell.h"

#include <algorithm>
#include <array>

namespace fs = std::filesystem;
using namespace tests;

namespace {

constexpr std::int32_t kType2000 = 16;

std::int32_t TypeOf(const fs::path& file) {
    std::array<std::uint8_t, kMagicSize> magic{};
    platform::File(file.wstring(), platform::File::modeRead).Read(magic.data(), magic.size());
    return DrawingType(magic);
}

/// The embedded picture as stored; bitmap or PNG.
std::vector<std::uint8_t> ImageOf(const fs::path& drawing) {
    platform::File file(drawing.wstring(), platform::File::modeRead);
    const PreviewSection section = ReadPreviewSection(file);
    return section.image ? ReadEntry(file, *section.image, kLargestPreview) : std::vector<std::uint8_t>();
}

/// All that a reader that nobody here wrote finds in a drawing of the release 2000; empty without the program.
std::string ReadIndependently(const fs::path& file) {
    auto [status, text] = runShell("ogrinfo -ro -al " + quoted(file.string()));
    if (status != 0)
        return {};
    // A text where there was none is an object of its own, with the next handle.
    const std::size_t seed = std::min(text.find("$HANDSEED="), text.size());
    return text.erase(seed, text.find('\n', seed) - seed);
}

class RealDrawings : public WriteDescriptionTest {
protected:
    /// Fills `drawings`, or skips the test.
    void Find(std::int32_t type) {
        const fs::path real = sharedFolder("drawings");
        if (real.empty())
            GTEST_SKIP() << "no real drawings beside the checkout";
        for (const auto& entry : fs::recursive_directory_iterator(real))
            if (entry.path().extension() == ".dwg" && TypeOf(entry.path()) == type)
                drawings.push_back(entry.path());
        ASSERT_FALSE(drawings.empty());
    }
    /// A copy that may be written, under the name that the Block has.
    void Copy(const fs::path& drawing) const {
        fs::copy_file(drawing, Drawing(), fs::copy_options::overwrite_existing);
        fs::permissions(Drawing(), fs::perms::owner_write, fs::perm_options::add);
    }
    std::vector<fs::path> drawings;
};

class WriteDescriptionReal : public RealDrawings, public testing::WithParamInterface<std::int32_t> {
protected:
    void SetUp() override { Find(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(Types, WriteDescriptionReal, testing::Range(kType2000, 21),
                         [](const testing::TestParamInfo<std::int32_t>& type) {
                             return "Type" + std::to_string(type.param);
                         });

class WriteDescriptionReadElsewhere : public RealDrawings {
protected:
    void SetUp() override { Find(kType2000); } // The only release that a reader of the distribution knows.
};

} // namespace

TEST_P(WriteDescriptionReal, DrawingsKeepTheirFormatPictureAndEveryObjectAndTakeTheText) {
    for (const fs::path& drawing : drawings) {
        SCOPED_TRACE(drawing.string());
        Copy(drawing);
        const auto picture = ImageOf(Drawing());
        EXPECT_TRUE(WriteDescription(AddBlock(GetParam(), L"Ventil, Größe 3/4\", 弁")));
        EXPECT_EQ(CommentsOf(Drawing()), L"Ventil, Größe 3/4\", 弁");
        EXPECT_EQ(TypeOf(Drawing()), GetParam());
        EXPECT_EQ(ImageOf(Drawing()), picture);
        expectOnlyTheSummaryChanged(drawing, Drawing());
        EXPECT_EQ(Files(), std::vector<std::string>{"door.dwg"});
    }
    RecordProperty("drawings", static_cast<int>(drawings.size()));
}

TEST_F(WriteDescriptionReadElsewhere, AnIndependentReaderFindsTheSameInADrawingOfRelease2000) {
    constexpr int kEnough = 8;
    int compared = 0;
    for (const fs::path& drawing : drawings) {
        if (compared == kEnough)
            break;
        SCOPED_TRACE(drawing.string());
        Copy(drawing);
        const std::string before = ReadIndependently(Drawing());
        if (before.find("Feature Count: ") == std::string::npos)
            continue; // It reads nothing of this one, or is not there.
        EXPECT_TRUE(WriteDescription(AddBlock(kType2000, L"Ventil, Größe 3/4\", 弁")));
        EXPECT_EQ(ReadIndependently(Drawing()), before);
        ++compared;
    }
    if (compared == 0)
        GTEST_SKIP() << "ogrinfo is absent";
    RecordProperty("compared", compared);
}
