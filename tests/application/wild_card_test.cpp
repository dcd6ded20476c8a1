#include "editor/application/wild_card.h"
#include "editor/sdk/editor.h"
#include "tests/application/EditorSession.h"

#include <chrono>
#include <gtest/gtest.h>

namespace {

using editor::matchesWildCard;

struct Row {
    const wchar_t* text;
    const wchar_t* pattern;
    bool matches;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << '"' << tests::utf8(row.text) << "\" against \"" << tests::utf8(row.pattern) << '"';
}

class WildCards : public testing::TestWithParam<Row> {};

TEST_P(WildCards, MatchAsTheLanguageSays) {
    const Row& row = GetParam();
    EXPECT_EQ(matchesWildCard(row.text, row.pattern), row.matches);
    EXPECT_EQ(acutWcMatch(row.text, row.pattern), row.matches ? RTNORM : RTERROR);
}

const Row plain[] = {
    {L"DOOR", L"DOOR", true}, {L"DOOR", L"door", false}, {L"DOOR", L"DOO", false}, {L"DOOR", L"DOORS", false},
    {L"", L"", true},         {L"A", L"", false},        {L"", L"A", false},       {L"a-b", L"a-b", true},
};
INSTANTIATE_TEST_SUITE_P(Plain, WildCards, testing::ValuesIn(plain));

const Row single[] = {
    {L"7", L"#", true},       {L"A", L"#", false},     {L"\u0664", L"#", false}, {L"x", L"@", true},
    {L"\u00e9", L"@", true},  {L"\u0416", L"@", true}, {L"7", L"@", false},      {L"-", L"@", false},
    {L"-", L".", true},       {L" ", L".", true},      {L"a", L".", false},      {L"5", L".", false},
    {L"x", L"?", true},       {L"", L"?", false},      {L"xy", L"?", false},     {L"A-12", L"@.##", true},
    {L"A-1", L"@.##", false},
};
INSTANTIATE_TEST_SUITE_P(SingleCharacters, WildCards, testing::ValuesIn(single));

const Row sequences[] = {
    {L"", L"*", true},          {L"anything", L"*", true},    {L"A-WALL", L"A-*", true},
    {L"B-WALL", L"A-*", false}, {L"XWALLX", L"*WALL*", true}, {L"WALL", L"*WALL*", true},
    {L"WAL", L"*WALL*", false}, {L"abcbc", L"*bc", true},     {L"abcbd", L"*bc", false},
    {L"aXbXc", L"a*b*c", true}, {L"", L"**", true},           {L"abc", L"a**c", true},
    {L"abab", L"*ab?", false},  {L"ab", L"*a?b", false},      {L"aab", L"*a?b", true},
    {L"aaxb", L"*a?b", true},
};
INSTANTIATE_TEST_SUITE_P(Sequences, WildCards, testing::ValuesIn(sequences));

const Row classes[] = {
    {L"A", L"[ABC]", true},  {L"D", L"[ABC]", false},        {L"D", L"[~ABC]", true},   {L"A", L"[~ABC]", false},
    {L"M", L"[A-Z]", true},  {L"m", L"[A-Z]", false},        {L"m", L"[~A-Z]", true},   {L"-", L"[A-]", true},
    {L"-", L"[-A]", true},   {L"B", L"[A-]", false},         {L"5", L"[A-C3-7]", true}, {L"]", L"[`]]", true},
    {L"-", L"[A`-C]", true}, {L"B", L"[A`-C]", false},       {L",", L"[,;]", true},     {L"*", L"[*?]", true},
    {L"x", L"[*?]", false},  {L"[A", L"[A", true},           {L"A", L"[A", false},      {L"B", L"[C-A]", true},
    {L"~", L"[A~]", true},   {L"ROOM3", L"ROOM[1-4]", true},
};
INSTANTIATE_TEST_SUITE_P(Classes, WildCards, testing::ValuesIn(classes));

const Row others[] = {
    {L"abc", L"~abc", false},
    {L"abd", L"~abc", true},
    {L"WALL", L"~*WALL*", false},
    {L"DOOR", L"~*WALL*", true},
    {L"a~b", L"a~b", true},
    {L"Name", L"???,~*m*,N*", true},
    {L"memo", L"???,~*m*,N*", false},
    {L"DOOR", L"WALL,DOOR", true},
    {L"WINDOW", L"WALL,DOOR", false},
    {L"", L"WALL,", true},
    {L"", L",WALL", true},
    {L"WALL", L",WALL", true},
    {L"A,B", L"A`,B", true},
    {L"A", L"A`,B", false},
    {L"*", L"`*", true},
    {L"x", L"`*", false},
    {L"`", L"``", true},
    {L"`", L"`", true},
    {L"~a", L"`~a", true},
    {L"#1", L"`##", true},
    {L"", L"~", false},
    {L"a", L"~", true},
};
INSTANTIATE_TEST_SUITE_P(NegationAlternativesAndEscapes, WildCards, testing::ValuesIn(others));

TEST(WildCardTime, ManySequencesDoNotExplode) {
    const std::wstring text(2000, L'a');
    std::wstring pattern;
    for (int repeat = 0; repeat < 200; ++repeat)
        pattern += L"*a";
    pattern += L"*b";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(matchesWildCard(text, pattern));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(WildCardCall, ANullTextOrPatternMatchesNothing) {
    EXPECT_EQ(acutWcMatch(nullptr, L"*"), RTERROR);
    EXPECT_EQ(acutWcMatch(L"a", nullptr), RTERROR);
}

} // namespace
