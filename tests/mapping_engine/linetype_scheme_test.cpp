#include "tests/mapping_engine/MappingTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using tests::Kind;
using tests::Look;
using tests::Maps;
using tests::Names;

namespace {

struct LinetypeScheme : tests::MappingTest {
    LinetypeScheme() {
        for (const wchar_t* const name : {L"DASHED", L"HIDDEN", L"Center"})
            AddLinetype(name);
        AddLayer(L"PLAIN", 7, L"DASHED");
    }
    void Run(MapScheme& scheme) { ASSERT_TRUE(MappingRun(side, scheme).MapLinetypeScheme()); }
};

} // namespace

TEST_F(LinetypeScheme, AnEntityGoesByItsOwnLinetypeOrByThatOfItsLayer) {
    const auto own = Add(Kind::Line, {L"PLAIN", 3, L"HIDDEN"});
    const auto byLayer = AddLine(L"PLAIN");
    MapScheme scheme = MakeScheme(1, {{L"DASHED", L"D"}, {L"HIDDEN", L"H"}});
    Run(scheme);
    EXPECT_EQ(LookOf(own), (Look{L"H", 3, L"HIDDEN"}));
    EXPECT_EQ(LookOf(byLayer).layer, L"D");
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"H", L"D"})) << "in the order in which the walk came upon them";
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LinetypeScheme, ByBlockEntitiesStayAndStayOpen) {
    const auto entity = Add(Kind::Line, {L"PLAIN", 256, L"BYBLOCK"});
    MapScheme scheme = MakeScheme(1, {{L"*", L"ALL"}});
    Run(scheme);
    EXPECT_EQ(LookOf(entity), (Look{L"PLAIN", 256, L"BYBLOCK"}));
    EXPECT_THAT(messages, ElementsAre(L"Could not erase layer PLAIN")) << "nothing kept its layer";
    AcDbEntity* opened = nullptr;
    EXPECT_EQ(acdbOpenObject(opened, entity, AcDb::kForWrite), Acad::eWasOpenForRead);
}

TEST_F(LinetypeScheme, AnEntityThatNoMapMatchesKeepsItsLayerUnderItsOwnName) {
    AddLayer(L"Mixed", 7, L"HIDDEN");
    AddLayer(L"EMPTY", 7, L"HIDDEN");
    const auto mixed = AddLine(L"Mixed"), zero = AddLine(L"0");
    MapScheme scheme = MakeScheme(1, {{L"DASHED", L"D"}}, true);
    MappingRun run(side, scheme);
    ASSERT_TRUE(run.MapLinetypeScheme());
    EXPECT_THAT(run.keep.Names(), ElementsAre(L"Mixed"));
    EXPECT_EQ(LookOf(mixed).layer, L"Mixed");
    EXPECT_EQ(LookOf(zero).layer, L"0");
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"Mixed"})) << "layers that nothing stays on go";
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LinetypeScheme, ALinetypeWithLowerCaseLettersIsMappedInTheFirstWalkAndNotFoundInTheSecond) {
    const auto entity = Add(Kind::Line, {L"PLAIN", 256, L"Center"});
    MapScheme scheme = MakeScheme(1, {{L"CENTER", L"C"}});
    MappingRun run(side, scheme);
    ASSERT_TRUE(run.MapLinetypeScheme());
    EXPECT_EQ(run.entityMap.at(L"CENTER"), L"C");
    EXPECT_EQ(LookOf(entity), (Look{L"PLAIN", 256, L"Center"}));
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"PLAIN", L"C"}));
    EXPECT_THAT(messages, ElementsAre(L"Could not erase layer PLAIN"));
}

