#include "tests/dwg/model_support.h"

#include "editor/dwg/bits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace dwg;

/// Bits written as text: '0' and '1', anything else is for the eye.
Bits bitsOf(std::string_view text) {
    Bits bits;
    for (const char c : text) {
        if (c != '0' && c != '1')
            continue;
        if (bits.count % 8 == 0)
            bits.bytes.push_back(0);
        if (c == '1')
            bits.bytes.back() |= static_cast<std::uint8_t>(0x80 >> bits.count % 8);
        ++bits.count;
    }
    return bits;
}

std::string textOf(const Bits& bits) {
    std::string text;
    for (std::size_t i = 0; i < bits.count; ++i)
        text += (bits.bytes[i / 8] >> (7 - i % 8) & 1) != 0 ? '1' : '0';
    return text;
}

std::string textOf(std::string_view spaced) {
    return textOf(bitsOf(spaced));
}

/// Reads one value that must take all bits, and writes it again.
template <class Read, class Write, class Value>
void expectCode(std::string_view bits, Read read, Write write, const Value& value) {
    const Bits stored = bitsOf(bits);
    BitReader reader(stored.bytes, 0, stored.count);
    EXPECT_EQ(read(reader), value) << bits;
    EXPECT_FALSE(reader.failed()) << bits;
    EXPECT_EQ(reader.remaining(), 0u) << bits;
    BitWriter writer;
    write(writer, value);
    EXPECT_EQ(textOf(writer.bits()), textOf(bits));
}

#define EXPECT_CODE(name, bits, value)                                                                                 \
    expectCode(                                                                                                        \
        bits, [](BitReader& r) { return r.name(); }, [](BitWriter& w, const auto& v) { w.name(v); }, value)

TEST(BitCodes, SingleBitsAndPairs) {
    EXPECT_CODE(b, "1", true);
    EXPECT_CODE(b, "0", false);
    EXPECT_CODE(bb, "10", std::uint8_t{2});
    EXPECT_CODE(bb, "11", std::uint8_t{3});
}

TEST(BitCodes, ThreeBitsEndAtTheFirstZero) {
    EXPECT_CODE(b3, "0", std::uint8_t{0});
    EXPECT_CODE(b3, "10", std::uint8_t{2});
    EXPECT_CODE(b3, "110", std::uint8_t{6});
    EXPECT_CODE(b3, "111", std::uint8_t{7});
}

TEST(BitCodes, BitShortHasCodesForZeroFor256AndForABytesWorth) {
    EXPECT_CODE(bs, "10", std::uint16_t{0});
    EXPECT_CODE(bs, "11", std::uint16_t{256});
    EXPECT_CODE(bs, "01 00001111", std::uint16_t{15});
    EXPECT_CODE(bs, "01 11111111", std::uint16_t{255});
    EXPECT_CODE(bs, "00 00000001 00000001", std::uint16_t{257});
    EXPECT_CODE(bs, "00 11111111 11111111", std::uint16_t{0xFFFF});
}

TEST(BitCodes, BitLongHasCodesForZeroAndForABytesWorth) {
    EXPECT_CODE(bl, "10", std::uint32_t{0});
    EXPECT_CODE(bl, "01 00000001", std::uint32_t{1});
    EXPECT_CODE(bl, "00 00000000 00000001 00000000 00000000", std::uint32_t{256});
    EXPECT_CODE(bl, "00 01111000 01010110 00110100 00010010", std::uint32_t{0x12345678});
}

TEST(BitCodes, BitLongLongCountsItsBytesInThreeBits) {
    EXPECT_CODE(bll, "000", std::uint64_t{0});
    EXPECT_CODE(bll, "001 11111111", std::uint64_t{255});
    EXPECT_CODE(bll, "010 00000000 00000001", std::uint64_t{256});
    EXPECT_CODE(bll, "110 00000110 00000101 00000100 00000011 00000010 00000001", std::uint64_t{0x010203040506});
}

TEST(BitCodes, RawNumbersHaveTheirLowestByteFirst) {
    EXPECT_CODE(rc, "10100101", std::uint8_t{0xA5});
    EXPECT_CODE(rs, "00110100 00010010", std::uint16_t{0x1234});
    EXPECT_CODE(rl, "01111000 01010110 00110100 00010010", std::uint32_t{0x12345678});
    EXPECT_CODE(rll, "11110000 11011110 10111100 10011010 01111000 01010110 00110100 00010010",
                std::uint64_t{0x123456789ABCDEF0});
    EXPECT_CODE(rd, "00000000 00000000 00000000 00000000 00000000 00000000 11100000 00111111", 0.5);
}

TEST(BitCodes, BitDoubleHasCodesForOneAndZero) {
    EXPECT_CODE(bd, "01", 1.0);
    EXPECT_CODE(bd, "10", 0.0);
    EXPECT_CODE(bd, "00 00000000 00000000 00000000 00000000 00000000 00000000 00000000 01000000", 2.0);
}

