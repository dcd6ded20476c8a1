#include "tessaro/catalogue/ImageList.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/Raster.h"
#include "tests/catalogue/Support.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <random>

#include <stdexcept>

using catalogue_tests::Bytes;
using catalogue_tests::DataFile;
using catalogue_tests::ReadBitmap;

namespace {

struct Stream {
    int width, height, count;
    std::string name() const {
        return "imagelist-" + std::to_string(width) + "x" + std::to_string(height) + "-" + std::to_string(count);
    }
};

constexpr Stream kOwnStreams[] = {{66, 49, 1}, {66, 49, 2}, {130, 96, 1}};
constexpr Stream kSharedStreams[] = {{130, 96, 1}, {130, 96, 4}, {66, 49, 1}, {66, 49, 2}, {66, 49, 4}, {66, 49, 31}};

/// The picture that the reference streams have in slot i + 1.
Picture Sample(int width, int height, int i) {
    const Rgb brush{static_cast<std::uint8_t>(85 * i % 256), static_cast<std::uint8_t>(40 * i % 256),
                    static_cast<std::uint8_t>(255 - 60 * i % 256), 0};
    Picture picture(width, height);
    Rectangle(picture, 0, 0, width, height, {}, brush);
    Line(picture, i, 0, width, height - i, {});
    return picture;
}

ImageList SampleList(const Stream& stream) {
    ImageList list(stream.width, stream.height, 1, 25);
    EXPECT_EQ(list.Add(PlaceholderPicture(stream.width, stream.height)), 0);
    for (int i = 0; i + 1 < stream.count; ++i)
        EXPECT_EQ(list.Add(Sample(stream.width, stream.height, i)), i + 1);
    return list;
}

std::string Written(const ImageList& list) {
    std::string bytes;
    list.Write(bytes);
    return bytes;
}

std::unique_ptr<ImageList> ReadWhole(const std::string& bytes) {
    std::size_t used = 0;
    auto list = ImageList::Read(Bytes(bytes), used);
    if (list) {
        EXPECT_EQ(used, bytes.size());
    }
    return list;
}

void CheckStream(const std::filesystem::path& folder, const Stream& stream) {
    const std::string bytes = tests::readFile(folder / (stream.name() + ".bin"));
    ASSERT_FALSE(bytes.empty()) << stream.name();
    const auto list = ReadWhole(bytes);
    ASSERT_NE(list, nullptr) << stream.name();
    EXPECT_EQ(list->Count(), stream.count);
    EXPECT_EQ(Written(*list), bytes) << stream.name() << " read and written";
    const ImageList made = SampleList(stream);
    EXPECT_EQ(Written(made), bytes) << stream.name() << " made anew";
    EXPECT_EQ(made, *list);
}

/// Little-endian numbers of a stream made by hand.
class Stitched {
public:
    Stitched& Number(std::uint32_t value, int size) {
        for (int i = 0; i < size; ++i)
            bytes += static_cast<char>(value >> (8 * i));
        return *this;
    }
    Stitched& Head(int count, int maximum, int width, int height, int flags) {
        bytes += "IL";
        return Number(0x101, 2)
            .Number(count, 2)
            .Number(maximum, 2)
            .Number(28, 2)
            .Number(width, 2)
            .Number(height, 2)
            .Number(0xFFFFFFFF, 4)
            .Number(flags, 2)
            .Number(0xFFFFFFFF, 4)
            .Number(0xFFFFFFFF, 4);
    }
    Stitched& Bitmap(int width, int height, int bits, const std::vector<std::uint32_t>& colours) {
        bytes += "BM";
        return Number(0, 4)
            .Number(0, 4)
            .Number(54 + 4 * static_cast<std::uint32_t>(colours.size()), 4)
            .Number(40, 4)
            .Number(width, 4)
            .Number(height, 4)
            .Number(1, 2)
            .Number(bits, 2)
            .Number(0, 4)
            .Number(0, 4)
            .Number(0, 4)
            .Number(0, 4)
            .Number(bits <= 8 && colours.size() < (1u << bits) ? colours.size() : 0, 4)
            .Number(0, 4)
            .Colours(colours);
    }
    Stitched& Colours(const std::vector<std::uint32_t>& colours) {
        for (const std::uint32_t colour : colours)
            Number(colour, 4);
        return *this;
    }
    Stitched& Raw(const std::string& raw) {
        bytes += raw;
        return *this;
    }
    std::string bytes;
};

std::string Colour(const Picture& picture, int x, int y) {
    const Rgb c = PixelAt(picture, x, y);
    char text[8];
    std::snprintf(text, sizeof text, "%02x%02x%02x", c.red, c.green, c.blue);
    return text;
}

} // namespace

