#include "tessaro/browser/painting/PaintPreview.h"
#include "tessaro/browser/preview/PictureContext.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/DrawingType.h"
#include "tests/reading/DrawingBuilder.h"
#include "tests/reading/HelperFixture.h"
#include "tests/support/Sha256.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <map>

using namespace tests;

namespace {

/// Digests by drawing, background, and "screen" or "print", joined by blanks.
using Digests = std::map<std::string, std::string>;

/// The list is objects in objects of text: its words in their order tell all.
Digests readDigests(const std::string& json) {
    Digests digests;
    std::string drawing, background, kind;
    for (std::size_t at = json.find('"'); at != std::string::npos; at = json.find('"', at)) {
        const std::size_t end = json.find('"', at + 1);
        const std::string word = json.substr(at + 1, end - at - 1);
        at = end + 1;
        if (word.ends_with(".dwg"))
            drawing = word;
        else if (word == "screen" || word == "print")
            kind = word;
        else if (word.size() == 6)
            background = word;
        else
            digests[drawing + ' ' + background + ' ' + kind] = word;
    }
    return digests;
}

Digests referenceDigests() {
    const auto reference = sharedFolder("reference");
    return reference.empty() ? Digests() : readDigests(readFile(reference / "pictures" / "paint-hashes.json"));
}

class PaintReference : public HelperFixture, public testing::WithParamInterface<const char*> {
protected:
    const std::filesystem::path drawings = sharedFolder("drawings");

    Picture painted(const std::string& name, const std::string& background, bool forScreen) {
        const std::filesystem::path file = drawings / name;
        SetBackground(static_cast<std::uint32_t>(std::stoul(background, nullptr, 16)));
        Directory directory;
        directory.path = platform::FromNarrow(file.parent_path().string());
        Block block;
        block.name = platform::FromNarrow(file.stem().string());
        std::array<std::uint8_t, kMagicSize> magic{};
        const std::string bytes = readFile(file).substr(0, magic.size());
        std::copy(bytes.begin(), bytes.end(), magic.begin());
        block.fileType = DrawingType(magic);

        Picture picture = forScreen ? Picture(260, 190) : Picture(520, 384);
        std::fill(picture.pixels.begin(), picture.pixels.end(),
                  std::uint8_t{forScreen ? std::uint8_t{0} : std::uint8_t{255}});
        auto preview = LoadPreview(directory, block);
        if (!preview)
            return {};
        if (background == "302821")
            preview->points = {40.5, 33.25};
        PictureContext context(picture);
        DrawPreview(context, *preview, block.fileType, 0, 0, forScreen ? 1 : 2, forScreen);
        return picture;
    }
};

TEST_P(PaintReference, realDrawingsGiveTheReferencePaint) {
    const Digests expected = referenceDigests();
    if (expected.empty() || drawings.empty())
        GTEST_SKIP() << "no shared drawings and reference pictures";
    ASSERT_EQ(expected.size(), 108U * 3 * 2);
    const std::string background = GetParam();
    int compared = 0;
    for (const auto& [key, digest] : expected) {
        const std::size_t at = key.find(".dwg " + background);
        if (at == std::string::npos)
            continue;
        const Picture picture = painted(key.substr(0, at + 4), background, key.ends_with("screen"));
        EXPECT_EQ(sha256(picture.pixels), digest) << key;
        ++compared;
    }
    EXPECT_EQ(compared, 108 * 2);
}

INSTANTIATE_TEST_SUITE_P(backgrounds, PaintReference, testing::Values("000000", "ffffff", "302821"));

TEST(PaintTool, writesTheReferencePaint) {
    const Digests expected = referenceDigests();
    const auto drawings = sharedFolder("drawings");
    if (expected.empty() || drawings.empty())
        GTEST_SKIP() << "no shared drawings and reference pictures";
    const TemporaryFolder out;
    int number = 0;
    for (const auto& [key, digest] : expected) {
        if (!key.ends_with(" 302821 screen") || number++ % 12 != 0)
            continue;
        const std::string name = key.substr(0, key.find(" 302821"));
        const std::string command = "'" TESSARO_BIN_DIR "/tessaro-examine' '" + (drawings / name).string() +
                                    "' --background 302821 --mark 40.5,33.25 --paint '" + out.path().string() +
                                    "' > /dev/null";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
        for (const std::string& kind : {std::string("screen"), std::string("print")}) {
            const std::string pixels = readFile(out.path() / kind);
            EXPECT_EQ(sha256({reinterpret_cast<const std::uint8_t*>(pixels.data()), pixels.size()}),
                      expected.at(name + " 302821 " + kind))
                << name;
        }
    }
}

TEST(PaintTool, writesTheScreensAndThePapersPixels) {
    const TemporaryFolder folder;
    const auto file = folder.write("a.dwg", DrawingBuilder("AC1015").entry(2, plainBitmap(100, 100, 0x00f000)).bytes());
    const std::string command = "'" TESSARO_BIN_DIR "/tessaro-examine' '" + file.string() +
                                "' --background 302821 --no-marks --paint '" + (folder.path() / "out").string() +
                                "' > /dev/null";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::string screen = readFile(folder.path() / "out" / "screen");
    const std::string print = readFile(folder.path() / "out" / "print");
    ASSERT_EQ(screen.size(), 260U * 190 * 3);
    ASSERT_EQ(print.size(), 520U * 384 * 3);
    EXPECT_EQ(screen.substr(0, 3), std::string("\0\0\0", 3)) << "the frame's pen";
    EXPECT_EQ(screen.substr((10 * 260 + 10) * 3, 3), "\x21\x28\x30");
    EXPECT_EQ(print.substr((10 * 520 + 10) * 3, 3), "\xff\xff\xff");
}

} // namespace
