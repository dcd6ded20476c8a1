#include "editor/dwg/code_page.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/handle.h"

#include "tests/dwg/model_support.h"

#include <gtest/gtest.h>

namespace {

using namespace dwg;

std::vector<std::uint8_t> bytesOf(std::string_view text) {
    return {text.begin(), text.end()};
}

TEST(CodePages, EveryByteOfEveryCodePageSurvives) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<char>(byte));
    for (std::uint16_t number = 0; number < 50; ++number) {
        const CodePage page(number);
        EXPECT_EQ(page.encode(page.decode(all)), all) << number;
    }
}

TEST(CodePages, NumbersChooseTheWindowsCodePages) {
    const struct {
        std::uint16_t number;
        char byte;
        wchar_t character;
    } rows[] = {
        {28, '\xE8', 0x010D}, {29, '\xE8', 0x0438}, {30, '\xE8', 0x00E8}, {32, '\xE8', 0x03B8},
        {33, '\xFD', 0x0131}, {34, '\xE8', 0x05D8}, {35, '\xC8', 0x0628}, {36, '\xE8', 0x010D},
        {37, '\xA1', 0x0E01}, {44, '\xD0', 0x0110}, {30, '\x80', 0x20AC}, {22, '\xE8', 0x00E8},
    };
    for (const auto& row : rows)
        EXPECT_EQ(CodePage(row.number).decode(std::string(1, row.byte)), std::wstring(1, row.character)) << row.number;
}

TEST(CodePages, CharactersThatThePageLacksBecomeEscapes) {
    EXPECT_EQ(CodePage().encode(L"a\u0416\u20AC"), "a\\U+0416\x80");
    EXPECT_EQ(CodePage(29).encode(L"\u0416"), "\xC6");
    EXPECT_EQ(CodePage().encode(L"\U0001F600"), "\\U+D83D\\U+DE00");
}

TEST(CodePages, EscapesAreReadInEitherCaseAndPairsAreJoined) {
    EXPECT_EQ(CodePage().decode("x\\U+041fy\\U+041F"), L"x\u041Fy\u041F");
    EXPECT_EQ(CodePage().decode("\\U+D83D\\U+DE00"), L"\U0001F600");
}

TEST(CodePages, WhatOnlyLooksLikeAnEscapeStaysText) {
    for (const char* text : {"\\U+12", "\\U+12G4", "\\u+1234", "\\", "\\U+"}) {
        const std::wstring wide = CodePage().decode(text);
        EXPECT_EQ(CodePage().encode(wide), text);
        EXPECT_EQ(wide.size(), std::string_view(text).size());
    }
}

TEST(Checks, SixteenBitsFollowThePublishedExample) {
    // The check value of this polynomial with seed 0 over the nine digits.
    EXPECT_EQ(crc16(bytesOf("123456789"), 0), 0xBB3D);
    EXPECT_EQ(crc16({}), crc16Seed);
}

TEST(Checks, ThirtyTwoBitsFollowThePublishedExample) {
    EXPECT_EQ(crc32(bytesOf("123456789")), 0xCBF43926u);
}

TEST(Checks, PartsGiveTheSameAsTheWhole) {
    const auto all = bytesOf("a drawing in two parts");
    const std::span<const std::uint8_t> bytes(all);
    EXPECT_EQ(crc16(bytes.subspan(7), crc16(bytes.first(7))), crc16(bytes));
    EXPECT_EQ(crc32(bytes.subspan(7), crc32(bytes.first(7))), crc32(bytes));
}

TEST(References, RelativeOnesAreResolvedAgainstTheirOwner) {
    EXPECT_EQ(resolved({6, 0}, 0x20), (HandleRef{6, 0x21}));
    EXPECT_EQ(resolved({8, 0}, 0x20), (HandleRef{8, 0x1F}));
    EXPECT_EQ(resolved({10, 5}, 0x20), (HandleRef{10, 0x25}));
    EXPECT_EQ(resolved({12, 5}, 0x20), (HandleRef{12, 0x1B}));
    EXPECT_EQ(resolved({5, 7}, 0x20), (HandleRef{5, 7}));
}

TEST(References, RelativeOnesThatLeaveTheRangeAreNull) {
    EXPECT_TRUE(resolved({12, 0x21}, 0x20).isNull());
    EXPECT_TRUE(resolved({10, ~Handle{0}}, 0x20).isNull());
    EXPECT_TRUE(resolved({8, 0}, 0).isNull());
}

TEST(References, SpellingIsKeptWhereItFitsAndSoftPointerElsewhere) {
    for (const std::uint8_t code : {4, 5, 6, 8, 10, 12}) {
        const HandleRef ref{code, code < 6 ? Handle{0x33} : Handle{0}};
        EXPECT_EQ(stored(resolved(ref, 0x20), 0x20), ref) << int(code);
    }
    EXPECT_EQ(stored({6, 0x21}, 0x40), (HandleRef{4, 0x21}));
    EXPECT_EQ(stored({8, 0x21}, 0x40), (HandleRef{4, 0x21}));
    EXPECT_EQ(stored({10, 0x21}, 0x40), (HandleRef{4, 0x21}));
    EXPECT_EQ(stored({12, 0x41}, 0x40), (HandleRef{4, 0x41}));
    EXPECT_EQ(stored({10, 0}, 0), (HandleRef{4, 0}));
}

} // namespace