TEST(ImageList, ThePlatformsStreamsAreReadWrittenAndMadeToTheByte) {
    for (const Stream& stream : kOwnStreams)
        CheckStream(DataFile(""), stream);
}

TEST(ImageList, AllReferenceStreamsAreReadWrittenAndMadeToTheByte) {
    const auto reference = tests::sharedFolder("reference");
    if (reference.empty())
        GTEST_SKIP() << "the reference streams are absent";
    for (const Stream& stream : kSharedStreams)
        CheckStream(reference / "platform", stream);
}

TEST(ImageList, TheLastSlotIsDrawnBackAsThePlatformDoes) {
    const auto reference = tests::sharedFolder("reference");
    if (reference.empty())
        GTEST_SKIP() << "the reference pictures are absent";
    for (const Stream& stream : {Stream{130, 96, 1},
                                 {130, 96, 2},
                                 {130, 96, 4},
                                 {130, 96, 31},
                                 {66, 49, 1},
                                 {66, 49, 2},
                                 {66, 49, 4},
                                 {66, 49, 31}})
        EXPECT_EQ(SampleList(stream).Draw(stream.count - 1),
                  ReadBitmap(reference / "platform" / (stream.name() + "-last.bmp")))
            << stream.name();
}

TEST(ImageList, AColourBecomesTheNearestOfSixteenTheFirstOnATie) {
    EXPECT_EQ(NearestStandardColour(0, 0, 0), 0);
    EXPECT_EQ(NearestStandardColour(255, 255, 255), 15);
    EXPECT_EQ(NearestStandardColour(0x80, 0x80, 0x80), 8);
    EXPECT_EQ(NearestStandardColour(0xC0, 0xC0, 0xC0), 7);
    EXPECT_EQ(NearestStandardColour(0xA0, 0xA0, 0xA0), 7) << "as far from 80 as from C0";
    EXPECT_EQ(NearestStandardColour(0x40, 0, 0), 0) << "as far from 00 as from 80";
    EXPECT_EQ(NearestStandardColour(0x41, 0, 0), 1);
    for (std::size_t i = 0; i < kStandardColours.size(); ++i)
        EXPECT_EQ(NearestStandardColour(kStandardColours[i][0], kStandardColours[i][1], kStandardColours[i][2]), i);
}

TEST(ImageList, SlotsAreAddedReplacedAndDrawn) {
    ImageList list(4, 3, 1, 25);
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Width(), 4);
    EXPECT_EQ(list.Height(), 3);
    Picture red(4, 3), blue(4, 3);
    FillRectangle(red, 0, 0, 4, 3, {255, 0, 0, 0});
    FillRectangle(blue, 0, 0, 4, 3, {0, 0, 255, 0});
    EXPECT_EQ(list.Add(red), 0);
    EXPECT_EQ(list.Add(red), 1);
    EXPECT_TRUE(list.Replace(0, blue));
    EXPECT_EQ(list.Draw(0), blue);
    EXPECT_EQ(list.Draw(1), red);
    EXPECT_FALSE(list.Replace(2, blue));
    EXPECT_FALSE(list.Replace(-1, blue));
    EXPECT_EQ(list.Draw(2), Picture());
    EXPECT_EQ(list.Draw(-1), Picture());
}