TEST_F(LinetypeScheme, TheTwoWalksTreatDefpointsDifferently) {
    AddLayer(L"DEFPOINTS", 7, L"DASHED");
    const auto entity = AddLine(L"DEFPOINTS");
    {
        MapScheme scheme = MakeScheme(1, {{L"DASHED", L"D"}, {L"HIDDEN", L"H"}});
        MappingRun run(side, scheme);
        ASSERT_TRUE(run.MapLinetypeScheme());
        EXPECT_THAT(run.entityMap, ElementsAre(Pair(L"DEFPOINTS", L"DEFPOINTS"))) << "the first goes by the layer";
        EXPECT_EQ(LookOf(entity).layer, L"DEFPOINTS") << "the second by its linetype, which nobody entered";
    }
    {
        const auto other = AddLine(L"0");
        AcDbEntity* opened = nullptr;
        ASSERT_EQ(acdbOpenObject(opened, other, AcDb::kForWrite), eOk);
        opened->setLinetype(L"DASHED");
        opened->close();
        MapScheme scheme = MakeScheme(1, {{L"DASHED", L"D"}});
        Run(scheme);
        EXPECT_EQ(LookOf(entity).layer, L"D") << "once another entity entered it";
    }
}

TEST_F(LinetypeScheme, AMapForDefpointsEntersAKeyThatTheSecondWalkDoesNotUse) {
    AddLayer(L"DEFPOINTS", 7, L"DASHED");
    const auto entity = AddLine(L"DEFPOINTS");
    MapScheme scheme = MakeScheme(1, {{L"DEFPOINTS", L"POINTS"}});
    Run(scheme);
    EXPECT_EQ(LookOf(entity).layer, L"DEFPOINTS");
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"DEFPOINTS", L"POINTS"}));
}

TEST_F(LinetypeScheme, DefpointsInMixedCaseAreErasedLikeOthers) {
    AddLayer(L"Defpoints", 7, L"DASHED");
    const auto entity = AddLine(L"Defpoints");
    MapScheme scheme = MakeScheme(1, {{L"DASHED", L"D"}});
    Run(scheme);
    EXPECT_EQ(LookOf(entity).layer, L"D");
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"D"}));
}

namespace {

struct SpecialRow {
    const char* name;
    Maps maps;
    const wchar_t *text, *attribute, *mtext, *dimension, *line; ///< layers afterwards
};

} // namespace

TEST_F(LinetypeScheme, OneSpecialEntryIsUsedAndTakesItsKindsByTheirClass) {
    const wchar_t *const texts = L"*TEXT OBJECTS", *const dimensions = L"*DIMENSION OBJECTS",
                         *const both = L"*TEXT AND DIMENSION OBJECTS";
    const SpecialRow rows[] = {
        {"none", {{L"DASHED", L"D"}}, L"D", L"D", L"D", L"D", L"D"},
        {"texts", {{L"DASHED", L"D"}, {texts, L"T"}}, L"T", L"T", L"D", L"D", L"D"},
        {"dimensions", {{L"DASHED", L"D"}, {dimensions, L"M"}}, L"D", L"D", L"D", L"M", L"D"},
        {"both", {{L"DASHED", L"D"}, {both, L"B"}}, L"B", L"B", L"D", L"B", L"D"},
        {"texts before dimensions", {{dimensions, L"M"}, {texts, L"T"}}, L"T", L"T", L"START", L"START", L"START"},
        {"texts before both", {{both, L"B"}, {texts, L"T"}}, L"T", L"T", L"START", L"START", L"START"},
        {"dimensions before both", {{both, L"B"}, {dimensions, L"M"}}, L"START", L"START", L"START", L"M", L"START"},
        {"all three", {{both, L"B"}, {dimensions, L"M"}, {texts, L"T"}}, L"T", L"T", L"START", L"START", L"START"},
        {"a key in lower case is none", {{L"*text objects", L"T"}}, L"START", L"START", L"START", L"START", L"START"},
        {"an earlier pattern takes the special word too",
         {{L"*", L"ALL"}, {texts, L"T"}},
         L"ALL",
         L"ALL",
         L"ALL",
         L"ALL",
         L"ALL"},
    };
    for (const SpecialRow& row : rows) {
        if (!tests::layerNamed(side, L"START").handle)
            AddLayer(L"START", 7, L"DASHED");
        const Look look{L"START"};
        const auto text = Add(Kind::Text, look), attribute = Add(Kind::AttributeDefinition, look),
                   mtext = Add(Kind::MText, look), dimension = Add(Kind::Dimension, look), line = Add(Kind::Line, look);
        MapScheme scheme = MakeScheme(1, row.maps);
        Run(scheme);
        EXPECT_EQ(LookOf(text).layer, row.text) << row.name;
        EXPECT_EQ(LookOf(attribute).layer, row.attribute) << row.name;
        EXPECT_EQ(LookOf(mtext).layer, row.mtext) << row.name;
        EXPECT_EQ(LookOf(dimension).layer, row.dimension) << row.name;
        EXPECT_EQ(LookOf(line).layer, row.line) << row.name;
        for (const auto entity : {text, attribute, mtext, dimension, line})
            ASSERT_EQ(tests::erase(entity), eOk);
    }
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LinetypeScheme, ASpecialEntryComesBeforeByBlock) {
    const auto text = Add(Kind::Text, {L"PLAIN", 256, L"BYBLOCK"});
    MapScheme scheme = MakeScheme(1, {{L"*TEXT OBJECTS", L"T"}});
    Run(scheme);
    EXPECT_EQ(LookOf(text).layer, L"T");
}

