// Each packing is tested from literals: packed bytes on the left, what they stand for on the right.

#include "editor/dwg/checksum.h"
#include "editor/dwg/lz_2004.h"
#include "editor/dwg/lz_2007.h"
#include "editor/dwg/reed_solomon.h"

#include <gmock/gmock.h>

namespace {

using dwg::Bytes;
using testing::HasSubstr;

Bytes bytes(std::string_view text) {
    return Bytes(text.begin(), text.end());
}

Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

std::string text(const dwg::Result<Bytes>& result) {
    return result ? std::string(result->begin(), result->end()) : "error: " + result.error().reason;
}

std::string unpack2004(const Bytes& packed, std::size_t limit = 1000) {
    return text(dwg::unpack2004(packed, limit));
}

std::string unpack2007(const Bytes& packed, std::size_t size) {
    return text(dwg::unpack2007(packed, size));
}

const Bytes abcd = Bytes{0x01} + bytes("abcd");
const Bytes end = {0x11};

TEST(Unpack2004, aCountBelow16IsThreeLessThanItsLiterals) {
    EXPECT_EQ(unpack2004(abcd + end), "abcd");
}

TEST(Unpack2004, aZeroCountGoesOnFrom18) {
    EXPECT_EQ(unpack2004(Bytes{0x00, 0x02} + bytes("abcdefghijklmnopqrst") + end), "abcdefghijklmnopqrst");
}

TEST(Unpack2004, zeroBytesInACountAreWorth255Each) {
    const std::string run(0x0F + 2 * 255 + 1 + 3, 'x');
    EXPECT_EQ(unpack2004(Bytes{0x00, 0x00, 0x00, 0x01} + bytes(run) + end), run);
}

TEST(Unpack2004, aShortCopyTakesLengthDistanceAndLiteralsFromItsOpcode) {
    EXPECT_EQ(unpack2004(abcd + Bytes{0x4C, 0x00} + end), "abcdabc");
    EXPECT_EQ(unpack2004(abcd + Bytes{0x4D, 0x00, 'x'} + end), "abcdabcx");
    EXPECT_EQ(unpack2004(abcd + Bytes{0x54, 0x00} + end), "abcdcdcd");
}

TEST(Unpack2004, aCopyMayOverlapItsOwnOutput) {
    EXPECT_EQ(unpack2004(abcd + Bytes{0x21, 0x00, 0x00} + end), "abcdddd");
}

TEST(Unpack2004, aMiddleCopyTakesItsDistanceFromTwoBytes) {
    EXPECT_EQ(unpack2004(abcd + Bytes{0x22, 0x0C, 0x00} + end), "abcdabcd");
    EXPECT_EQ(unpack2004(abcd + Bytes{0x22, 0x0E, 0x00, 'x', 'y'} + end), "abcdabcdxy");
}

TEST(Unpack2004, aMiddleCopyOf0x20ReadsItsLength) {
    EXPECT_EQ(unpack2004(abcd + Bytes{0x20, 0x00, 0x05, 0x00, 0x00} + end),
              "abc" + std::string(1 + 255 + 5 + 0x21, 'd'));
}

TEST(Unpack2004, aFarCopyReachesBeyond16K) {
    // After "abcd" a run of "d" that makes 16,390 bytes, so that 16,384 back lies the third "d" of the output.
    constexpr std::size_t size = 16390;
    constexpr std::size_t counted = size - 4 - 0x21;
    const Bytes length = Bytes(counted / 255, 0x00) + Bytes{static_cast<std::uint8_t>(counted % 255)};
    const Bytes packed = abcd + Bytes{0x20} + length + Bytes{0x00, 0x00};
    const auto behind = [&](const Bytes& copy) {
        const std::string plain = unpack2004(packed + copy + end, 20000);
        return plain.substr(std::min(plain.size(), size));
    };
    EXPECT_EQ(unpack2004(packed + end, 20000).size(), size);
    EXPECT_EQ(behind({0x12, 0x00, 0x00}), "dddd");
    EXPECT_EQ(behind({0x12, 0x18, 0x00}), "abcd") << "6 further back";
    EXPECT_EQ(behind({0x10, 0x01, 0x18, 0x00}), "abcddddddd") << "length in a byte of its own";
}

TEST(Unpack2004, theFourthBitOfAFarCopyIsPartOfItsDistance) {
    constexpr std::size_t size = 0x8000, counted = size - 4 - 0x21;
    const Bytes length = Bytes(counted / 255, 0x00) + Bytes{static_cast<std::uint8_t>(counted % 255)};
    const Bytes packed = abcd + Bytes{0x20} + length + Bytes{0x00, 0x00};
    EXPECT_EQ(unpack2004(packed + Bytes{0x19, 0x00, 0x00} + end, 40000).substr(size), "abc");
    EXPECT_EQ(unpack2004(packed + Bytes{0x18, 0x01, 0x00, 0x00} + end, 40000).substr(size), "abcddddddd");
}

TEST(Unpack2004, outputBeyondTheDeclaredSizeIsDamage) {
    EXPECT_THAT(unpack2004(abcd + end, 3), HasSubstr("outside its output"));
    EXPECT_THAT(unpack2004(abcd + Bytes{0x4C, 0x00} + end, 6), HasSubstr("outside its output"));
}

TEST(Unpack2004, aCopyFromBeforeTheOutputIsDamage) {
    EXPECT_THAT(unpack2004(abcd + Bytes{0x40, 0x01} + end), HasSubstr("outside its output"));
}

TEST(Unpack2004, dataWithoutEndMarkIsDamage) {
    EXPECT_THAT(unpack2004(abcd), HasSubstr("end mark"));
    EXPECT_THAT(unpack2004({}), HasSubstr("end mark"));
    EXPECT_THAT(unpack2004(Bytes(500, 0x00)), HasSubstr("error"));
}

TEST(Unpack2007, aCountBelow15IsEightLessThanItsLiterals) {
    EXPECT_EQ(unpack2007(Bytes{0x00} + bytes("abcdefgh"), 8), "abcdefgh");
}

TEST(Unpack2007, aHeadOf0x20CountsUpToSevenLiterals) {
    EXPECT_EQ(unpack2007(Bytes{0x20, 0x00, 0x00, 0x03} + bytes("abc"), 3), "cba");
    EXPECT_EQ(unpack2007(Bytes{0x20, 0x00, 0x00, 0x06} + bytes("abcdef"), 6), "fbcdea");
}

// The literals of a run of each length: what "0123456789abcdefghijklmnopqrstuv" stored becomes.
TEST(Unpack2007, literalsAreStoredInAnOrderThatDependsOnTheirNumber) {
    const std::string stored = "0123456789abcdefghijklmnopqrstuv";
    const std::vector<std::string> orders = {
        "01234567",
        "801234567",
        "9123456780",
        "a9123456780",
        "89ab01234567",
        "c89ab01234567",
        "d9abc123456780",
        "ed9abc123456780",
        "89abcdef01234567",
        "9abcdefg801234567",
        "h9abcdefg123456780",
        "ihg89abcdef01234567",
        "ghij89abcdef01234567",
        "kghij89abcdef01234567",
        "lkghij89abcdef01234567",
        "mlkghij89abcdef01234567",
        "ghijklmn89abcdef01234567",
        "hijklmnog89abcdef01234567",
        "phijklmnog89abcdef01234567",
        "qphijklmnog89abcdef01234567",
        "opqrghijklmn89abcdef01234567",
        "sopqrghijklmn89abcdef01234567",
        "tsopqrghijklmn89abcdef01234567",
        "uqrstijklmnopabcdefgh2345678910",
        "opqrstuvghijklmn89abcdef01234567",
    };
    for (std::size_t i = 0; i < orders.size(); ++i) {
        const std::size_t count = 8 + i;
        Bytes head = {static_cast<std::uint8_t>(count - 8)};
        if (count >= 0x17)
            head = {0x0F, static_cast<std::uint8_t>(count - 0x17)};
        EXPECT_EQ(unpack2007(head + bytes(stored.substr(0, count)), count), orders[i]) << count;
    }
}

TEST(Unpack2007, aLongCountGoesOnInWords) {
    const std::string run(0x17 + 0xFF + 0x0102, 'x');
    EXPECT_EQ(unpack2007(Bytes{0x0F, 0xFF, 0x02, 0x01} + bytes(run), run.size()), run);
}

TEST(Unpack2007, copiesOfEachKind) {
    const Bytes head = Bytes{0x00} + bytes("abcdefgh");
    EXPECT_EQ(unpack2007(head + Bytes{0x37, 0x00}, 11), "abcdefghabc") << "3 to 15 bytes from near";
    EXPECT_EQ(unpack2007(head + Bytes{0x11, 0x07, 0x00}, 12), "abcdefghabcd") << "kind 1: 3 more than its low half";
    EXPECT_EQ(unpack2007(head + Bytes{0x00, 0x00, 0x00}, 27), "abcdefg" + std::string(20, 'h')) << "kind 0: 19 more";
    EXPECT_EQ(unpack2007(head + Bytes{0x21, 0x08, 0x00, 0x08}, 17), "abcdefghabcdefgha") << "kind 2: word distance";
    EXPECT_EQ(unpack2007(head + Bytes{0x28, 0x00, 0x00, 0x01, 0x00}, 8 + 0x108),
              "abcdefg" + std::string(1 + 0x108, 'h'))
        << "kind 2, long";
}

TEST(Unpack2007, theLastByteOfACopyCountsLiteralsBehindIt) {
    EXPECT_EQ(unpack2007(Bytes{0x00} + bytes("abcdefgh") + Bytes{0x37, 0x02, 'y', 'x'}, 13), "abcdefghabcxy");
}

TEST(Unpack2007, damageIsAnErrorNotAnOverrun) {
    const Bytes head = Bytes{0x00} + bytes("abcdefgh");
    EXPECT_THAT(unpack2007(head, 9), HasSubstr("fewer bytes"));
    EXPECT_THAT(unpack2007(head, 7), HasSubstr("outside its output"));
    EXPECT_THAT(unpack2007(head + Bytes{0x38, 0x00}, 11), HasSubstr("outside its output")) << "before the output";
    EXPECT_THAT(unpack2007(head + Bytes{0x37}, 11), HasSubstr("within an instruction"));
    EXPECT_THAT(unpack2007(Bytes{0x05} + bytes("abc"), 13), HasSubstr("within an instruction"));
    EXPECT_THAT(unpack2007({}, 4), HasSubstr("error"));
}

TEST(CodeWords, interleavedWordsAreTakenApart) {
    Bytes coded(3 * dwg::codeWordLength);
    for (std::size_t i = 0; i < coded.size(); ++i)
        coded[i] = static_cast<std::uint8_t>(i % 3 * 80 + i / 3 % 80);
    const auto data = dwg::deinterleave(coded, 3, dwg::systemDataLength);
    ASSERT_TRUE(data);
    ASSERT_EQ(data->size(), 3 * 239u);
    EXPECT_EQ((*data)[0], 0);
    EXPECT_EQ((*data)[79], 79);
    EXPECT_EQ((*data)[239], 80);
    EXPECT_EQ((*data)[2 * 239 + 5], 165);
}

TEST(CodeWords, fewerBytesThanWordsNeedAreTruncated) {
    const auto data = dwg::deinterleave(Bytes(254), 1, dwg::systemDataLength);
    ASSERT_FALSE(data);
    EXPECT_EQ(data.error().kind, dwg::ErrorKind::truncated);
}

TEST(PageChecksum, isTwoSumsFromTheSeed) {
    EXPECT_EQ(dwg::pageChecksum(bytes("abc"), 0), 0x024A0126u);
    EXPECT_EQ(dwg::pageChecksum(bytes("abc"), 1), 0x024D0127u) << "zlib's customary seed";
    EXPECT_EQ(dwg::pageChecksum({}, 0x12345), 0x12345u) << "nothing leaves the seed";
}

} // namespace
