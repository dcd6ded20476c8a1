#include "tessaro/browser/preview/Dib.h"
#include "tessaro/reading/PreviewPng.h"
#include "tests/reading/ExamineFixture.h"

#include <sys/resource.h>
#include <zlib.h>

using namespace tests;
using namespace std::string_literals;

namespace {

constexpr std::uint32_t kRed = 0x0000ff;
constexpr std::uint32_t kGreen = 0x00ff00;
constexpr std::uint32_t kBlue = 0xff0000;

std::string bitmap(std::uint32_t colour) {
    return plainBitmap(20, 20, colour);
}

std::string png(std::uint32_t colour) {
    return plainPng(20, 20, colour);
}

using ExamineSection = ExamineFixture;

TEST_F(ExamineSection, aBitmapEntryIsThePreview) {
    examine(DrawingBuilder("AC1015").entry(2, bitmap(kGreen)));
    EXPECT_EQ(block.fileType, 16);
    ASSERT_TRUE(hasPicture());
    EXPECT_EQ(middle(), kGreen);
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].width, 20);
    EXPECT_EQ(calls[0].height, 20);
    EXPECT_TRUE(calls[0].wantInsPts);
}

TEST_F(ExamineSection, aPngEntryIsThePreview) {
    examine(DrawingBuilder("AC1027").entry(6, png(kBlue)));
    EXPECT_EQ(block.fileType, 20);
    ASSERT_TRUE(hasPicture());
    EXPECT_EQ(middle(), kBlue);
    EXPECT_EQ(calls.at(0).width, 20);
}

TEST_F(ExamineSection, everyTypeFrom14OnHasASection) {
    for (const char* magic : {"AC1012", "AC1014", "AC1015", "AC1018", "AC1021", "AC1024", "AC1027"}) {
        block = Block{};
        block.name = L"a";
        examine(DrawingBuilder(magic).entry(2, bitmap(kGreen)));
        EXPECT_TRUE(hasPicture()) << magic;
    }
}

TEST_F(ExamineSection, theLastOfSeveralImagesWins) {
    examine(DrawingBuilder("AC1015").entry(2, bitmap(kRed)).entry(2, bitmap(kGreen)));
    EXPECT_EQ(middle(), kGreen);
}

TEST_F(ExamineSection, aPngBehindABitmapIsUsed) {
    examine(DrawingBuilder("AC1027").entry(1, "x\0"s).entry(2, bitmap(kRed)).entry(6, png(kGreen)));
    ASSERT_TRUE(hasPicture());
    EXPECT_EQ(middle(), kGreen);
}

TEST_F(ExamineSection, aBitmapBehindAPngIsTakenForAPng) {
    examine(DrawingBuilder("AC1027").entry(6, png(kRed)).entry(2, bitmap(kGreen)));
    EXPECT_FALSE(hasPicture()) << "its bytes are no PNG";
    EXPECT_EQ(calls.at(0).width, 0);

    examine(DrawingBuilder("AC1027").entry(6, png(kRed)).entry(2, png(kGreen)));
    ASSERT_TRUE(hasPicture()) << "PNG bytes under the other code are";
    EXPECT_EQ(middle(), kGreen);
}

TEST_F(ExamineSection, otherCodesAreSkipped) {
    DrawingBuilder drawing("AC1015");
    drawing.entry(2, bitmap(kGreen));
    for (const int code : {0, 3, 4, 5, 7, 255})
        drawing.entry(static_cast<std::uint8_t>(code), bitmap(kRed));
    examine(drawing);
    EXPECT_EQ(middle(), kGreen);
}

TEST_F(ExamineSection, headerTextIsTheDescription) {
    answer = nullptr;
    examine(DrawingBuilder("AC1015").entry(1, "Eckschrank, wei\xC3\x9F\0rest"s));
    EXPECT_EQ(block.description, L"Eckschrank, weiß");
    EXPECT_FALSE(block.descriptionPending);
    examine(DrawingBuilder("AC1015").entry(1, "old \xB0"s));
    EXPECT_EQ(block.description, L"old °") << "without an end, and no UTF-8";
}

