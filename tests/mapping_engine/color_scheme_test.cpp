#include "tests/mapping_engine/MappingTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using tests::Kind;
using tests::Look;
using tests::Names;

namespace {

struct ColorScheme : tests::MappingTest {
    ColorScheme() { AddLayer(L"Green", 3); }
    void Run(MapScheme& scheme) { ASSERT_TRUE(MappingRun(side, scheme).MapColorScheme()); }
};

} // namespace

TEST_F(ColorScheme, AnEntityGoesByItsOwnColourOrByThatOfItsLayer) {
    const auto own = Add(Kind::Line, {L"Green", 1}), byLayer = Add(Kind::Line, {L"Green", 256});
    const auto unmapped = Add(Kind::Line, {L"0", 200});
    MapScheme scheme = MakeScheme(2, {{L"1", L"Red"}, {L"3", L"GRN"}}, true);
    Run(scheme);
    EXPECT_EQ(LookOf(own), Look{L"RED"});
    EXPECT_EQ(LookOf(byLayer), Look{L"GRN"}) << "numbers have no case, so that a layer in lower case maps as well";
    EXPECT_EQ(LookOf(unmapped), (Look{L"0", 200}));
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"RED", L"GRN"}));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(ColorScheme, ColourZeroStaysAndStaysOpen) {
    const auto entity = Add(Kind::Line, {L"Green", 0});
    MapScheme scheme = MakeScheme(2, {{L"*", L"ALL"}});
    Run(scheme);
    EXPECT_EQ(LookOf(entity), (Look{L"Green", 0}));
    EXPECT_THAT(messages, ElementsAre(L"Could not erase layer Green"));
    AcDbEntity* opened = nullptr;
    EXPECT_EQ(acdbOpenObject(opened, entity, AcDb::kForWrite), Acad::eWasOpenForRead);
}

TEST_F(ColorScheme, NeitherWordForNoColourOfItsOwnIsLookedUp) {
    const auto byLayer = Add(Kind::Line, {L"Green", 256}), byBlock = Add(Kind::Line, {L"Green", 0});
    MapScheme scheme = MakeScheme(2, {{L"256", L"WRONG"}, {L"0", L"WRONG"}});
    Run(scheme);
    EXPECT_EQ(LookOf(byLayer).layer, L"Green");
    EXPECT_EQ(LookOf(byBlock).layer, L"Green");
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"Green"}));
}

TEST_F(ColorScheme, TheTwoWalksTreatDefpointsDifferently) {
    AddLayer(L"DEFPOINTS", 5);
    const auto entity = Add(Kind::Line, {L"DEFPOINTS"});
    {
        MapScheme scheme = MakeScheme(2, {{L"5", L"BLUE"}});
        Run(scheme);
        EXPECT_EQ(LookOf(entity).layer, L"DEFPOINTS");
    }
    {
        const auto other = Add(Kind::Line, {L"0", 5});
        MapScheme scheme = MakeScheme(2, {{L"5", L"BLUE"}});
        Run(scheme);
        EXPECT_EQ(LookOf(other).layer, L"BLUE");
        EXPECT_EQ(LookOf(entity).layer, L"BLUE");
    }
}

TEST_F(ColorScheme, ALayersColourCountsAlsoWhereTheLayerIsOff) {
    side.impl()->drawing.body<dwg::Layer>({0, tests::layerNamed(side, L"Green").handle})->color.index = -3;
    const auto entity = Add(Kind::Line, {L"Green"});
    MapScheme scheme = MakeScheme(2, {{L"3", L"GRN"}});
    Run(scheme);
    EXPECT_EQ(LookOf(entity).layer, L"GRN");
}

TEST_F(ColorScheme, ASpecialEntryIsNoneForTheFirstWalkAndHoldsItsEntitiesBackInTheSecond) {
    const auto text = Add(Kind::Text, {L"Green", 1}), line = Add(Kind::Line, {L"Green", 1});
    MapScheme scheme = MakeScheme(2, {{L"1", L"RED"}, {L"*TEXT OBJECTS", L"T"}});
    Run(scheme);
    EXPECT_EQ(LookOf(text).layer, L"Green");
    EXPECT_EQ(LookOf(line).layer, L"RED");
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"Green", L"RED"})) << "its target is never made";
    EXPECT_THAT(messages, ElementsAre(L"Could not erase layer Green"));
}

TEST_F(ColorScheme, PatternsAndQuestionsSpeakOfDecimalNumbers) {
    const auto tens = Add(Kind::Line, {L"0", 10}), hundreds = Add(Kind::Line, {L"0", 100});
    Add(Kind::Line, {L"0", 42});
    MapScheme scheme = MakeScheme(2, {{L"1#", L"TENS"}, {L"1##", L"HUNDREDS"}});
    scheme.unknownMode = 1;
    Run(scheme);
    EXPECT_EQ(LookOf(tens).layer, L"TENS");
    EXPECT_EQ(LookOf(hundreds).layer, L"HUNDREDS");
    EXPECT_THAT(asked, ElementsAre(Pair(2, L"42")));
}

TEST_F(ColorScheme, TheDefaultTakesEveryUnknownColour) {
    const auto own = Add(Kind::Line, {L"Green", 9}), byLayer = Add(Kind::Line, {L"Green"});
    MapScheme scheme = MakeScheme(2, {});
    scheme.unknownMode = 2;
    scheme.unknownValue = L"S_LYR";
    scheme.unknownIsVariable = true;
    SetSymbol(L"S_LYR", std::wstring(L"objects"));
    Run(scheme);
    EXPECT_EQ(LookOf(own), (Look{L"OBJECTS", 9}));
    EXPECT_EQ(LookOf(byLayer), Look{L"OBJECTS"});
}