TEST(BitCodes, ANegativeZeroIsNotTheZeroOfTheShortCode) {
    BitWriter writer;
    writer.bd(-0.0);
    BitReader reader(writer.bytes());
    EXPECT_TRUE(std::signbit(reader.bd()));
}

TEST(BitCodes, PointsAreTheirCoordinatesInOrder) {
    EXPECT_CODE(bd2, "01 10", (Point2{1, 0}));
    EXPECT_CODE(bd3, "10 01 10", (Point3{0, 1, 0}));
    BitWriter writer;
    writer.rd2({1.5, -2});
    writer.rd3({3, 4, 5});
    BitReader reader(writer.bytes());
    EXPECT_EQ(reader.rd2(), (Point2{1.5, -2}));
    EXPECT_EQ(reader.rd3(), (Point3{3, 4, 5}));
    EXPECT_EQ(reader.remaining(), 0u);
}

TEST(BitCodes, ThicknessAndExtrusionHaveOneBitForTheUsual) {
    EXPECT_CODE(bt, "1", 0.0);
    EXPECT_CODE(bt, "0 01", 1.0);
    EXPECT_CODE(be, "1", (Point3{0, 0, 1}));
    EXPECT_CODE(be, "0 10 01 10", (Point3{0, 1, 0}));
}

// 3.0 is 40 08 00 .. in bytes from the highest; the default shares its first 8, 4, 2 or no bytes.
TEST(BitCodes, DoubleWithDefaultStoresOnlyTheBytesThatDiffer) {
    const auto number = [](std::uint64_t bits) { return std::bit_cast<double>(bits); };
    const double byDefault = number(0x4008000000000000);
    const struct {
        const char* bits;
        double value;
    } rows[] = {
        {"00", byDefault},
        {"01 01111000 01010110 00110100 00010010", number(0x4008000012345678)},
        {"10 10111100 10011010 01111000 01010110 00110100 00010010", number(0x40089ABC12345678)},
        {"11 00000000 00000000 00000000 00000000 00000000 00000000 00000000 11000000", -2.0},
    };
    for (const auto& row : rows) {
        expectCode(
            row.bits, [&](BitReader& r) { return r.dd(byDefault); },
            [&](BitWriter& w, double value) { w.dd(value, byDefault); }, row.value);
    }
}

TEST(BitCodes, PointsWithDefaultsTakeEachCoordinateForItself) {
    BitWriter writer;
    writer.dd2({1, 2}, {1, 2});
    writer.dd3({1, 2, 3}, {1, 2, 3});
    EXPECT_EQ(textOf(writer.bits()), "0000000000");
    BitReader reader(writer.bytes(), 0, writer.position());
    EXPECT_EQ(reader.dd2({1, 2}), (Point2{1, 2}));
    EXPECT_EQ(reader.dd3({1, 2, 3}), (Point3{1, 2, 3}));
}

TEST(BitCodes, ReferencesAreCodeCountAndHighestByteFirst) {
    EXPECT_CODE(h, "0101 0000", (HandleRef{5, 0}));
    EXPECT_CODE(h, "0100 0001 11111111", (HandleRef{4, 0xFF}));
    EXPECT_CODE(h, "0010 0010 00000001 00000010", (HandleRef{2, 0x102}));
}

TEST(BitCodes, AReferenceOfMoreThanEightBytesIsAnError) {
    const std::vector<std::uint8_t> bytes(16, 0x59);
    BitReader reader(bytes);
    EXPECT_TRUE(reader.h().isNull());
    EXPECT_TRUE(reader.failed());
}

TEST(BitCodes, NarrowTextIsLengthAndBytes) {
    EXPECT_CODE(t, "10", std::string());
    EXPECT_CODE(t, "01 00000010 01000001 11100100", std::string("A\xE4"));
}

TEST(BitCodes, WideTextIsLengthInUnitsAndJoinsSurrogates) {
    EXPECT_CODE(tu, "01 00000001 01000001 00000000", std::wstring(L"A"));
    EXPECT_CODE(tu, "01 00000010 00111101 11011000 00000000 11011110", std::wstring(L"\U0001F600"));
}

TEST(BitCodes, ALoneSurrogateStaysWhatItIs) {
    const Bits stored = bitsOf("01 00000001 00111101 11011000");
    BitReader reader(stored.bytes, 0, stored.count);
    EXPECT_EQ(reader.tu(), std::wstring(1, static_cast<wchar_t>(0xD83D)));
}

TEST(BitCodes, ModularCharsHaveSevenBitsAByteAndTheSignInTheLast) {
    EXPECT_CODE(mc, "00000101", std::int32_t{5});
    EXPECT_CODE(mc, "01000101", std::int32_t{-5});
    EXPECT_CODE(mc, "10000000 00000001", std::int32_t{128});
    EXPECT_CODE(mc, "11101001 10010111 11100110 00110101", std::int32_t{112823273});
    EXPECT_CODE(mc, "10000101 01001011", std::int32_t{-1413});
    EXPECT_CODE(mc, "11000000 00000000", std::int32_t{64});
    EXPECT_CODE(umc, "01111111", std::uint32_t{127});
    EXPECT_CODE(umc, "10000000 00000001", std::uint32_t{128});
}