TEST_F(LinetypeScheme, ASpecialKeyIsItselfAPatternForLinetypesThatEndSo) {
    AddLinetype(L"BIG TEXT OBJECTS");
    const auto line = Add(Kind::Line, {L"PLAIN", 256, L"BIG TEXT OBJECTS"});
    MapScheme scheme = MakeScheme(1, {{L"*TEXT OBJECTS", L"T"}});
    Run(scheme);
    EXPECT_EQ(LookOf(line).layer, L"T");
}

TEST_F(LinetypeScheme, QuestionsComeInTheOrderOfEntitiesAndEndWithTheFirstAnswer) {
    tests::addBlock(side, L"INNER");
    Add(Kind::Line, {L"PLAIN", 256, L"HIDDEN"});
    Add(Kind::Line, {L"PLAIN", 256, L"Center"});
    Add(Kind::Line, {L"PLAIN", 256, L"HIDDEN"});
    Add(Kind::Line, {L"PLAIN"}, L"INNER");
    MapScheme scheme = MakeScheme(1, {});
    scheme.unknownMode = 1;
    Cancel();
    Answer(L"C");
    Answer(L"H");
    Answer(L"D");
    Run(scheme);
    EXPECT_THAT(asked, ElementsAre(Pair(1, L"HIDDEN"), Pair(1, L"CENTER"), Pair(1, L"HIDDEN"), Pair(1, L"DASHED")));
}

TEST_F(LinetypeScheme, TheDefaultTakesEveryUnknownLinetype) {
    const auto own = Add(Kind::Line, {L"PLAIN", 256, L"HIDDEN"}), byLayer = AddLine(L"PLAIN");
    MapScheme scheme = MakeScheme(1, {{L"DASHED", L"D"}}, true);
    scheme.unknownMode = 2;
    scheme.unknownValue = L"Rest";
    Run(scheme);
    EXPECT_EQ(LookOf(own), Look{L"REST"});
    EXPECT_EQ(LookOf(byLayer), Look{L"D"});
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"REST", L"D"}));
}

TEST_F(LinetypeScheme, AnAttributesLayerThatOnlyItUsesCanNotBeErasedUnderAnInsertionThatStays) {
    AddLayer(L"TAGS");
    AddInsertion({L"PLAIN", 256, L"BYBLOCK"}, {L"TAGS"});
    MapScheme scheme = MakeScheme(1, {{L"HIDDEN", L"H"}});
    Run(scheme);
    EXPECT_THAT(messages, ElementsAre(L"Could not erase layer PLAIN", L"Could not erase layer TAGS"));
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"PLAIN", L"TAGS"}));
}
