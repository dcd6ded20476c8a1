#include "tessaro/mapping/engine/Engine.h"

#include "tests/mapping_engine/MappingTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using tests::Names;

namespace {

struct BlockNameScheme : tests::MappingTest {
    AcDbObjectId DrawingLayer(const wchar_t* name) { return tests::addLayer(drawing, name, 3); }
};

} // namespace

TEST_F(BlockNameScheme, TheTargetLayerIsCurrentUntilItIsRestored) {
    DrawingLayer(L"Doors");
    const AcDbObjectId mine = DrawingLayer(L"Mine");
    ASSERT_EQ(drawing.setClayer(mine), eOk);
    Enter(L"Scheme", MakeScheme(3, {{L"D*", L"DOORS"}}));
    ApplyBlockNameScheme(L"door-80", L"Scheme");
    EXPECT_EQ(CurrentLayerOf(drawing), L"Doors") << "names are compared without case";
    EXPECT_TRUE(clayerSaved);
    EXPECT_EQ(savedClayer, mine);
    RestoreCurrentLayer();
    EXPECT_EQ(CurrentLayerOf(drawing), L"Mine");
    EXPECT_FALSE(clayerSaved);
    ASSERT_EQ(drawing.setClayer(tests::layerNamed(drawing, L"0")), eOk);
    RestoreCurrentLayer();
    EXPECT_EQ(CurrentLayerOf(drawing), L"0") << "only once";
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(BlockNameScheme, AMissingTargetIsMadeAsItIsWrittenWithColourSevenAndContinuous) {
    Enter(L"Scheme", MakeScheme(3, {{L"DOOR", L"New Layer"}}));
    ApplyBlockNameScheme(L"Door", L"Scheme");
    EXPECT_EQ(CurrentLayerOf(drawing), L"New Layer");
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(acdbOpenObject(layer, drawing.clayer(), AcDb::kForRead), eOk);
    EXPECT_EQ(layer->colorIndex(), 7);
    AcDbLinetypeTable* linetypes = nullptr;
    ASSERT_EQ(drawing.getLinetypeTable(linetypes), eOk);
    AcDbObjectId continuous;
    linetypes->getAt(L"Continuous", continuous);
    EXPECT_EQ(layer->linetypeObjectId(), continuous);
    linetypes->close();
    layer->close();
    RestoreCurrentLayer();
    EXPECT_EQ(LayersOf(drawing), (Names{L"0", L"New Layer"}));
}

TEST_F(BlockNameScheme, OtherKindsOfSchemesAndUnknownNamesChangeNothing) {
    for (const int type : {0, 1, 2})
        Enter(L"Type" + std::to_wstring(type), MakeScheme(type, {{L"*", L"X"}}));
    Enter(L"Scheme", MakeScheme(3, {{L"*", L"X"}}));
    for (const wchar_t* const name : {L"Type0", L"Type1", L"Type2", L"<None>", L"", L"scheme", L"Deleted"}) {
        ApplyBlockNameScheme(L"DOOR", name);
        EXPECT_FALSE(clayerSaved);
        EXPECT_EQ(CurrentLayerOf(drawing), L"0");
    }
    EXPECT_EQ(LayersOf(drawing), (Names{L"0"}));
}

TEST_F(BlockNameScheme, ABlockThatNoMapMatchesChangesNothingThoughTheLayerIsNoted) {
    Enter(L"Scheme", MakeScheme(3, {{L"WINDOW", L"X"}}));
    ApplyBlockNameScheme(L"DOOR", L"Scheme");
    EXPECT_TRUE(clayerSaved);
    EXPECT_EQ(CurrentLayerOf(drawing), L"0");
    EXPECT_EQ(LayersOf(drawing), (Names{L"0"}));
}

TEST_F(BlockNameScheme, AnUnknownBlockIsAskedForByItsNameInUpperCase) {
    Enter(L"Scheme", MakeScheme(3, {})).unknownMode = 1;
    Answer(L"Furniture");
    ApplyBlockNameScheme(L"Oak Chair", L"Scheme");
    EXPECT_THAT(asked, ElementsAre(Pair(3, L"OAK CHAIR")));
    EXPECT_EQ(CurrentLayerOf(drawing), L"Furniture");
}

TEST_F(BlockNameScheme, ALayerThatIsThereButCanNotBeCurrentIsTold) {
    const AcDbObjectId frozen = DrawingLayer(L"Frozen");
    drawing.impl()->drawing.body<dwg::Layer>({0, frozen.handle})->flags |= dwg::Layer::frozen;
    Enter(L"Scheme", MakeScheme(3, {{L"*", L"FROZEN"}}));
    ApplyBlockNameScheme(L"DOOR", L"Scheme");
    EXPECT_THAT(messages, ElementsAre(L"Could not set layer, 1"));
    EXPECT_EQ(CurrentLayerOf(drawing), L"0");
    RestoreCurrentLayer();
    EXPECT_EQ(messages.size(), 1u);
}

TEST_F(BlockNameScheme, ANewLayerThatCanNotBeCurrentIsTold) {
    for (const std::wstring& target :
         {std::wstring(L"A/B"), std::wstring(L"x|y"), std::wstring(256, L'A'), std::wstring()}) {
        messages.clear();
        Enter(L"Scheme", MakeScheme(3, {{L"*", target}}));
        ApplyBlockNameScheme(L"DOOR", L"Scheme");
        EXPECT_THAT(messages, ElementsAre(L"Could not set layer, 2"));
        EXPECT_EQ(CurrentLayerOf(drawing), L"0");
        EXPECT_EQ(LayersOf(drawing), (Names{L"0"}));
    }
}

TEST_F(BlockNameScheme, ALayerThatCanNotBeRestoredIsToldOnce) {
    const AcDbObjectId mine = DrawingLayer(L"Mine");
    ASSERT_EQ(drawing.setClayer(mine), eOk);
    Enter(L"Scheme", MakeScheme(3, {{L"*", L"Target"}}));
    ApplyBlockNameScheme(L"DOOR", L"Scheme");
    ASSERT_EQ(tests::erase(mine), eOk);
    RestoreCurrentLayer();
    RestoreCurrentLayer();
    EXPECT_THAT(messages, ElementsAre(L"Could not set layer"));
    EXPECT_FALSE(clayerSaved);
    EXPECT_EQ(CurrentLayerOf(drawing), L"Target");
}

TEST_F(BlockNameScheme, WithoutADrawingNothingHappens) {
    Enter(L"Scheme", MakeScheme(3, {{L"*", L"Target"}}));
    host.documents().close(*host.documents().current());
    ApplyBlockNameScheme(L"DOOR", L"Scheme");
    EXPECT_FALSE(clayerSaved);
    EXPECT_THAT(messages, IsEmpty());
}