TEST(ImageList, EveryPixelIsReducedByItselfWhateverItsNeighboursAre) {
    std::mt19937 random(5);
    for (const int width : {1, 2, 7, 8, 9, 16, 17, 66, 130})
        for (int variety : {1, 2, 5, 40}) {
            Picture picture(width, 12);
            for (int y = 0; y < picture.height; ++y)
                for (int x = 0; x < width; ++x) {
                    const auto value = random() % 3 == 0 ? random() % static_cast<unsigned>(variety) : 0;
                    const auto part = [&](unsigned factor) { return static_cast<std::uint8_t>(value * factor); };
                    SetPixel(picture, x, y, {part(37), part(101), part(11), 0});
                }
            const SlotPicture reduced = Reduced(picture);
            ASSERT_EQ(reduced.bytes.size(), reduced.LineBytes() * 12);
            for (int y = 0; y < picture.height; ++y)
                for (int x = 0; x < width; ++x) {
                    const std::uint8_t pair =
                        reduced
                            .bytes[reduced.LineBytes() * static_cast<std::size_t>(y) + static_cast<std::size_t>(x / 2)];
                    const std::uint8_t* const rgb = &picture.pixels[static_cast<std::size_t>(y * width + x) * 3];
                    ASSERT_EQ(x % 2 == 0 ? pair >> 4 : pair & 15, NearestStandardColour(rgb[0], rgb[1], rgb[2]))
                        << width << ' ' << variety << ' ' << x << ' ' << y;
                }
        }
}

TEST(ImageList, ASlotThatIsTakenBackIsGivenAgain) {
    for (int count = 1; count <= 9; ++count) {
        ImageList list = SampleList({66, 49, count}), other = SampleList({66, 49, count});
        EXPECT_EQ(list.Add(PlaceholderPicture(66, 49)), count);
        list.RemoveLast();
        EXPECT_EQ(list.Count(), count);
        EXPECT_EQ(list.Draw(count).pixels.size(), 0u);
        EXPECT_EQ(list.Add(Sample(66, 49, 7)), count);
        other.Add(Sample(66, 49, 7));
        EXPECT_EQ(Written(list), Written(other)) << count;
    }
    ImageList empty(66, 49, 1, 25);
    empty.RemoveLast();
    EXPECT_EQ(empty.Count(), 0);
}

TEST(ImageList, APictureOfAnotherSizeIsCutOrPaddedWithBlack) {
    ImageList list(3, 2, 1, 25);
    Picture large(5, 5), small(1, 1);
    FillRectangle(large, 0, 0, 5, 5, {255, 255, 255, 0});
    SetPixel(small, 0, 0, {255, 0, 0, 0});
    list.Add(large);
    list.Add(small);
    Picture white(3, 2), corner(3, 2);
    FillRectangle(white, 0, 0, 3, 2, {255, 255, 255, 0});
    SetPixel(corner, 0, 0, {255, 0, 0, 0});
    EXPECT_EQ(list.Draw(0), white);
    EXPECT_EQ(list.Draw(1), corner);
}

TEST(ImageList, AnOddWidthKeepsItsPixelsThroughTheStream) {
    ImageList list(3, 2, 1, 25);
    for (int slot = 0; slot < 6; ++slot) {
        Picture picture(3, 2);
        for (int i = 0; i < 6; ++i) {
            const auto& c = kStandardColours[static_cast<std::size_t>((slot * 5 + i * 3) % 16)];
            SetPixel(picture, i % 3, i / 3, {c[0], c[1], c[2], 0});
        }
        list.Add(picture);
        EXPECT_EQ(list.Draw(slot), picture);
    }
    const auto back = ReadWhole(Written(list));
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(*back, list);
}

TEST(ImageList, TheMaximumStartsAtTwoAndGrowsByTwentyNine) {
    ImageList list(1, 1, 1, 25);
    const auto maximum = [&] { return static_cast<unsigned char>(Written(list)[6]); };
    EXPECT_EQ(maximum(), 2);
    for (int count = 1; count <= 60; ++count) {
        list.Add(Picture(1, 1));
        EXPECT_EQ(maximum(), count < 2 ? 2 : count < 31 ? 31 : count < 60 ? 60 : 89) << count;
    }
}

