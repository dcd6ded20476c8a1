#include "tessaro/platform/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace platform;

TEST(Text, CaseMapsOneCharacterForOneInAllScripts) {
    EXPECT_EQ(ToLower(L"ABC xyz ÄÖÜ ÉŁŽ ΑΩ ЖЯ"), L"abc xyz äöü éłž αω жя");
    EXPECT_EQ(ToUpper(L"abc XYZ äöü éłž αω жя ÿ"), L"ABC XYZ ÄÖÜ ÉŁŽ ΑΩ ЖЯ Ÿ");
    EXPECT_EQ(ToUpper(L"ß 12 _"), L"ß 12 _");
    EXPECT_EQ(ToLower(L"\x10400 \x1E00 \x1E02"), L"\x10428 \x1E01 \x1E03");
    EXPECT_EQ(ToLower(std::wstring(1, static_cast<wchar_t>(0x7FFFFFFF))),
              std::wstring(1, static_cast<wchar_t>(0x7FFFFFFF)));
}

TEST(Text, EveryMappedCharacterComesBackInLowerCase) {
    for (wchar_t c = 1; c < 0x10000; ++c) {
        const std::wstring upper = ToUpper(std::wstring(1, c));
        ASSERT_EQ(ToUpper(upper), upper) << static_cast<int>(c);
        const std::wstring lower = ToLower(std::wstring(1, c));
        ASSERT_EQ(ToLower(lower), lower) << static_cast<int>(c);
    }
}

TEST(Text, ComparisonIgnoresCaseAndOrdersByLowerCase) {
    EXPECT_EQ(CompareNoCase(L"Möbel", L"MÖBEL"), 0);
    EXPECT_LT(CompareNoCase(L"a", L"B"), 0);
    EXPECT_LT(CompareNoCase(L"_", L"Z"), 0);
    EXPECT_LT(CompareNoCase(L"ab", L"ABC"), 0);
    EXPECT_GT(CompareNoCase(L"abc", L"AB"), 0);
    EXPECT_TRUE(EqualNoCase(L"", L""));
    EXPECT_FALSE(EqualNoCase(L"a", L""));
}

TEST(Text, TrimTakesWhiteSpaceOffBothEndsOnly) {
    EXPECT_EQ(Trim(L" \t a b \r\n"), L"a b");
    EXPECT_EQ(Trim(L"\x00A0x\x2003\x3000"), L"x");
    EXPECT_EQ(Trim(L"  "), L"");
    EXPECT_EQ(Trim(L""), L"");
}

TEST(Text, WholeNumbersStopAtTheFirstOtherCharacterAndAreClamped) {
    const std::pair<const wchar_t*, int> cases[] = {{L"12", 12},
                                                    {L"  -7x", -7},
                                                    {L"+3,5", 3},
                                                    {L"", 0},
                                                    {L"x1", 0},
                                                    {L"- 1", 0},
                                                    {L"12_35", 12},
                                                    {L"2147483647", 2147483647},
                                                    {L"99999999999999999999", 2147483647},
                                                    {L"-2147483648", std::numeric_limits<int>::min()},
                                                    {L"-2147483649", std::numeric_limits<int>::min()}};
    for (const auto& [text, value] : cases)
        EXPECT_EQ(ToInt(text), value) << ToNarrow(text);
}

TEST(Text, RealNumbersHaveAPointAndAnOptionalExponent) {
    const std::pair<const wchar_t*, double> cases[] = {{L"12.5", 12.5},
                                                       {L" -.25e2x", -25},
                                                       {L"5.", 5},
                                                       {L"1e", 1},
                                                       {L"1e+", 1},
                                                       {L"1E-2", 0.01},
                                                       {L"12,5", 12},
                                                       {L".", 0},
                                                       {L"-", 0},
                                                       {L"abc", 0},
                                                       {L"inf", 0},
                                                       {L"nan", 0},
                                                       {L"0x10", 0},
                                                       {L"1e-999", 0},
                                                       {L"0e999", 0},
                                                       {L"1e999", HUGE_VAL},
                                                       {L"-1e999", -HUGE_VAL},
                                                       {L"1e99999999999999999999", HUGE_VAL},
                                                       {L"1e-99999999999999999999", 0}};
    for (const auto& [text, value] : cases)
        EXPECT_EQ(ToReal(text), value) << ToNarrow(text);
}

TEST(Text, NarrowTextIsUtf8) {
    EXPECT_EQ(FromNarrow("M\xC3\xB6"
                         "bel \xE2\x82\xAC \xF0\x9F\x98\x80"),
              L"Möbel € \x1F600");
    EXPECT_EQ(ToNarrow(L"Möbel € \x1F600"), "M\xC3\xB6"
                                            "bel \xE2\x82\xAC \xF0\x9F\x98\x80");
}

TEST(Text, NarrowTextThatIsNoUtf8IsReadAsWindows1252) {
    EXPECT_EQ(FromNarrow("M\xF6"
                         "bel \x80\x99\x81"),
              L"Möbel €\x2122\x0081");
    EXPECT_EQ(FromNarrow("\xC0\x80"), L"\xC0\x20AC") << "too long a form";
    EXPECT_EQ(FromNarrow("\xED\xA0\x80"), L"\xED\xA0\x20AC") << "surrogate";
    EXPECT_EQ(FromNarrow("\xF4\x90\x80\x80"), L"\xF4\x90\x20AC\x20AC") << "beyond the last character";
    EXPECT_EQ(FromNarrow("ab\xC3"), L"abÃ") << "cut";
    EXPECT_EQ(FromNarrow("\xE0\x9F\xBF"), L"\xE0\x0178\xBF") << "too long a form";
}

TEST(Text, ANulIsACharacterLikeOthers) {
    const std::wstring wide(L"a\0b", 3);
    EXPECT_EQ(FromNarrow(std::string("a\0b", 3)), wide);
    EXPECT_EQ(ToNarrow(wide), std::string("a\0b", 3));
}

TEST(Text, WhatIsNoCharacterBecomesAQuestionMarkInNarrowText) {
    EXPECT_EQ(ToNarrow(std::wstring{L'a', static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000)}), "a??");
}

TEST(Text, Utf16KeepsPairsAndLoneSurrogates) {
    const std::u16string units = {u'a', 0xD83D, 0xDE00, 0xD800, u'b', 0xDC00};
    const std::wstring wide = FromUtf16(units);
    EXPECT_EQ(wide, (std::wstring{L'a', static_cast<wchar_t>(0x1F600), static_cast<wchar_t>(0xD800), L'b',
                                  static_cast<wchar_t>(0xDC00)}));
    EXPECT_EQ(ToUtf16(wide), units);
    EXPECT_EQ(FromUtf16(u"\xD83D"), std::wstring(1, static_cast<wchar_t>(0xD83D)));
    EXPECT_EQ(ToUtf16(std::wstring(1, static_cast<wchar_t>(0x110000))), u"\xFFFD");
}