TEST_F(ExamineSection, theLastOfSeveralHeaderTextsWins) {
    examine(DrawingBuilder("AC1015").entry(1, "first\0"s).entry(1, "second\0"s));
    EXPECT_EQ(block.description, L"second");
}

TEST_F(ExamineSection, theHelpersDescriptionOverwritesTheHeaderText) {
    answer = answerPlainly;
    EXPECT_TRUE(examine(DrawingBuilder("AC1015").entry(1, "header\0"s)));
    EXPECT_EQ(block.description, L"from the helper");
}

TEST_F(ExamineSection, anEmptyHeaderTextMarksAKnownDescriptionAsPending) {
    block.description = L"from the cache";
    examine(DrawingBuilder("AC1015").entry(1, std::string(80, '\0')));
    EXPECT_EQ(block.description, L"from the cache");
    EXPECT_TRUE(block.descriptionPending);
    EXPECT_TRUE(directory.descriptionsPending);
}

TEST_F(ExamineSection, anEmptyHeaderTextWithoutADescriptionMarksNothing) {
    examine(DrawingBuilder("AC1015").entry(1, std::string(80, '\0')));
    EXPECT_FALSE(block.descriptionPending);
    EXPECT_FALSE(directory.descriptionsPending);
}

TEST_F(ExamineSection, pendingFlagsStayThoughTheHelperGivesAnEmptyDescription) {
    block.description = L"from the cache";
    answer = [](HelperCall& call) {
        const HelperResult result = answerPlainly(call);
        call.description = L"";
        return result;
    };
    EXPECT_TRUE(examine(DrawingBuilder("AC1015").entry(1, "\0"s)));
    EXPECT_EQ(block.description, L"");
    EXPECT_TRUE(block.descriptionPending);
    EXPECT_TRUE(directory.descriptionsPending);
}

TEST_F(ExamineSection, aHeaderTextOfNoBytesCountsAsEmpty) {
    block.description = L"known";
    examine(DrawingBuilder("AC1015").entryAt(1, 100000, 80));
    EXPECT_TRUE(block.descriptionPending);
}

TEST_F(ExamineSection, withoutAnImageTheHelperIsAskedWithoutOne) {
    answer = answerPlainly;
    block.imageIndex = 3;
    EXPECT_TRUE(examine(DrawingBuilder("AC1015"))) << "its result replaces the missing image's";
    EXPECT_EQ(calls.at(0).width, 0);
    EXPECT_FALSE(calls.at(0).wantInsPts);
    EXPECT_EQ(block.imageIndex, 3) << "the Block keeps the picture that it had";
}

TEST_F(ExamineSection, aBitmapBesideADrawingWithASectionIsNotUsed) {
    folder.write("a.bmp", bitmapFile(bitmap(kGreen)));
    examine(DrawingBuilder("AC1015"));
    EXPECT_FALSE(hasPicture());
}

TEST_F(ExamineSection, declaredSizesAreNotTrusted) {
    const std::string whole = DrawingBuilder("AC1015").entryAt(2, 48 + 21 + 9, 0xffffffff);
    examine(whole + bitmap(kGreen));
    ASSERT_TRUE(hasPicture()) << "what is there is read";
    EXPECT_EQ(middle(), kGreen);
}

TEST_F(ExamineSection, entriesBehindTheEndAreNoPreview) {
    for (const std::uint32_t start : {0U, 5U, 100000U, 0xfffffff0U}) {
        for (const std::uint32_t size : {0U, 1U, 39U, 0xffffffffU}) {
            if (start < 100000 && size > 39)
                continue;
            for (const std::uint8_t code : {std::uint8_t{2}, std::uint8_t{6}}) {
                examine(DrawingBuilder("AC1015").entryAt(code, start, size));
                EXPECT_FALSE(hasPicture()) << "at " << start << ", " << size << " bytes, code " << int{code};
            }
        }
    }
}

TEST_F(ExamineSection, anAddressBehindTheEndIsASectionWithoutEntries) {
    for (const std::uint32_t address : {100000U, 0x7fffffffU, 0xffffffffU}) {
        block.fileType = 0;
        examine(DrawingBuilder("AC1015").entry(2, bitmap(kGreen)).address(address));
        EXPECT_EQ(block.fileType, 16);
        EXPECT_FALSE(hasPicture());
    }
    EXPECT_EQ(calls.size(), 3U);
}

