#include "tests/mapping_engine/MappingTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using tests::Kind;
using tests::Look;
using tests::Names;

namespace {

struct LayerScheme : tests::MappingTest {
    void Run(MapScheme& scheme) { ASSERT_TRUE(MappingRun(side, scheme).MapLayerScheme()); }
};

} // namespace

TEST_F(LayerScheme, EntitiesOfEveryDefinitionMoveAndWhatTheyLeaveIsErased) {
    AddLayer(L"WALLS", 3);
    AddLayer(L"DOORS", 4);
    tests::addBlock(side, L"INNER");
    const auto model = AddLine(L"WALLS");
    const auto paper = Add(Kind::Line, {L"DOORS"}, ACDB_PAPER_SPACE);
    const auto nested = Add(Kind::Text, {L"WALLS"}, L"INNER");
    MapScheme scheme = MakeScheme(0, {{L"WALLS", L"A-Wall"}, {L"DO*", L"A-Wall"}});
    Run(scheme);
    for (const auto entity : {model, paper, nested})
        EXPECT_EQ(LookOf(entity).layer, L"A-WALL") << "targets are upper case";
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"A-WALL"}));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LayerScheme, AMissingTargetIsMadeWithColourSevenAndContinuous) {
    AddLayer(L"A", 3);
    AddLine(L"A");
    MapScheme scheme = MakeScheme(0, {{L"A", L"NEW"}});
    Run(scheme);
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(acdbOpenObject(layer, tests::layerNamed(side, L"NEW"), AcDb::kForRead), eOk);
    EXPECT_EQ(layer->colorIndex(), 7);
    AcDbLinetypeTableRecord* linetype = nullptr;
    ASSERT_EQ(acdbOpenObject(linetype, layer->linetypeObjectId(), AcDb::kForRead), eOk);
    std::wstring name;
    linetype->getName(name);
    EXPECT_EQ(name, L"Continuous");
    linetype->close();
    layer->close();
}

TEST_F(LayerScheme, ATargetThatIsThereKeepsItsColourAndLinetype) {
    AddLinetype(L"DASHED");
    AddLayer(L"A");
    AddLayer(L"B", 5, L"DASHED");
    const auto entity = AddLine(L"A");
    MapScheme scheme = MakeScheme(0, {{L"A", L"b"}});
    Run(scheme);
    EXPECT_EQ(LookOf(entity).layer, L"B");
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(acdbOpenObject(layer, tests::layerNamed(side, L"B"), AcDb::kForRead), eOk);
    EXPECT_EQ(layer->colorIndex(), 5);
    layer->close();
}

TEST_F(LayerScheme, ColourAndLinetypeBecomeByLayerOnlyWhereToldAndOnlyOfWhatMoves) {
    AddLinetype(L"DASHED");
    AddLayer(L"A");
    AddLayer(L"Low");
    for (const bool defaultToByLayer : {false, true}) {
        const auto moved = Add(Kind::Line, {L"A", 3, L"DASHED"});
        const auto byBlock = Add(Kind::Line, {L"A", 0, L"BYBLOCK"});
        const auto unmapped = Add(Kind::Line, {L"0", 3, L"DASHED"});
        const auto lower = Add(Kind::Line, {L"Low", 3, L"DASHED"});
        MapScheme scheme = MakeScheme(0, {{L"A", L"A"}, {L"LOW", L"LOW"}}, defaultToByLayer);
        Run(scheme);
        const Look reset{L"A"};
        EXPECT_EQ(LookOf(moved), defaultToByLayer ? reset : (Look{L"A", 3, L"DASHED"}));
        EXPECT_EQ(LookOf(byBlock), defaultToByLayer ? reset : (Look{L"A", 0, L"BYBLOCK"}));
        EXPECT_EQ(LookOf(unmapped), defaultToByLayer ? Look{L"0"} : (Look{L"0", 3, L"DASHED"}))
            << "an unmapped layer maps to itself";
        EXPECT_EQ(LookOf(lower), (Look{L"Low", 3, L"DASHED"})) << "a lower-case name is not found";
    }
}

