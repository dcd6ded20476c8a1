// The small languages of the command line: answers, keywords, numbers and points, formats, expressions.
#include "editor/application/format.h"
#include "editor/application/input_text.h"
#include "editor/application/keywords.h"
#include "editor/application/lisp.h"
#include "editor/application/numbers.h"
#include "tests/application/EditorSession.h"

#include <cmath>
#include <gtest/gtest.h>
#include <locale.h>

namespace editor {

void PrintTo(const InputText::Answer& answer, std::ostream* out) {
    *out << "kind " << static_cast<int>(answer.kind) << " \"" << tests::utf8(answer.text) << '"';
}

} // namespace editor

namespace {

using namespace editor;
using Answer = InputText::Answer;
using Kind = Answer::Kind;

std::vector<Answer> words(std::wstring_view text, AnswerEnd end = AnswerEnd::BlankOrLine) {
    InputText input(text);
    std::vector<Answer> answers;
    while (!input.empty()) {
        answers.push_back(input.take(end));
        if (answers.back().kind == Kind::Unfinished)
            break;
    }
    return answers;
}

Answer text(const wchar_t* answer) {
    return {Kind::Text, answer};
}
const Answer cancel{Kind::Cancel, {}};

TEST(Answers, ABlankAndALineEndBothEndOne) {
    EXPECT_EQ(words(L"LINE 0,0\n1,1 \n"), (std::vector{text(L"LINE"), text(L"0,0"), text(L"1,1"), text(L"")}));
}

TEST(Answers, EveryFurtherBlankIsAnEmptyAnswer) {
    EXPECT_EQ(words(L"A  B\n\n"), (std::vector{text(L"A"), text(L""), text(L"B"), text(L"")}));
}

TEST(Answers, AWholeLineKeepsItsBlanks) {
    EXPECT_EQ(words(L" /a b/DOOR.dwg \nX\n", AnswerEnd::Line), (std::vector{text(L" /a b/DOOR.dwg "), text(L"X")}));
}

TEST(Answers, CarriageReturnsAreDroppedAndTabsAreBlanks) {
    EXPECT_EQ(words(L"A\tB\r\n"), (std::vector{text(L"A"), text(L"B")}));
}

TEST(Answers, EscapeCancelsWhereverItStands) {
    EXPECT_EQ(words(L"\x1B"
                    L"AB\x1B"
                    L"C\n"),
              (std::vector{cancel, cancel, text(L"C")}));
    EXPECT_EQ(words(L"a b\x1B", AnswerEnd::Line), (std::vector{cancel}));
}

TEST(Answers, CaretCCancelsAtTheStartOfAnAnswerOnly) {
    EXPECT_EQ(words(L"^C^cLINE a^C\n"), (std::vector{cancel, cancel, text(L"LINE"), text(L"a^C")}));
}

TEST(Answers, TextWithoutAnEndIsUnfinishedAndStays) {
    EXPECT_EQ(words(L"LI"), (std::vector{Answer{Kind::Unfinished, L"LI"}}));
    EXPECT_EQ(words(L"A (entlast"), (std::vector{text(L"A"), Answer{Kind::Unfinished, L"(entlast"}}));
}

TEST(Answers, AnExpressionRunsToItsLastParenthesisAndTakesOneEndWithIt) {
    EXPECT_EQ(words(L"(setq a \")(\"\n b) \n"),
              (std::vector{Answer{Kind::Expression, L"(setq a \")(\"\n b)"}, text(L"")}));
    EXPECT_EQ(words(L"(entlast)\n\n"), (std::vector{Answer{Kind::Expression, L"(entlast)"}, text(L"")}));
    EXPECT_EQ(words(L"(entlast)", AnswerEnd::Line), (std::vector{Answer{Kind::Unfinished, L"(entlast)"}}));
}

TEST(Answers, EscapeInsideAnExpressionCancelsIt) {
    EXPECT_EQ(words(L"(setq a\x1B"
                    L"B\n"),
              (std::vector{cancel, text(L"B")}));
}

TEST(Answers, TextPutInFrontIsTakenFirst) {
    InputText input(L"NE 1\n");
    input.prepend(L"LI");
    EXPECT_EQ(input.take(AnswerEnd::BlankOrLine), text(L"LINE"));
}

TEST(Scripts, LinesThatBeginWithASemicolonAreDropped) {
    EXPECT_EQ(withoutComments(L"; first\nLINE\n 0,0 ; kept\n;last"), L"LINE\n 0,0 ; kept\n");
    EXPECT_EQ(withoutComments(L"\n\n"), L"\n\n");
}

std::string textOrNone(const std::optional<std::wstring>& text) {
    return text ? tests::utf8(*text) : "";
}

struct KeywordRow {
    const wchar_t* words;
    const wchar_t* answer;
    const wchar_t* match;
};

class KeywordAnswers : public testing::TestWithParam<KeywordRow> {};

TEST_P(KeywordAnswers, MatchFromTheCapitalsOn) {
    const auto& [list, answer, match] = GetParam();
    EXPECT_EQ(textOrNone(Keywords(list).match(answer)), tests::utf8(match)) << tests::utf8(answer);
}

INSTANTIATE_TEST_SUITE_P(
    All, KeywordAnswers,
    testing::Values(KeywordRow{L"Scale Rotate", L"S", L"Scale"}, KeywordRow{L"Scale Rotate", L"_scale", L"Scale"},
                    KeywordRow{L"Scale Rotate", L"_SCA", L"Scale"}, KeywordRow{L"Scale Rotate", L"scalex", L""},
                    KeywordRow{L"Scale Rotate", L"", L""}, KeywordRow{L"Scale Rotate", L"_", L""},
                    KeywordRow{L"LType Layer", L"L", L"Layer"}, KeywordRow{L"LType", L"L", L""},
                    KeywordRow{L"LType", L"lt", L"LType"}, KeywordRow{L"eXit", L"x", L"eXit"},
                    KeywordRow{L"eXit", L"xi", L"eXit"}, KeywordRow{L"eXit", L"e", L""},
                    KeywordRow{L"eXit", L"exit", L"eXit"}, KeywordRow{L"Yes No", L"_y", L"Yes"},
                    KeywordRow{L"X XYZ", L"xyz", L"XYZ"}, KeywordRow{L"2000 2004", L"2004", L"2004"},
                    KeywordRow{L"2000 2004", L"20", L""}));

TEST(Numbers, AreReadWithADecimalPointOnly) {
    EXPECT_EQ(parseNumber(L"1.5"), 1.5);
    EXPECT_EQ(parseNumber(L"-2"), -2.0);
    EXPECT_EQ(parseNumber(L"+3e2"), 300.0);
    EXPECT_EQ(parseNumber(L".5"), 0.5);
    for (const wchar_t* wrong : {L"", L"1,5", L"1.5x", L"nan", L"inf", L"+-1", L"++1", L"--1", L"1e999", L"\u0661"})
        EXPECT_FALSE(parseNumber(wrong)) << tests::utf8(wrong);
}

TEST(Points, AreAbsoluteRelativeOrPolar) {
    const AcGePoint3d last{10, 20, 5};
    const auto near = [](const AcGePoint3d& point) {
        return testing::AllOf(testing::Field("x", &AcGePoint3d::x, testing::DoubleNear(point.x, 1e-9)),
                              testing::Field("y", &AcGePoint3d::y, testing::DoubleNear(point.y, 1e-9)),
                              testing::Field("z", &AcGePoint3d::z, testing::DoubleNear(point.z, 1e-9)));
    };
    EXPECT_THAT(parsePoint(L"1,2", last).value(), near({1, 2, 0}));
    EXPECT_THAT(parsePoint(L"1,-2.5,3", last).value(), near({1, -2.5, 3}));
    EXPECT_THAT(parsePoint(L"@1,2", last).value(), near({11, 22, 5}));
    EXPECT_THAT(parsePoint(L"@1,2,3", last).value(), near({11, 22, 8}));
    EXPECT_THAT(parsePoint(L"@", last).value(), near({10, 20, 5}));
    EXPECT_THAT(parsePoint(L"2<90", last).value(), near({0, 2, 0}));
    EXPECT_THAT(parsePoint(L"@2<180", last).value(), near({8, 20, 5}));
    for (const wchar_t* wrong : {L"", L"1", L"1,", L",1", L"1,2,3,4", L"1,x", L"1<", L"<1", L"@<", L"_scale"})
        EXPECT_FALSE(parsePoint(wrong, last)) << tests::utf8(wrong);
}

std::string formatted(const wchar_t* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string result = tests::utf8(formatWide(format, arguments));
    va_end(arguments);
    return result;
}

TEST(Formats, TakeWideTextForS) {
    EXPECT_EQ(formatted(L"%s Loaded! (%s, %s)\n", L"3.9.10", L"d\u00e9c", L"t"), "3.9.10 Loaded! (d\u00e9c, t)\n");
    EXPECT_EQ(formatted(L"%ls|%hs|%S", L"wide", "narrow", "too"), "wide|narrow|too");
    EXPECT_EQ(formatted(L"[%6s][%-6s][%.2s][%*s]", L"abc", L"abc", L"abc", 4, L"x"), "[   abc][abc   ][ab][   x]");
    EXPECT_EQ(formatted(L"%s", static_cast<const wchar_t*>(nullptr)), "(null)");
}

TEST(Formats, TakeNumbersAsThePlatformDoes) {
    EXPECT_EQ(formatted(L"%d %5d %-5d| %05d %+d", 42, 42, 42, 42, 42), "42    42 42   | 00042 +42");
    EXPECT_EQ(formatted(L"%ld %lld %u %x %X %o", 7L, 8LL, 9u, 255u, 255u, 8u), "7 8 9 ff FF 10");
    EXPECT_EQ(formatted(L"%f %.2f %g %e", 1.5, 2.345, 0.25, 12.0), "1.500000 2.35 0.25 1.200000e+01");
    EXPECT_EQ(formatted(L"%c%c%%", L'a', L'\u00e9'), "a\u00e9%");
}

TEST(Formats, KeepWhatTheyDoNotKnow) {
    EXPECT_EQ(formatted(L"%y %"), "%y %");
    EXPECT_EQ(formatted(L"100%"), "100%");
}

TEST(Formats, BoundTheirFields) {
    EXPECT_EQ(formatted(L"%999999999d", 1).size(), 4096u);
}

TEST(Formats, KeepTheDecimalPointUnderAGermanLocale) {
    const locale_t german = newlocale(LC_ALL_MASK, "de_DE.UTF-8", nullptr);
    if (german == nullptr)
        GTEST_SKIP() << "no German locale on this machine";
    const locale_t before = uselocale(german);
    const std::string text = formatted(L"%.2f", 1.5);
    uselocale(before);
    freelocale(german);
    EXPECT_EQ(text, "1.50");
}

TEST(NumberTexts, AreReadBackAsTheyWere) {
    for (const double value : {0.0, 1.0, -2.5, 0.1, 1e-9, 1e20, 123456789.125})
        EXPECT_EQ(parseNumber(numberText(value)), value) << tests::utf8(numberText(value));
    EXPECT_EQ(numberText(90), L"90");
    EXPECT_EQ(numberText(1.5, 3), L"1.500");
}

class Expressions : public testing::Test {
protected:
    std::string value(std::wstring_view expression) { return tests::utf8(Lisp::text(lisp.evaluate(expression))); }