TEST_F(ExamineSection, moreEntriesCountedThanThereAreEndWithTheFile) {
    examine(DrawingBuilder("AC1015").entryAt(2, 48 + 21 + 9, 2000).count(255).bytes() + bitmap(0));
    EXPECT_EQ(block.fileType, 16);
    EXPECT_EQ(calls.size(), 1U);
}

TEST_F(ExamineSection, aDrawingCutAnywhereIsReadAsFarAsItGoes) {
    const std::string whole = DrawingBuilder("AC1015").entry(1, "text\0"s).entry(2, bitmap(kGreen));
    for (std::size_t length = 0; length <= whole.size(); length += length < 200 ? 1 : 37) {
        block = Block{};
        block.name = L"a";
        calls.clear();
        examine(cut(whole, length));
        EXPECT_EQ(calls.size(), 1U) << length << " bytes";
        EXPECT_EQ(block.fileType, length < 6 ? 0 : 16) << length << " bytes";
    }
}

TEST_F(ExamineSection, everyFlippedByteIsSurvived) {
    const std::string whole = DrawingBuilder("AC1027").entry(1, "text\0"s).entry(6, png(kGreen)).entry(2, png(kRed));
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string bent = whole;
        bent[i] = static_cast<char>(~bent[i]);
        calls.clear();
        examine(bent);
        ASSERT_EQ(calls.size(), 1U) << "byte " << i;
    }
}

TEST_F(ExamineSection, missingPixelsAreZeroBytes) {
    // Bottom rows come first, so a cut takes the top away.
    const std::string whole = DrawingBuilder("AC1015").entry(2, bitmap(0xffffff));
    SetBackground(0x0000ff);
    examine(cut(whole, whole.size() - 60 * 10));
    ASSERT_TRUE(hasPicture());
    const Picture picture = directory.largeImages->Draw(block.imageIndex);
    EXPECT_EQ(picture.pixels.at((20 * 130 + 65) * 3 + 1), 0) << "above";
    EXPECT_EQ(picture.pixels.at((70 * 130 + 65) * 3 + 1), 255) << "below";
}

TEST_F(ExamineSection, anUndecodablePngIsNoPreview) {
    answer = answerPlainly;
    std::string broken = png(kGreen);
    broken.resize(broken.size() / 2);
    EXPECT_TRUE(examine(DrawingBuilder("AC1027").entry(6, broken)));
    EXPECT_FALSE(hasPicture());
    EXPECT_EQ(calls.at(0).width, 0);
}

TEST_F(ExamineSection, aPngOfAbsurdSizeIsNotDecoded) {
    std::string huge = png(kGreen);
    for (const std::size_t at : {16U, 20U})
        huge.replace(at, 4, "\x00\x00\xff\xff"s);
    examine(DrawingBuilder("AC1027").entry(6, huge));
    EXPECT_FALSE(hasPicture());
}

PreviewBytes dibOf(unsigned width, unsigned height, const std::vector<std::uint8_t>& rgb) {
    PreviewBytes out;
    RgbToDib(out, rgb.data(), width, height);
    return out;
}

TEST(RgbToDib, rowsAreBottomUpInBlueGreenRedAndPadded) {
    const PreviewBytes preview = dibOf(1, 2, {1, 2, 3, 4, 5, 6});
    const PreviewBytes expected = {40, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 1, 0, 24, 0, 0, 0, 0, 0, 8, 0, 0, 0,
                                   1,  0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,  0, 6, 5, 4, 0, 3, 2, 1, 0};
    EXPECT_EQ(preview, expected);
}

TEST(RgbToDib, aRowOfAMultipleOfFourHasNoPadding) {
    EXPECT_EQ(dibOf(4, 1, std::vector<std::uint8_t>(12, 9)).size(), 40U + 12);
    EXPECT_EQ(dibOf(3, 1, std::vector<std::uint8_t>(9, 9)).size(), 40U + 12);
}

