#include "tessaro/mapping/engine/Engine.h"

#include "tests/mapping_engine/MappingTest.h"
#include "tests/mapping_engine/OpenCounter.h"
#include "tests/support/TemporaryFolder.h"

#include <unistd.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using tests::Kind;
using tests::Look;
using tests::Names;
using tests::OpenCounter;

namespace {

struct MapAndInsert : tests::MappingTest {
    /// The side drawing as a file of the library.
    std::wstring Save(const char* name = "DOOR.dwg") {
        const auto path = folder.path() / name;
        EXPECT_EQ(side.saveAs(path.wstring().c_str()), eOk);
        return path.wstring();
    }
    /// What the definition of that name in the current drawing holds.
    std::vector<Look> Definition(const wchar_t* name) {
        std::vector<Look> looks;
        const AcDbObjectId block = tests::blockNamed(drawing, name);
        if (!block.isNull())
            for (const AcDbObjectId entity : tests::entitiesOf(block))
                looks.push_back(LookOf(entity));
        return looks;
    }

    tests::TemporaryFolder folder;
};

} // namespace

TEST_F(MapAndInsert, EachKindOfSchemeIsCarriedOutOnItsWayIntoTheDrawing) {
    AddLinetype(L"DASHED");
    AddLayer(L"WALLS", 3, L"DASHED");
    Add(Kind::Line, {L"WALLS", 1});
    const std::wstring file = Save();
    const std::string before = tests::readFile(file);
    Enter(L"Layers", MakeScheme(0, {{L"WALLS", L"BY LAYER"}}));
    Enter(L"Linetypes", MakeScheme(1, {{L"DASHED", L"BY LINETYPE"}}));
    Enter(L"Colours", MakeScheme(2, {{L"1", L"BY COLOUR"}}, true));
    Enter(L"Blocks", MakeScheme(3, {{L"*", L"BY NAME"}}));
    struct Row {
        const wchar_t *scheme, *block;
        Look look;
    };
    for (const Row& row : {Row{L"Layers", L"ONE", {L"BY LAYER", 1}}, Row{L"Linetypes", L"TWO", {L"BY LINETYPE", 1}},
                           Row{L"Colours", L"THREE", {L"BY COLOUR"}}, Row{L"Blocks", L"FOUR", {L"WALLS", 1}}}) {
        EXPECT_TRUE(MapAndInsertDrawing(file, row.block, row.scheme));
        EXPECT_THAT(Definition(row.block), ElementsAre(row.look));
    }
    EXPECT_EQ(tests::readFile(file), before);
    EXPECT_EQ(LayersOf(drawing), (Names{L"0", L"BY LAYER", L"BY LINETYPE", L"BY COLOUR", L"WALLS"}))
        << "of the replaced layer nothing arrives but by the scheme that leaves the drawing alone";
    EXPECT_EQ(CurrentLayerOf(drawing), L"0");
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(MapAndInsert, AnExistingDefinitionIsReplaced) {
    AddLayer(L"A");
    AddLine(L"A");
    const std::wstring file = Save();
    tests::append(tests::addBlock(drawing, L"DOOR"), new AcDbLine({0, 0, 0}, {9, 9, 0}), L"0");
    Enter(L"Layers", MakeScheme(0, {{L"A", L"B"}}));
    ASSERT_TRUE(MapAndInsertDrawing(file, L"DOOR", L"Layers"));
    EXPECT_THAT(Definition(L"DOOR"), ElementsAre(Look{L"B"}));
}

TEST_F(MapAndInsert, ALayerOfTheDrawingKeepsItsOwnColour) {
    AddLayer(L"A");
    AddLine(L"A");
    tests::addLayer(drawing, L"Target", 6);
    Enter(L"Layers", MakeScheme(0, {{L"A", L"TARGET"}}));
    ASSERT_TRUE(MapAndInsertDrawing(Save(), L"DOOR", L"Layers"));
    EXPECT_THAT(Definition(L"DOOR"), ElementsAre(Look{L"Target"}));
    EXPECT_EQ(LayersOf(drawing), (Names{L"0", L"Target"}));
}

TEST_F(MapAndInsert, WithoutASchemeNothingIsReadAndWithOneTheFileIsOpenedOnce) {
    AddLine(L"0");
    const std::wstring file = Save();
    Enter(L"Scheme", MakeScheme(0, {}));
    const OpenCounter opens{std::filesystem::path(file)};
    ASSERT_TRUE(opens.Works());
    for (const wchar_t* const name : {L"<None>", L"", L"scheme", L"Deleted"}) {
        EXPECT_FALSE(MapAndInsertDrawing(file, L"DOOR", name));
        EXPECT_EQ(opens.Take(), 0);
    }
    EXPECT_TRUE(MapAndInsertDrawing(file, L"DOOR", L"Scheme"));
    EXPECT_EQ(opens.Take(), 1);
}

TEST_F(MapAndInsert, ADrawingIsFoundInAnotherSpelling) {
    AddLine(L"0");
    Enter(L"Scheme", MakeScheme(0, {}));
    const std::filesystem::path upper = folder.path() / "TABLE.DWG";
    std::filesystem::copy_file(Save(), upper);
    EXPECT_TRUE(MapAndInsertDrawing((folder.path() / "TABLE.dwg").wstring(), L"TABLE", L"Scheme"));
}

TEST_F(MapAndInsert, AFileThatCanNotBeReadIsPassedOverInSilence) {
    for (const int type : {0, 1, 2, 3})
        Enter(L"Type" + std::to_wstring(type), MakeScheme(type, {{L"*", L"X"}}));
    const auto empty = folder.write("empty.dwg", "");
    const auto text = folder.write("text.dwg", "AC1015 but nothing more");
    AddLine(L"0");
    std::string cut = tests::readFile(Save());
    const auto half = folder.write("half.dwg", cut.substr(0, cut.size() / 2));
    const auto absent = folder.path() / "absent.dwg";
    for (const auto& file : {empty, text, half, absent, folder.path(), std::filesystem::path()})
        for (const int type : {0, 1, 2, 3})
            EXPECT_FALSE(MapAndInsertDrawing(file.wstring(), L"DOOR", L"Type" + std::to_wstring(type))) << file;
    EXPECT_TRUE(Definition(L"DOOR").empty());
    EXPECT_EQ(LayersOf(drawing), (Names{L"0"}));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(MapAndInsert, ASideDrawingWithoutALayerTableIsPassedOverUnlessTheSchemeHasNoPass) {
    AddLine(L"0");
    AcDbDatabase::Impl& database = *side.impl();
    database.drawing.remove(database.table(dwg::object_type::layerControl)->handle);
    const std::wstring file = Save();
    {
        AcDbDatabase read(false);
        ASSERT_EQ(read.readDwgFile(file.c_str()), eOk) << "the drawing itself can be read";
        AcDbLayerTable* table = nullptr;
        ASSERT_NE(read.getLayerTable(table), eOk);
    }
    for (const int type : {0, 1, 2}) {
        Enter(L"Scheme", MakeScheme(type, {{L"*", L"X"}}));
        EXPECT_FALSE(MapAndInsertDrawing(file, L"DOOR", L"Scheme"));
        EXPECT_EQ(LayersOf(drawing), (Names{L"0"}));
    }
    Enter(L"Scheme", MakeScheme(3, {{L"*", L"X"}}));
    EXPECT_TRUE(MapAndInsertDrawing(file, L"DOOR", L"Scheme"));
    EXPECT_THAT(Definition(L"DOOR"), ElementsAre(Look{L"0"}));
    EXPECT_THAT(messages, IsEmpty());
}

TEST_F(MapAndInsert, AnInsertionThatTheHostRefusesGivesFalseInSilence) {
    AddLayer(L"A");
    AddLine(L"A");
    const std::wstring file = Save();
    for (const int type : {0, 1, 2, 3}) {
        Enter(L"Scheme", MakeScheme(type, {{L"A", L"B"}}));
        for (const wchar_t* const name : {L"", L"A/B", L"*Model_Space"})
            EXPECT_FALSE(MapAndInsertDrawing(file, name, L"Scheme"));
    }
    EXPECT_EQ(LayersOf(drawing), (Names{L"0"}));
    EXPECT_THAT(messages, IsEmpty());
    host.documents().close(*host.documents().current());
    EXPECT_FALSE(MapAndInsertDrawing(file, L"DOOR", L"Scheme"));
}

TEST_F(MapAndInsert, ASchemeThatWasDeletedIsNone) {
    AddLine(L"0");
    const std::wstring file = Save();
    Enter(L"Scheme", MakeScheme(0, {}));
    delete *schemes.Lookup(L"Scheme");
    schemes.RemoveKey(L"Scheme");
    EXPECT_FALSE(MapAndInsertDrawing(file, L"DOOR", L"Scheme"));
}

TEST_F(MapAndInsert, AnAnswerGivenDuringAPlacementStaysInTheSchemeForTheNext) {
    AddLayer(L"A");
    AddLine(L"A");
    const std::wstring file = Save();
    MapScheme& scheme = Enter(L"Scheme", MakeScheme(0, {{L"0", L"0"}}));
    scheme.unknownMode = 1;
    Answer(L"B");
    ASSERT_TRUE(MapAndInsertDrawing(file, L"ONE", L"Scheme"));
    ASSERT_TRUE(MapAndInsertDrawing(file, L"TWO", L"Scheme"));
    EXPECT_EQ(asked.size(), 1u);
    EXPECT_THAT(Definition(L"TWO"), ElementsAre(Look{L"B"}));
}

TEST_F(MapAndInsert, ATargetThatNoLayerMayHaveLeavesTheLayersAndTellsEachRefusedErasure) {
    AddLayer(L"A", 3);
    AddLayer(L"EMPTY");
    Add(Kind::Line, {L"A", 1});
    const std::wstring file = Save();
    std::vector<std::wstring> targets{std::wstring(256, L'X'), L"A|B", L""};
    for (const wchar_t letter : std::wstring(L"<>/\\\":;?*=`"))
        targets.push_back(std::wstring(L"X") + letter);
    for (const std::wstring& target : targets) {
        messages.clear();
        Enter(L"Scheme", MakeScheme(0, {{L"A", target}, {L"EMPTY", target}}, true));
        ASSERT_TRUE(MapAndInsertDrawing(file, L"DOOR", L"Scheme"));
        EXPECT_THAT(Definition(L"DOOR"), ElementsAre(Look{L"A"})) << "not moved, but reset as told";
        EXPECT_THAT(messages, ElementsAre(L"Could not erase layer A"));
        EXPECT_EQ(LayersOf(drawing), (Names{L"0", L"A"}));
    }
}

TEST_F(MapAndInsert, ATargetThatNoLayerMayHaveLeavesEntitiesThatGoByLinetypeOrColourInPlaceToo) {
    AddLinetype(L"DASHED");
    AddLayer(L"A", 3, L"DASHED");
    AddLine(L"A");
    const std::wstring file = Save();
    for (const wchar_t letter : std::wstring(L"<>/\\\":;?*|=`"))
        for (const int type : {1, 2}) {
            messages.clear();
            Enter(L"Scheme", MakeScheme(type, {{type == 1 ? L"DASHED" : L"3", std::wstring(L"X") + letter}}));
            ASSERT_TRUE(MapAndInsertDrawing(file, L"DOOR", L"Scheme"));
            EXPECT_THAT(Definition(L"DOOR"), ElementsAre(Look{L"A"}));
            EXPECT_THAT(messages, ElementsAre(L"Could not erase layer A"));
            EXPECT_EQ(LayersOf(drawing), (Names{L"0", L"A"}));
        }
}

TEST_F(MapAndInsert, LayersOfAnExternalReferenceGoByTheSameRules) {
    AddLayer(L"PLAN");
    // What depends on a reference has a name that nobody may give.
    side.impl()->drawing.body<dwg::Layer>({0, tests::layerNamed(side, L"PLAN").handle})->head.name = L"plan|walls";
    AddLine(L"plan|walls");
    const std::wstring file = Save();
    Enter(L"Unmapped", MakeScheme(0, {}));
    ASSERT_TRUE(MapAndInsertDrawing(file, L"ONE", L"Unmapped"));
    EXPECT_THAT(Definition(L"ONE"), ElementsAre(Look{L"plan|walls"}));
    EXPECT_THAT(messages, IsEmpty());
    Enter(L"Mapped", MakeScheme(0, {{L"PLAN|*", L"WALLS"}}));
    ASSERT_TRUE(MapAndInsertDrawing(file, L"TWO", L"Mapped"));
    EXPECT_THAT(Definition(L"TWO"), ElementsAre(Look{L"plan|walls"})) << "a name in lower case is not found";
    EXPECT_THAT(messages, ElementsAre(L"Could not erase layer PLAN|WALLS"));
}

TEST_F(MapAndInsert, TenThousandMapsAreTriedForEveryName) {
    AddLayer(L"LAST");
    AddLine(L"LAST");
    MapScheme scheme = MakeScheme(0, {});
    for (int i = 0; i < 10'000; ++i)
        scheme.maps.SetAt(L"NEVER-" + std::to_wstring(i) + L"*", L"X");
    scheme.maps.SetAt(L"LAST", L"FOUND");
    Enter(L"Scheme", scheme);
    ASSERT_TRUE(MapAndInsertDrawing(Save(), L"DOOR", L"Scheme"));
    EXPECT_THAT(Definition(L"DOOR"), ElementsAre(Look{L"FOUND"}));
}
