#include "tessaro/platform/Text.h"

#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cmath>

using platform::Format;

TEST(Format, TextIsWideAndANullIsEmpty) {
    EXPECT_EQ(Format(L"%s|%ls|%S|%hs|%c", L"wide", L"too", "n\xC3\xA4rrow", "n", L'ä'), L"wide|too|närrow|n|ä");
    EXPECT_EQ(Format(L"<%s><%S>", static_cast<const wchar_t*>(nullptr), static_cast<const char*>(nullptr)), L"<><>");
    EXPECT_EQ(Format(L"<%5s><%-5s><%.2s><%.*s>", L"abc", L"abc", L"abc", 1, L"abc"), L"<  abc><abc  ><ab><a>");
}

TEST(Format, TextWithAPrecisionNeedsNoTerminator) {
    const wchar_t letters[] = {L'a', L'b'};
    EXPECT_EQ(Format(L"%.2s", letters), L"ab");
}

TEST(Format, WholeNumbers) {
    EXPECT_EQ(Format(L"%d %i %u %x %X", -5, 7, 4000000000u, 0xbeefu, 0xbeefu), L"-5 7 4000000000 beef BEEF");
    EXPECT_EQ(Format(L"%ld %lu %lx %zu", LONG_MIN, ULONG_MAX, 0xfUL, std::size_t{3}),
              L"-9223372036854775808 18446744073709551615 f 3");
    EXPECT_EQ(Format(L"%lld %llu", -1LL, 1ULL), L"-1 1");
    EXPECT_EQ(Format(L"%hd %hhd %hu %hhu", 65537, 257, 65537, 257), L"1 1 1 1");
    EXPECT_EQ(Format(L"<%5d><%-5d><%05d><%+d><% d><%.3d><%#x><%5.3d>", 42, 42, -42, 42, 42, 7, 255, 7),
              L"<   42><42   ><-0042><+42>< 42><007><0xff><  007>");
    EXPECT_EQ(Format(L"<%*d><%*d>", 4, 1, -4, 1), L"<   1><1   >");
}

TEST(Format, RealNumbersHaveAPointInEveryLocale) {
    const auto check = [] {
        EXPECT_EQ(Format(L"%f %.2f %e %g %G", 12.5, -0.125, 12345.678, 0.0001, 1e-10),
                  L"12.500000 -0.12 1.234568e+04 0.0001 1E-10");
        EXPECT_EQ(Format(L"<%8.2f><%-8.1f><%08.2f><%+.0f><%.*f>", 3.14159, 2.5, -1.5, 2.0, 3, 1.0),
                  L"<    3.14><2.5     ><-0001.50><+2><1.000>");
        EXPECT_EQ(Format(L"%f %f %F?", HUGE_VAL, -HUGE_VAL, 0), L"inf -inf %F?");
        EXPECT_EQ(platform::ToReal(L"12.5"), 12.5);
    };
    check();
    EXPECT_EQ(Format(L"%f", std::nan("")), L"nan");
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr)
        GTEST_SKIP() << "the German locale is not installed";
    check();
    std::setlocale(LC_ALL, "C");
}

TEST(Format, GreatAndSmallNumbersAreWrittenInFull) {
    EXPECT_EQ(Format(L"%f", 1e300).size(), 308u);
    EXPECT_EQ(Format(L"%.0f", 1e22), L"10000000000000000000000");
    EXPECT_EQ(Format(L"%.1200f", 0.5).size(), 1202u);
}

TEST(Format, UnknownConversionsAndALonePercentStand) {
    EXPECT_EQ(Format(L"%% %q %"), L"% %q %");
    EXPECT_EQ(Format(L"100%%"), L"100%");
}

TEST(Format, TheResultIsBounded) {
    const std::wstring much(platform::kFormatLimit - 1, L'x');
    EXPECT_EQ(Format(L"%s%s", much.c_str(), L"abc").size(), platform::kFormatLimit);
    EXPECT_EQ(Format(L"%999999999d", 1).size(), platform::kFormatLimit);
    EXPECT_EQ(Format(L"%.999999999d", 1).size(), platform::kFormatLimit);
}