TEST(RgbToDib, theHeaderKeepsTheLow16BitsOfTheWidth) {
    const PreviewBytes preview = dibOf(65537, 1, std::vector<std::uint8_t>(65537 * 3, 9));
    const DibHeader header = ReadDibHeader(preview);
    EXPECT_EQ(header.width, 1);
    EXPECT_EQ(header.height, 1);
    EXPECT_EQ(preview.size(), 40U + 65537 * 3 + 1);
}

TEST(DecodePng, aWidePngKeepsTheLow16BitsOfItsWidth) {
    const std::string wide = plainPng(65540, 1, kGreen);
    const auto preview = DecodePng({reinterpret_cast<const std::uint8_t*>(wide.data()), wide.size()});
    ASSERT_TRUE(preview);
    EXPECT_EQ(ReadDibHeader(*preview).width, 4);
}

std::string bigEndian(std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

std::string chunk(const std::string& name, const std::string& content) {
    const std::string data = name + content;
    const uLong check = crc32(0, reinterpret_cast<const Bytef*>(data.data()), static_cast<uInt>(data.size()));
    return bigEndian(static_cast<std::uint32_t>(content.size())) + data + bigEndian(static_cast<std::uint32_t>(check));
}

std::optional<PreviewBytes> decoded(const std::string& png) {
    return DecodePng({reinterpret_cast<const std::uint8_t*>(png.data()), png.size()});
}

constexpr std::size_t kFirstChunkEnd = 33;

/// So many megabytes of zeros, packed.
std::string packedZeros(int megabytes) {
    const std::vector<Bytef> zeros(1 << 20);
    std::vector<Bytef> packed(1 << 20);
    z_stream stream{};
    deflateInit(&stream, 9);
    stream.next_out = packed.data();
    stream.avail_out = static_cast<uInt>(packed.size());
    for (int i = 0; i < megabytes; ++i) {
        stream.next_in = const_cast<Bytef*>(zeros.data());
        stream.avail_in = static_cast<uInt>(zeros.size());
        deflate(&stream, i + 1 == megabytes ? Z_FINISH : Z_NO_FLUSH);
    }
    const std::string result(packed.begin(), packed.begin() + static_cast<std::ptrdiff_t>(stream.total_out));
    deflateEnd(&stream);
    return result;
}

TEST(DecodePng, packedDataThatUnpacksBeyondThePictureIsNotUnpacked) {
    const std::string bomb = plainPng(2, 2, 0).substr(0, kFirstChunkEnd) + chunk("IDAT", packedZeros(400));
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    EXPECT_FALSE(decoded(bomb));
    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 100 * 1024) << "kilobytes";
}

TEST(DecodePng, profilesAndTextsBesideThePictureAreNotUnpacked) {
    const std::string plain = plainPng(20, 16, kGreen);
    ASSERT_TRUE(decoded(plain));
    for (const std::string& note : {chunk("iCCP", "profile\0\0 nothing packed"s), chunk("zTXt", "key\0\0 nor here"s),
                                    chunk("sBIT", "of another length"), chunk("teSt", "")}) {
        std::string noted = plain;
        EXPECT_EQ(decoded(noted.insert(kFirstChunkEnd, note)), decoded(plain)) << note.substr(4, 4);
    }
    std::string unknown = plain;
    EXPECT_FALSE(decoded(unknown.insert(kFirstChunkEnd, chunk("TEST", "")))) << "what a reader must know";
}

TEST(DecodePng, aChunkThatBreaksOffIsTheDecodersToJudge) {
    const std::string plain = plainPng(20, 16, kGreen);
    EXPECT_EQ(decoded(plain + chunk("teXt", "behind the end").substr(0, 15)), decoded(plain));
    for (std::size_t length = 0; length + 12 < plain.size(); ++length)
        EXPECT_FALSE(decoded(plain.substr(0, length))) << length;
}

TEST(DecodePng, anythingElseIsNone) {
    EXPECT_FALSE(DecodePng({}));
    const std::string text(100, 'x');
    EXPECT_FALSE(DecodePng({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}));
}

} // namespace
