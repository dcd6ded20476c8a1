#include "tessaro/mapping/engine/ResolveMap.h"

#include "tessaro/platform/Text.h"
#include "tests/mapping_engine/MappingTest.h"

#include "editor/sdk/editor.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using tests::Maps;

namespace {

struct ResolveMapTest : tests::MappingTest {
    /// The target for a name, "none" without one; the name has to come back in upper case either way.
    static std::wstring Target(MapScheme& scheme, const std::wstring& name) {
        std::wstring resolved = name, target = L"untouched";
        const bool mapped = ResolveMap(scheme, resolved, target);
        EXPECT_EQ(resolved, platform::ToUpper(name));
        if (!mapped) {
            EXPECT_EQ(target, L"untouched");
        }
        return mapped ? target : L"none";
    }
};

} // namespace

TEST_F(ResolveMapTest, TheFirstPatternThatMatchesTheUpperCasedNameDecides) {
    struct Row {
        const wchar_t *name, *target;
    };
    MapScheme scheme = MakeScheme(0, {{L"A-WALL", L"Walls"},
                                      {L"A-*", L"Rest of A"},
                                      {L"A-DOOR", L"never reached"},
                                      {L"b-low", L"Lower key"},
                                      {L"X#@", L"Digit and letter"},
                                      {L"~*O*,ZERO", L"No letter O, or zero"}});
    for (const Row& row : {Row{L"A-WALL", L"Walls"}, Row{L"a-wall", L"Walls"}, Row{L"A-Wall2", L"Rest of A"},
                           Row{L"A-DOOR", L"Rest of A"}, Row{L"B-Low", L"Lower key"}, Row{L"x1y", L"Digit and letter"},
                           Row{L"7", L"No letter O, or zero"}, Row{L"zero", L"No letter O, or zero"},
                           Row{L"OTHER", L"none"}, Row{L"W\u00e4nde", L"No letter O, or zero"}})
        EXPECT_EQ(Target(scheme, row.name), row.target) << platform::ToNarrow(row.name);
}

TEST_F(ResolveMapTest, UnmatchedNamesGoByTheUnknownMode) {
    struct Row {
        int mode;
        bool isVariable;
        const wchar_t* target;
    };
    SetSymbol(L"STD_LAYER", std::wstring(L"From Variable"));
    for (const Row& row : {Row{0, false, L"none"}, Row{2, false, L"STD_LAYER"}, Row{2, true, L"From Variable"},
                           Row{3, false, L"none"}, Row{-1, true, L"none"}}) {
        MapScheme scheme = MakeScheme(0, {{L"KNOWN", L"LAYER"}});
        scheme.unknownMode = row.mode;
        scheme.unknownValue = L"STD_LAYER";
        scheme.unknownIsVariable = row.isVariable;
        EXPECT_EQ(Target(scheme, L"unknown"), row.target) << row.mode;
        EXPECT_EQ(Target(scheme, L"known"), L"LAYER") << row.mode;
    }
    EXPECT_THAT(asked, IsEmpty());
}

TEST_F(ResolveMapTest, EmptyMapsApplyTheUnknownRuleToEveryName) {
    MapScheme scheme;
    EXPECT_EQ(Target(scheme, L"0"), L"none");
    scheme.unknownMode = 2;
    scheme.unknownValue = L"ALL";
    for (const wchar_t* const name : {L"0", L"DEFPOINTS", L"Any", L""})
        EXPECT_EQ(Target(scheme, name), L"ALL");
}

TEST_F(ResolveMapTest, AVariableGivesItsTextAndStaysItsOwnNameWhereItHoldsNone) {
    struct Row {
        const char* what;
        editor::LispValue value;
        const wchar_t* target;
    };
    const Row rows[] = {{"a text", std::wstring(L"Object Layer"), L"Object Layer"},
                        {"an empty text", std::wstring(), L""},
                        {"undefined", {}, L"S_LYR"},
                        {"a whole number", 5, L"S_LYR"},
                        {"a real", 2.5, L"S_LYR"},
                        {"an object", AcDbObjectId{&drawing, 0x1F}, L"S_LYR"}};
    for (const Row& row : rows) {
        SetSymbol(L"s_lyr", row.value);
        MapScheme scheme = MakeScheme(0, {{L"A", L"Var:S_LYR"}});
        EXPECT_EQ(Target(scheme, L"A"), row.target) << row.what;
        scheme = MakeScheme(0, {});
        scheme.unknownMode = 2;
        scheme.unknownValue = L"S_LYR";
        scheme.unknownIsVariable = true;
        EXPECT_EQ(Target(scheme, L"A"), row.target) << row.what;
    }
}