TEST_F(LayerScheme, AnUnmappedLayerWithLowerCaseLettersStaysAndIsNotMadeASecondTime) {
    AddLayer(L"Walls", 3);
    const auto entity = Add(Kind::Line, {L"Walls", 5});
    MapScheme scheme = MakeScheme(0, {{L"OTHER", L"X"}}, true);
    MappingRun run(side, scheme);
    ASSERT_TRUE(run.MapLayerScheme());
    EXPECT_EQ(run.entityMap.at(L"WALLS"), L"WALLS");
    EXPECT_THAT(run.keep.Names(), ElementsAre(L"0", L"WALLS"));
    EXPECT_THAT(run.existing, ElementsAre(L"0", L"Walls"));
    EXPECT_EQ(LookOf(entity), (Look{L"Walls", 5}));
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"Walls"}));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LayerScheme, AMappedLayerWithLowerCaseLettersKeepsItsEntitiesAndTheRefusedErasureIsTold) {
    AddLayer(L"Walls");
    AddLayer(L"Unused");
    const auto entity = AddLine(L"Walls");
    MapScheme scheme = MakeScheme(0, {{L"WALLS", L"A-WALL"}, {L"UNUSED", L"A-WALL"}});
    Run(scheme);
    EXPECT_EQ(LookOf(entity).layer, L"Walls");
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"Walls", L"A-WALL"})) << "an empty one is erased all the same";
    EXPECT_THAT(messages, ElementsAre(L"Could not erase layer WALLS"));
}

TEST_F(LayerScheme, ZeroAndDefpointsAreFromNamesButNeverErased) {
    AddLayer(L"DEFPOINTS");
    const auto zero = AddLine(L"0"), defpoints = AddLine(L"DEFPOINTS");
    MapScheme scheme = MakeScheme(0, {{L"0", L"NEW"}, {L"DEFPOINTS", L"NEW"}});
    Run(scheme);
    EXPECT_EQ(LookOf(zero).layer, L"NEW");
    EXPECT_EQ(LookOf(defpoints).layer, L"NEW");
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"DEFPOINTS", L"NEW"}));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LayerScheme, UnmappedDefpointsMapToThemselvesAndAreReset) {
    AddLayer(L"DEFPOINTS");
    const auto entity = Add(Kind::Line, {L"DEFPOINTS", 3, L"BYBLOCK"});
    MapScheme scheme = MakeScheme(0, {}, true);
    MappingRun run(side, scheme);
    ASSERT_TRUE(run.MapLayerScheme());
    EXPECT_EQ(run.entityMap.at(L"DEFPOINTS"), L"DEFPOINTS");
    EXPECT_EQ(LookOf(entity), Look{L"DEFPOINTS"});
}

TEST_F(LayerScheme, DefpointsInMixedCaseAreNotErasedEitherSinceTheNameIsUpperCasedFirst) {
    AddLayer(L"Defpoints");
    const auto entity = AddLine(L"Defpoints");
    MapScheme scheme = MakeScheme(0, {{L"*", L"ALL"}});
    Run(scheme);
    EXPECT_EQ(LookOf(entity).layer, L"Defpoints");
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"Defpoints", L"ALL"}));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LayerScheme, LayerZeroBecomesCurrentSoThatTheCurrentLayerCanGo) {
    AddLayer(L"A");
    ASSERT_EQ(side.setClayer(tests::layerNamed(side, L"A")), eOk);
    AddLine(L"A");
    MapScheme scheme = MakeScheme(0, {{L"A", L"B"}});
    Run(scheme);
    EXPECT_EQ(CurrentLayerOf(side), L"0");
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"B"}));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(LayerScheme, AttributesMoveWithTheirInsertion) {
    AddLayer(L"A");
    AddLayer(L"TAGS");
    const auto insertion = AddInsertion({L"A", 3}, {L"TAGS", L"A"});
    MapScheme scheme = MakeScheme(0, {{L"A", L"B"}, {L"TAGS", L"C"}});
    Run(scheme);
    EXPECT_EQ(LookOf(insertion).layer, L"B");
    for (const dwg::Handle part : dwg::ownedChain(tests::objectOf(insertion))->parts)
        EXPECT_EQ(LookOf({&side, part}).layer, L"B") << "not looked up by themselves";
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"B", L"C"}));
}

