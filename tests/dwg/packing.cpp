// Packed bytes come back as they were, whatever they are.

#include "editor/dwg/lz_2004.h"
#include "editor/dwg/lz_2007.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using dwg::Bytes;

Bytes repeated(const Bytes& unit, std::size_t size) {
    Bytes out;
    while (out.size() < size)
        out.push_back(unit[out.size() % unit.size()]);
    return out;
}

/// Bytes of many kinds: even, noisy, repeating at distances around the limits of each kind of copy.
std::vector<Bytes> samples() {
    std::vector<Bytes> out;
    for (const std::size_t size : {1, 2, 3, 4, 5, 7, 8, 9, 15, 18, 19, 22, 23, 31, 32, 33, 63, 64, 65, 277, 278, 533})
        out.push_back(repeated({7, 1, 9, 200, 201, 202, 203, 13, 17, 19, 23}, size));
    for (const std::size_t size : {4, 34, 289, 290, 0x7400, 0xF800})
        out.emplace_back(size, std::uint8_t{0});
    std::mt19937 random(1);
    const auto noise = [&random](std::size_t size, unsigned values) {
        Bytes bytes(size);
        for (std::uint8_t& byte : bytes)
            byte = static_cast<std::uint8_t>(random() % values);
        return bytes;
    };
    for (const unsigned values : {2u, 3u, 8u, 40u, 256u})
        for (const std::size_t size : {100, 1000, 0x7400, 0xF800})
            out.push_back(noise(size, values));
    // A piece of each length comes back after noise of each length.
    for (const std::size_t gap : {1, 510, 512, 513, 1023, 1024, 1025, 4095, 4096, 4097, 8191, 8193, 16383, 16384, 16385,
                                  32766, 32767, 32768, 63000})
        for (const std::size_t length :
             {3, 4, 5, 13, 14, 15, 17, 18, 19, 33, 34, 50, 51, 255, 256, 257, 300, 2303, 2304}) {
            const Bytes piece = noise(length, 256), between = noise(gap, 256);
            Bytes bytes = piece;
            bytes.insert(bytes.end(), between.begin(), between.end());
            bytes.insert(bytes.end(), piece.begin(), piece.end());
            bytes.insert(bytes.end(), piece.begin(), piece.end());
            out.push_back(std::move(bytes));
        }
    // Literals between copies, of every count.
    for (std::size_t literals = 0; literals < 60; ++literals) {
        const Bytes piece = noise(40, 256);
        Bytes bytes = piece;
        for (int i = 0; i < 6; ++i) {
            const Bytes between = noise(literals, 256);
            bytes.insert(bytes.end(), between.begin(), between.end());
            bytes.insert(bytes.end(), piece.begin(), piece.begin() + 3 + i * 6);
        }
        out.push_back(std::move(bytes));
    }
    // Long runs of literals, around the words that count them.
    for (const std::size_t size : {278, 533, 534, 65812, 65813, 65814, 131348})
        out.push_back(noise(size, 256));
    return out;
}

TEST(Pack2004, whatIsPackedUnpacksToTheSame) {
    for (const Bytes& plain : samples()) {
        auto back = dwg::unpack2004(dwg::pack2004(plain), std::max<std::size_t>(plain.size(), 4));
        ASSERT_TRUE(back) << plain.size() << ": " << back.error().reason;
        ASSERT_GE(back->size(), plain.size());
        back->resize(plain.size());
        ASSERT_EQ(*back, plain);
    }
}

TEST(Pack2004, fewerThanFourBytesAreFilledUpWithZeros) {
    EXPECT_EQ(*dwg::unpack2004(dwg::pack2004(Bytes{9}), 4), (Bytes{9, 0, 0, 0}));
}

TEST(Pack2004, repetitionTakesLittleRoomAndNoiseHardlyMore) {
    EXPECT_LT(dwg::pack2004(Bytes(0x7400)).size(), 160u) << "as in files of other programs";
    EXPECT_LT(dwg::pack2004(repeated({1, 2, 3, 4, 5}, 0x7400)).size(), 170u);
    Bytes noise(0x7400);
    std::mt19937 random(5);
    for (std::uint8_t& byte : noise)
        byte = static_cast<std::uint8_t>(random());
    EXPECT_LT(dwg::pack2004(noise).size(), noise.size() + noise.size() / 100);
}

TEST(Pack2004, theLengthOfAFarCopyHasThreeBitsInItsOpcode) {
    // Other readers take the fourth bit for a part of the distance.
    std::mt19937 random(7);
    for (const std::size_t length : {5, 9, 10, 12, 17, 18}) {
        Bytes plain;
        for (std::size_t i = 0; i < length + 17000; ++i)
            plain.push_back(static_cast<std::uint8_t>(random() % 256));
        plain.insert(plain.end(), plain.begin(), plain.begin() + static_cast<std::ptrdiff_t>(length));
        const Bytes packed = dwg::pack2004(plain);
        const std::size_t back = length + 17000 - 0x4000;
        Bytes expected = {static_cast<std::uint8_t>(back << 2), static_cast<std::uint8_t>(back >> 6), 0x11};
        if (length > 9)
            expected.insert(expected.begin(), {0x10, static_cast<std::uint8_t>(length - 9)});
        else
            expected.insert(expected.begin(), static_cast<std::uint8_t>(0x10 + length - 2));
        EXPECT_EQ(Bytes(packed.end() - static_cast<std::ptrdiff_t>(expected.size()), packed.end()), expected) << length;
    }
}

TEST(Pack2007, whatIsPackedUnpacksToTheSame) {
    for (const Bytes& plain : samples()) {
        const auto back = dwg::unpack2007(dwg::pack2007(plain), plain.size());
        ASSERT_TRUE(back) << plain.size() << ": " << back.error().reason;
        ASSERT_EQ(*back, plain);
    }
}

TEST(Pack2007, repetitionTakesLittleRoomAndNoiseHardlyMore) {
    EXPECT_LT(dwg::pack2007(Bytes(0xF800)).size(), 32u);
    EXPECT_LT(dwg::pack2007(repeated({1, 2, 3, 4, 5}, 0xF800)).size(), 64u);
    Bytes noise(0xF800);
    std::mt19937 random(5);
    for (std::uint8_t& byte : noise)
        byte = static_cast<std::uint8_t>(random());
    EXPECT_LT(dwg::pack2007(noise).size(), noise.size() + noise.size() / 100);
}

TEST(Pack2007, nothingPacksToNothing) {
    EXPECT_TRUE(dwg::pack2007({}).empty());
}

} // namespace