TEST_F(ResolveMapTest, AVariablesNoteForAKeyThatMapsDoNotHoldHasNoEffect) {
    SetSymbol(L"S_LYR", std::wstring(L"Object Layer"));
    MapScheme scheme = MakeScheme(0, {{L"A", L"S_LYR"}});
    scheme.variableMaps.SetAt(L"B", 1);
    EXPECT_EQ(Target(scheme, L"A"), L"S_LYR");
    EXPECT_EQ(Target(scheme, L"B"), L"none");
}

TEST_F(ResolveMapTest, AnAnswerIsTheTargetAndANewMapThatIsNotAskedForAgain) {
    MapScheme scheme = MakeScheme(2, {});
    scheme.unknownMode = 1;
    Answer(L"Red Layer");
    EXPECT_EQ(Target(scheme, L"1"), L"Red Layer");
    EXPECT_EQ(Target(scheme, L"1"), L"Red Layer");
    EXPECT_THAT(asked, ElementsAre(Pair(2, L"1")));
    EXPECT_EQ(*scheme.maps.Lookup(L"1"), L"Red Layer");
    EXPECT_TRUE(scheme.variableMaps.empty());
}

TEST_F(ResolveMapTest, AnAnsweredVariablesOwnNameIsTheLayerOnceAndItsTextFromThenOn) {
    SetSymbol(L"S_LYR", std::wstring(L"Object Layer"));
    MapScheme scheme = MakeScheme(0, {});
    scheme.unknownMode = 1;
    Answer(L"S_LYR", true);
    EXPECT_EQ(Target(scheme, L"Walls"), L"S_LYR");
    EXPECT_EQ(Target(scheme, L"Walls"), L"Object Layer");
    EXPECT_THAT(asked, ElementsAre(Pair(0, L"WALLS")));
    EXPECT_EQ(*scheme.variableMaps.Lookup(L"WALLS"), 1);
}

TEST_F(ResolveMapTest, ACancelledQuestionMapsNothingAndComesAgainForTheSameName) {
    MapScheme scheme = MakeScheme(1, {});
    scheme.unknownMode = 1;
    Cancel();
    Cancel();
    Answer(L"LAYER");
    EXPECT_EQ(Target(scheme, L"Dashed"), L"none");
    EXPECT_EQ(Target(scheme, L"Dashed"), L"none");
    EXPECT_TRUE(scheme.maps.empty());
    EXPECT_EQ(Target(scheme, L"Dashed"), L"LAYER");
    EXPECT_EQ(asked.size(), 3u);
}

TEST_F(ResolveMapTest, WithNobodyToAskAQuestionCountsAsCancelled) {
    MapScheme scheme = MakeScheme(0, {});
    scheme.unknownMode = 1;
    SetNewMapQuestion(nullptr);
    EXPECT_EQ(Target(scheme, L"A"), L"none");
}

TEST_F(ResolveMapTest, MalformedPatternsMatchAsTheHostTakesThem) {
    for (const wchar_t* const pattern : {L"[", L"[A", L"[~", L"[~]", L"[]", L"[Z-A]", L"`", L"A`", L"~", L"~~", L",",
                                         L",,A", L"*`", L"[A-", L"[`", L"**********A**********", L""}) {
        MapScheme scheme = MakeScheme(0, {{pattern, L"TARGET"}});
        for (const wchar_t* const name : {L"A", L"[", L"[A", L"`", L"", L"~"}) {
            const bool expected = acutWcMatch(name, platform::ToUpper(pattern).c_str()) == RTNORM;
            EXPECT_EQ(Target(scheme, name), expected ? L"TARGET" : L"none")
                << platform::ToNarrow(pattern) << " on " << platform::ToNarrow(name);
        }
    }
}

TEST_F(ResolveMapTest, OfTenThousandMapsTheOneThatMatchesIsFoundAlsoAtTheEnd) {
    MapScheme scheme;
    for (int i = 0; i < 10'000; ++i)
        scheme.maps.SetAt(L"LAYER-" + std::to_wstring(i) + L"-*", std::to_wstring(i));
    EXPECT_EQ(Target(scheme, L"layer-9999-x"), L"9999");
    EXPECT_EQ(Target(scheme, L"layer-0-x"), L"0");
    EXPECT_EQ(Target(scheme, L"layer-10000-x"), L"none");
}