TEST(BitCodes, ModularNumbersThatDoNotEndAreAnError) {
    const std::vector<std::uint8_t> bytes(8, 0xFF);
    BitReader chars(bytes), unsignedChars(bytes), shorts(bytes);
    EXPECT_EQ(chars.mc(), 0);
    EXPECT_EQ(unsignedChars.umc(), 0u);
    EXPECT_EQ(shorts.ms(), 0u);
    EXPECT_TRUE(chars.failed() && unsignedChars.failed() && shorts.failed());
}

TEST(BitCodes, ModularShortsHaveFifteenBitsEach) {
    EXPECT_CODE(ms, "00110100 00010010", std::uint32_t{0x1234});
    EXPECT_CODE(ms, "00110001 11110100 10001101 00000000", std::uint32_t{4650033});
}

TEST(BitCodes, UnusedCodesAreErrors) {
    const std::vector<std::uint8_t> ones(16, 0xFF);
    BitReader number(ones), real(ones);
    EXPECT_EQ(number.bl(), 0u);
    EXPECT_EQ(real.bd(), 0.0);
    EXPECT_TRUE(number.failed() && real.failed());
}

TEST(BitReading, PastTheEndEverythingIsZeroAndTheErrorStays) {
    const std::vector<std::uint8_t> bytes = {0x40}; // a bit short that promises a byte
    BitReader reader(bytes, 0, 5);
    EXPECT_EQ(reader.bs(), 0u);
    EXPECT_TRUE(reader.failed());
    EXPECT_EQ(reader.position(), reader.end());
    EXPECT_FALSE(reader.b());
    EXPECT_EQ(reader.rd(), 0.0);
    EXPECT_EQ(reader.dd(7.0), 0.0);
    EXPECT_EQ(reader.t(), "");
    EXPECT_EQ(reader.tu(), L"");
    EXPECT_TRUE(reader.bytes(1).empty());
    EXPECT_EQ(reader.bits(1).count, 0u);
    EXPECT_TRUE(reader.failed());
}

TEST(BitReading, ATextLongerThanItsBytesIsAnErrorAndEmpty) {
    const Bits stored = bitsOf("01 11111111 01000001");
    BitReader narrow(stored.bytes, 0, stored.count), wide(stored.bytes, 0, stored.count);
    EXPECT_EQ(narrow.t(), "");
    EXPECT_EQ(wide.tu(), L"");
    EXPECT_TRUE(narrow.failed() && wide.failed());
}

TEST(BitReading, AnEndBeyondTheBytesIsCutAndAStartBeyondTheEndIsAnError) {
    const std::vector<std::uint8_t> bytes = {1, 2};
    EXPECT_EQ(BitReader(bytes, 0, 99).remaining(), 16u);
    EXPECT_TRUE(BitReader(bytes, 17, 99).failed());
    BitReader reader(bytes);
    reader.seek(17);
    EXPECT_TRUE(reader.failed());
    BitReader skipping(bytes);
    skipping.skip(std::numeric_limits<std::size_t>::max());
    EXPECT_TRUE(skipping.failed());
}

TEST(BitReading, BitsAreTakenFromAnyPlaceAndAppendedToAnyPlace) {
    const Bits stored = bitsOf("101 11001010 0111010 11");
    for (std::size_t first = 0; first <= stored.count; ++first) {
        for (std::size_t count = 0; first + count <= stored.count; ++count) {
            BitReader reader(stored.bytes);
            reader.skip(first);
            const Bits taken = reader.bits(count);
            EXPECT_EQ(textOf(taken), textOf(stored).substr(first, count));
            BitWriter writer;
            writer.append(bitsOf(textOf(stored).substr(0, first)));
            writer.append(taken);
            EXPECT_EQ(textOf(writer.bits()), textOf(stored).substr(0, first + count));
        }
    }
}

TEST(BitReading, AligningSkipsToTheNextByte) {
    const std::vector<std::uint8_t> bytes = {0xFF, 0x12};
    BitReader reader(bytes);
    reader.alignToByte();
    EXPECT_EQ(reader.position(), 0u);
    reader.b();
    reader.alignToByte();
    EXPECT_EQ(reader.rc(), 0x12);
    BitWriter writer;
    writer.b(true);
    writer.alignToByte();
    writer.rc(0x12);
    EXPECT_EQ(tests::hex(writer.bytes()), "80 12 ");
}

TEST(BitWriting, TooLongTextsAreCutAtTheLongestLength) {
    BitWriter narrow, wide;
    narrow.t(std::string(70000, 'a'));
    wide.tu(std::wstring(40000, L'\U0001F600'));
    BitReader narrowReader(narrow.bytes()), wideReader(wide.bytes());
    EXPECT_EQ(narrowReader.t().size(), 65535u);
    EXPECT_EQ(wideReader.tu().size(), 32767u);
    EXPECT_FALSE(narrowReader.failed() || wideReader.failed());
}

} // namespace