TEST(ImageList, AListIsFullWhereItsStreamCanCountNoFurther) {
    ImageList list(1, 1, 1, 65531);
    EXPECT_EQ(list.Add(Picture(1, 1)), 0);
    EXPECT_EQ(list.Add(Picture(1, 1)), 1);
    ImageList usual(1, 1, 1, 25);
    for (int i = 0; i < 65535; ++i)
        ASSERT_EQ(usual.Add(Picture(1, 1)), i);
    EXPECT_EQ(usual.Add(Picture(1, 1)), -1);
    EXPECT_EQ(usual.Add(Picture(1, 1)), -1);
    EXPECT_EQ(usual.Count(), 65535);
    const auto back = ReadWhole(Written(usual));
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(*back, usual);
    EXPECT_THROW(ImageList(0, 1, 1, 25), std::invalid_argument);
    EXPECT_THROW(ImageList(1, 4097, 1, 25), std::invalid_argument);
}

TEST(ImageList, AGrowthThatAStreamClaimsIsNotCarriedOutAtOnce) {
    std::string bytes = Written(SampleList({3, 2, 2}));
    bytes[8] = '\xFF';
    bytes[9] = '\xFF';
    const auto list = ReadWhole(bytes);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(Written(*list), bytes);
    for (int i = 0; i < 40; ++i)
        ASSERT_EQ(list->Add(Picture(3, 2)), 2 + i);
    EXPECT_LT(Written(*list).size(), 10000u);
}

TEST(ImageList, WhereAListEndsIsToldFromItsHeads) {
    const std::string first = Written(SampleList({66, 49, 2})), second = Written(SampleList({130, 96, 1}));
    const std::string both = first + second + "rest";
    std::size_t used = 0;
    const auto large = ImageList::Read(Bytes(both), used);
    ASSERT_NE(large, nullptr);
    EXPECT_EQ(used, first.size());
    const auto next = ImageList::Read(Bytes(both).subspan(used), used);
    ASSERT_NE(next, nullptr);
    EXPECT_EQ(used, second.size());
    EXPECT_EQ(next->Width(), 130);
}

TEST(ImageList, StreamsOfAllDepthsAreRead) {
    // One slot of 2 by 1 in a bitmap of 8 by 1: the first pixel red, the second white.
    const auto head = [] { return std::move(Stitched().Head(1, 1, 2, 1, 0)); };
    const auto zeros = [](std::size_t count) { return std::string(count, '\0'); };
    std::vector<std::uint32_t> table(256);
    table[1] = 0xFF0000;
    table[2] = 0xFFFFFF;
    const auto part = [&](std::size_t count) {
        return std::vector<std::uint32_t>(table.begin(), table.begin() + count);
    };
    const std::pair<int, std::string> cases[] = {
        {1, head().Bitmap(8, 1, 1, {0xFFFFFF, 0xFF0000}).Raw(std::string("\x80\0\0\0", 4)).bytes},
        {4, head().Bitmap(8, 1, 4, part(16)).Raw("\x12" + zeros(3)).bytes},
        {8, head().Bitmap(8, 1, 8, part(256)).Raw("\x01\x02" + zeros(6)).bytes},
        {16, head().Bitmap(8, 1, 16, {}).Raw(std::string("\x00\x7C\xFF\x7F", 4) + zeros(12)).bytes},
        {24, head().Bitmap(8, 1, 24, {}).Raw(std::string("\x00\x00\xFF\xFF\xFF\xFF", 6) + zeros(18)).bytes},
        {32, head().Bitmap(8, 1, 32, {}).Raw(std::string("\x00\x00\xFF\x00\xFF\xFF\xFF\x00", 8) + zeros(24)).bytes}};
    for (const auto& [bits, bytes] : cases) {
        const auto list = ReadWhole(bytes);
        ASSERT_NE(list, nullptr) << bits;
        EXPECT_EQ(Colour(list->Draw(0), 0, 0), "ff0000") << bits;
        EXPECT_EQ(Colour(list->Draw(0), 1, 0), "ffffff") << bits;
    }
    const auto short8 = ReadWhole(head().Bitmap(8, 1, 8, part(3)).Raw("\x01\x02" + zeros(6)).bytes);
    ASSERT_NE(short8, nullptr) << "with a short colour table";
    EXPECT_EQ(Colour(short8->Draw(0), 1, 0), "ffffff");
}