    AcDbObjectId last;
    Lisp lisp{[this] { return last; }};
};

TEST_F(Expressions, SetqKeepsTextsAndNumbers) {
    EXPECT_EQ(value(L"(setq a \"WALLS\")"), "\"WALLS\"");
    EXPECT_EQ(value(L"a"), "\"WALLS\"");
    EXPECT_EQ(value(L"A"), "\"WALLS\"");
    EXPECT_EQ(value(L"(setq b 3 c 2.5)"), "2.5");
    EXPECT_EQ(value(L"b"), "3");
    EXPECT_EQ(value(L"(setq d \"a \\\"quoted\\\" \\\\ word\")"), "\"a \"quoted\" \\ word\"");
}

TEST_F(Expressions, NilForgetsASymbol) {
    value(L"(setq a 1)");
    EXPECT_EQ(value(L"(setq a nil)"), "nil");
    EXPECT_EQ(value(L"a"), "nil");
    EXPECT_EQ(value(L"()"), "nil");
}

TEST_F(Expressions, EntlastIsTheLastEntityOrNil) {
    EXPECT_EQ(value(L"(entlast)"), "nil");
    last.handle = 0x2A;
    EXPECT_EQ(value(L"( entlast )"), "<Entity name: 2a>");
    EXPECT_EQ(value(L"(setq e (entlast))"), "<Entity name: 2a>");
}

TEST_F(Expressions, WhatIsNotKnownIsAnError) {
    const std::wstring deep = std::wstring(100, L'(') + L"a" + std::wstring(100, L')');
    std::wstring nested;
    for (int level = 0; level < 100; ++level)
        nested += L"(setq a ";
    for (const std::wstring& wrong :
         {std::wstring(L"(foo)"), std::wstring(L"(setq 1"), std::wstring(L"(setq a)"), std::wstring(L"(entlast 1)"),
          std::wstring(L")"), std::wstring(L"\"open"), std::wstring(L"1 2"), std::wstring(L"(setq \"a\" 1)"),
          std::wstring(), deep, nested})
        EXPECT_THROW(lisp.evaluate(wrong), LispError) << tests::utf8(wrong);
}

} // namespace