TEST_F(LayerScheme, ASpecialEntryKeepsItsEntitiesWhereTheyAre) {
    AddLayer(L"A");
    const auto text = Add(Kind::Text, {L"A"}), line = AddLine(L"A");
    MapScheme scheme = MakeScheme(0, {{L"A", L"B"}, {L"*TEXT OBJECTS", L"T"}});
    Run(scheme);
    EXPECT_EQ(LookOf(text).layer, L"A") << "the key is in no map of this kind of scheme";
    EXPECT_EQ(LookOf(line).layer, L"B");
    EXPECT_THAT(messages, ElementsAre(L"Could not erase layer A"));
}

TEST_F(LayerScheme, QuestionsComeInTheOrderOfTheLayersOneForEachName) {
    for (const wchar_t* const name : {L"Zebra", L"apple", L"KNOWN", L"Mango"})
        AddLayer(name);
    MapScheme scheme = MakeScheme(0, {{L"KNOWN", L"K"}, {L"0", L"0"}});
    scheme.unknownMode = 1;
    Answer(L"Z");
    Cancel();
    Answer(L"M");
    Run(scheme);
    EXPECT_THAT(asked, ElementsAre(Pair(0, L"ZEBRA"), Pair(0, L"APPLE"), Pair(0, L"MANGO")));
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"apple", L"Z", L"K", L"M"})) << "a cancelled one counts as ignored";
    EXPECT_EQ(scheme.maps.size(), 4u);
}

TEST_F(LayerScheme, TheDefaultTakesEveryUnknownLayer) {
    AddLayer(L"A");
    AddLayer(L"B");
    const auto a = AddLine(L"A"), zero = AddLine(L"0");
    MapScheme scheme = MakeScheme(0, {{L"B", L"KEPT"}});
    scheme.unknownMode = 2;
    scheme.unknownValue = L"Rest";
    Run(scheme);
    EXPECT_EQ(LookOf(a).layer, L"REST");
    EXPECT_EQ(LookOf(zero).layer, L"REST");
    EXPECT_EQ(LayersOf(side), (Names{L"0", L"REST", L"KEPT"}));
}

TEST_F(LayerScheme, AVariableDecidesTheLayerOnThisRun) {
    AddLayer(L"A");
    const auto entity = AddLine(L"A");
    SetSymbol(L"S_LYR", std::wstring(L"Objects"));
    MapScheme scheme = MakeScheme(0, {{L"A", L"Var:S_LYR"}});
    Run(scheme);
    EXPECT_EQ(LookOf(entity).layer, L"OBJECTS");
}

TEST_F(LayerScheme, ErasedLayersAreNotSeen) {
    AddLayer(L"GONE");
    ASSERT_EQ(tests::erase(tests::layerNamed(side, L"GONE")), eOk);
    MapScheme scheme = MakeScheme(0, {});
    MappingRun run(side, scheme);
    ASSERT_TRUE(run.MapLayerScheme());
    EXPECT_THAT(run.existing, ElementsAre(L"0"));
}

TEST_F(LayerScheme, ADatabaseWithoutALayerTableIsLeftAlone) {
    AcDbDatabase empty(false);
    for (const int type : {0, 1, 2}) {
        MapScheme scheme = MakeScheme(type, {{L"*", L"X"}});
        MappingRun run(empty, scheme);
        EXPECT_FALSE(type == 0 ? run.MapLayerScheme() : type == 1 ? run.MapLinetypeScheme() : run.MapColorScheme());
    }
    EXPECT_THAT(messages, IsEmpty());
}