TEST(ImageList, ATopDownBitmapIsRead) {
    const std::string bytes = Stitched()
                                  .Head(1, 1, 1, 2, 0)
                                  .Bitmap(4, -2, 24, {})
                                  .Raw("\xFF\xFF\xFF" + std::string(9, '\0') + std::string(12, '\0'))
                                  .bytes;
    const auto list = ReadWhole(bytes);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(Colour(list->Draw(0), 0, 0), "ffffff");
    EXPECT_EQ(Colour(list->Draw(0), 0, 1), "000000");
}

TEST(ImageList, AMaskIsPassedOver) {
    const std::string bytes = Stitched()
                                  .Head(1, 1, 2, 1, 1)
                                  .Bitmap(8, 1, 24, {})
                                  .Raw(std::string(24, '\xFF'))
                                  .Bitmap(8, 1, 1, {0, 0xFFFFFF})
                                  .Raw(std::string(4, '\0'))
                                  .bytes;
    const auto list = ReadWhole(bytes);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(Colour(list->Draw(0), 0, 0), "ffffff");
    std::size_t used = 0;
    EXPECT_EQ(ImageList::Read(Bytes(bytes).first(bytes.size() - 1), used), nullptr) << "a cut mask";
}

TEST(ImageList, BytesThatAreNoListAreRefused) {
    const std::string good = Written(SampleList({66, 49, 1}));
    std::size_t used = 0;
    EXPECT_EQ(ImageList::Read({}, used), nullptr);
    const auto refused = [&](std::size_t at, char value, const char* what) {
        std::string bytes = good;
        bytes[at] = value;
        EXPECT_EQ(ImageList::Read(Bytes(bytes), used), nullptr) << what;
    };
    refused(0, 'X', "no mark");
    refused(3, 2, "another version");
    refused(4, 3, "more slots than room");
    refused(6, 100, "more room than the bitmap has");
    refused(10, 0, "no width");
    refused(11, '\x7F', "a width beyond reason");
    refused(28, 'X', "no bitmap");
    refused(38, 10, "pixels inside the heads");
    refused(41, '\x7F', "pixels past the end");
    refused(42, 12, "another bitmap head");
    refused(46, 1, "another bitmap width");
    refused(50, 1, "another bitmap height");
    refused(54, 2, "planes");
    refused(56, 5, "a depth of 5");
    refused(58, 1, "compressed");
    refused(74, 17, "more colours than the depth has");
}

TEST(ImageList, AStreamCutAnywhereIsRefused) {
    const std::string good = Written(SampleList({3, 2, 2}));
    std::size_t used = 0;
    for (std::size_t length = 0; length < good.size(); ++length)
        ASSERT_EQ(ImageList::Read(Bytes(good).first(length), used), nullptr) << length;
    EXPECT_NE(ImageList::Read(Bytes(good), used), nullptr);
}

TEST(ImageList, AStreamWithAnyByteFlippedIsReadOrRefused) {
    const std::string good = Written(SampleList({3, 2, 2}));
    for (std::size_t at = 0; at < good.size(); ++at)
        for (const int flip : {0x01, 0x80, 0xFF}) {
            std::string bytes = good;
            bytes[at] = static_cast<char>(bytes[at] ^ flip);
            std::size_t used = 0;
            if (const auto list = ImageList::Read(Bytes(bytes), used)) {
                EXPECT_LE(used, bytes.size());
                for (int slot = 0; slot < list->Count(); ++slot)
                    EXPECT_EQ(list->Draw(slot).width, list->Width());
            }
        }
}
