// Chains of placements with mapping schemes: what a cancel, a failure or a question in the middle leaves.
#include "tests/chains/ChainFixture.h"

#include "editor/application/drawing.h"
#include "editor/application/text.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/mapping/engine/Engine.h"
#include "tessaro/mapping/engine/NewMapQuestion.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class SchemeChains : public tests::ChainTest {
protected:
    SchemeChains() {
        auto* const byLayer = new MapScheme;
        byLayer->maps.SetAt(L"*", L"MAPPED");
        SetScheme(L"By layer", byLayer);
        auto* const byName = new MapScheme;
        byName->schemeType = 3;
        byName->maps.SetAt(L"*", L"PLACED");
        SetScheme(L"By name", byName);
        AddLibraryDrawing(L"CHAIR", L"SEAT");
        chair = AddBlockWithoutFile(L"CHAIR");
        command(L"PEEK", [this] { seen.push_back(CurrentLayer()); });
        command(L"STOP", [] { throw editor::CommandCancelled(); });
        command(L"FAIL", [] { throw editor::CommandFailed{L"as told"}; });
        Remember();
    }
    ~SchemeChains() override {
        ExpectUndone();
        SetNewMapQuestion(nullptr);
        DeleteSchemes();
    }

    /// A transparent command of the user's.
    void command(const wchar_t* name, std::function<void()> function) {
        editor.commands().addOwn({L"TEST", name, name, ACRX_CMD_TRANSPARENT, std::move(function)});
    }

    /// A drawing with a line on a layer of that name.
    void AddLibraryDrawing(const std::wstring& name, const wchar_t* layer) {
        AcDbDatabase library;
        AddLayer(library, layer);
        const AcDbObjectId line =
            editor::addToModelSpace(library, std::make_unique<AcDbLine>(AcGePoint3d{}, AcGePoint3d{1, 0, 0}));
        AcDbEntity* entity = nullptr;
        ASSERT_EQ(acdbOpenObject(entity, line, AcDb::kForWrite), eOk);
        EXPECT_EQ(entity->setLayer(layer), eOk);
        entity->close();
        EXPECT_EQ(library.saveAs(PathOf(name + L".dwg").c_str()), eOk);
    }
    static AcDbObjectId AddLayer(AcDbDatabase& database, const wchar_t* name) {
        AcDbLayerTable* table = nullptr;
        EXPECT_EQ(database.getLayerTable(table, AcDb::kForWrite), eOk);
        auto record = std::make_unique<AcDbLayerTableRecord>();
        record->setName(name);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record.get()), eOk);
        record.release()->close();
        table->close();
        return id;
    }
    bool HasLayer(const wchar_t* name) { return !editor::findLayer(Drawing(), name).isNull(); }
    /// Layers of what model space holds, in order.
    std::vector<std::wstring> LayersInModel() {
        std::vector<std::wstring> layers;
        for (const AcDbObjectId id : editor::modelSpaceEntities(Drawing())) {
            AcDbEntity* entity = nullptr;
            EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), eOk);
            layers.push_back(entity->layer());
            entity->close();
        }
        return layers;
    }
    /// Explodes a placed chair, so that the layer of its line is to be seen.
    void PlaceExploded(const std::wstring& scheme) {
        directory->schemeName = scheme;
        directory->explode = true;
        user.Picks(1, 1);
        Insert(chair);
    }

    Block* chair = nullptr;
    std::vector<std::wstring> seen; ///< the current layer at each PEEK
};

} // namespace

TEST_F(SchemeChains, EscapeAtTheFirstPickTakesAMappedDefinitionOut) {
    directory->schemeName = L"By layer";
    directory->explode = directory->multipleInsert = directory->repeat = true;
    user.Cancels();
    Insert(chair);
    EXPECT_FALSE(IsDefined(L"CHAIR"));
    EXPECT_THAT(Model(), IsEmpty());
    EXPECT_EQ(opened, 2);
    ExpectFlags(false, false, false, false);
}

TEST_F(SchemeChains, EscapeAtALaterPickKeepsTheMappedDefinitionAndItsReferences) {
    directory->schemeName = L"By layer";
    directory->multipleInsert = true;
    user.Picks(1, 1);
    user.Picks(2, 2);
    user.Cancels();
    Insert(chair);
    EXPECT_TRUE(IsDefined(L"CHAIR"));
    EXPECT_THAT(Model(), ElementsAre("INSERT CHAIR", "INSERT CHAIR"));
    EXPECT_TRUE(HasLayer(L"MAPPED"));
    EXPECT_FALSE(HasLayer(L"SEAT"));
}

TEST_F(SchemeChains, EscapeAfterARedefinitionLeavesTheNewLookOfWhatWasThere) {
    PlaceExploded(L"<None>");
    EXPECT_THAT(LayersInModel(), ElementsAre(L"SEAT"));
    directory->schemeName = L"By layer";
    user.Cancels();
    Insert(chair);
    EXPECT_TRUE(IsDefined(L"CHAIR"));
    user.answer = platform::MessageAnswer::No;
    PlaceExploded(L"<None>");
    EXPECT_THAT(LayersInModel(), ElementsAre(L"SEAT", L"MAPPED"));
}

TEST_F(SchemeChains, ARefusedOverwriteLeavesTheOldLookUnmapped) {
    PlaceExploded(L"<None>");
    user.answer = platform::MessageAnswer::No;
    PlaceExploded(L"By layer");
    EXPECT_THAT(user.messages, ElementsAre(L"CHAIR already exists, do you wish to overwrite?"));
    EXPECT_THAT(LayersInModel(), ElementsAre(L"SEAT", L"SEAT"));
    EXPECT_FALSE(HasLayer(L"MAPPED"));
}

TEST_F(SchemeChains, ASchemeThatCanNotBeAppliedHasTheHostRedefineTheBlockUnmapped) {
    PlaceExploded(L"By layer");
    // The directory still names the scheme; it is gone.
    DeleteSchemes();
    PlaceExploded(L"By layer");
    EXPECT_TRUE(Said("Block \"CHAIR\" redefined."));
    EXPECT_THAT(LayersInModel(), ElementsAre(L"MAPPED", L"SEAT"));
    EXPECT_EQ(user.unexpected, 0);
}

TEST_F(SchemeChains, TheSchemesLayerStaysCurrentBetweenThePicksAndIsRestoredByTheCancel) {
    directory->schemeName = L"By name";
    directory->multipleInsert = true;
    for (int at = 0; at < 3; ++at) {
        user.Types(L"'PEEK\n");
        user.Picks(at, 0);
    }
    user.Types(L"'PEEK\n");
    user.Cancels();
    Insert(chair);
    EXPECT_THAT(seen, ElementsAre(L"PLACED", L"PLACED", L"PLACED", L"PLACED"));
    EXPECT_THAT(LayersInModel(), ElementsAre(L"PLACED", L"PLACED", L"PLACED"));
    EXPECT_EQ(CurrentLayer(), L"0");
    EXPECT_FALSE(clayerSaved);
}

TEST_F(SchemeChains, TheCancelOfAForeignCommandRestoresTheLayerAndTakesTheDefinitionOut) {
    directory->schemeName = L"By name";
    directory->repeat = true;
    user.Types(L"'STOP\n");
    user.Types(L"'PEEK\n");
    user.Cancels();
    Insert(chair);
    EXPECT_THAT(seen, ElementsAre(L"0")) << "while the insertion still asks";
    EXPECT_FALSE(IsDefined(L"CHAIR"));
    EXPECT_EQ(opened, 2);
    EXPECT_FALSE(clayerSaved);
    ExpectFlags(false, false, false, false);
}

TEST_F(SchemeChains, TheFailureOfACommandInTheMiddleRestoresTheLayerAndLeavesTheDefinition) {
    for (const wchar_t* const scheme : {L"By name", L"By layer"}) {
        directory->schemeName = scheme;
        directory->repeat = true;
        opened = 0;
        user.Types(L"'FAIL\n");
        user.Types(L"'PEEK\n");
        user.Cancels();
        Insert(chair);
        EXPECT_TRUE(IsDefined(L"CHAIR"));
        EXPECT_EQ(opened, 2);
        EXPECT_FALSE(clayerSaved);
        ExpectFlags(false, false, false, false);
    }
    EXPECT_THAT(seen, ElementsAre(L"0", L"0"));
}

TEST_F(SchemeChains, ALayerThatCanNotBeRestoredIsToldAndTheBrowserIsReopenedAllTheSame) {
    editor.execute(L"-LAYER M MINE\n\n");
    const AcDbObjectId mine = editor::findLayer(Drawing(), L"MINE");
    ASSERT_EQ(CurrentLayer(), L"MINE");
    command(L"DROP", [mine] { EXPECT_EQ(editor::eraseObject(mine), eOk); });
    directory->schemeName = L"By name";
    directory->repeat = true;
    user.Types(L"'DROP\n");
    user.Picks(1, 1);
    Insert(chair);
    EXPECT_THAT(user.messages, ElementsAre(L"Could not set layer"));
    EXPECT_EQ(CurrentLayer(), L"PLACED");
    EXPECT_EQ(opened, 2);
    EXPECT_FALSE(clayerSaved);
    ExpectFlags(false, false, false, false);
}

TEST_F(SchemeChains, AFileThatVanishesBetweenClickAndCommandIsMissedOnlyWhereNoSchemeHasReadIt) {
    static std::filesystem::path vanishing;
    vanishing = PathOf(L"CHAIR.dwg");
    constexpr auto kInsertAndRemove = [](Block* block) {
        const int result = InsertBlockWithRelaunch(block);
        std::filesystem::remove(vanishing);
        return result;
    };
    directory->schemeName = L"By layer";
    user.Picks(1, 1);
    Place(kInsertAndRemove, chair);
    EXPECT_THAT(Model(), ElementsAre("INSERT CHAIR")) << "the definition was there already";
    vanishing = PathOf(L"DOOR.dwg");
    directory->schemeName = L"<None>";
    directory->repeat = true;
    Place(kInsertAndRemove, door);
    EXPECT_TRUE(Said("Can't find file")) << "the host's own words";
    EXPECT_FALSE(IsDefined(L"DOOR"));
    EXPECT_THAT(Model(), ElementsAre("INSERT CHAIR"));
    EXPECT_EQ(opened, 3) << "the failure reopens the browser";
    ExpectFlags(false, false, false, false);
}

TEST_F(SchemeChains, ACancelledQuestionCountsAsIgnoredAndThePlacementGoesOn) {
    static int questions;
    questions = 0;
    SetNewMapQuestion([](int, const std::wstring&) {
        ++questions;
        return std::optional<NewMapAnswer>();
    });
    auto* const asking = new MapScheme;
    asking->unknownMode = 1;
    SetScheme(L"Asking", asking);
    PlaceExploded(L"Asking");
    EXPECT_EQ(questions, 2) << "the layers 0 and SEAT";
    EXPECT_THAT(LayersInModel(), ElementsAre(L"SEAT"));
    ExpectFlags(false, false, false, false);
}

TEST_F(SchemeChains, NamesOfEveryKindAreMappedPlacedAndAttached) {
    directory->explode = false;
    std::vector<std::string> placed;
    for (const wchar_t* const name : {L"oak chair", L"chair.v2", L"50%s off %d", L"St\u00FChle", L"\u6905\u5B50"}) {
        AddLibraryDrawing(name, L"SEAT");
        for (const wchar_t* const scheme : {L"By layer", L"By name"}) {
            directory->schemeName = scheme;
            user.Picks(1, 1);
            Insert(directory->blocks.back()->name == name ? directory->blocks.back() : AddBlockWithoutFile(name));
            placed.push_back("INSERT " + editor::toUtf8(name));
        }
    }
    EXPECT_EQ(Model(), placed);
    EXPECT_EQ(user.unexpected, 0);
    UndoAll();
    placed.clear();
    for (Block* const block : directory->blocks) {
        user.Picks(1, 1);
        Place(XrefBlock, block);
        placed.push_back("INSERT " + editor::toUtf8(block->name));
    }
    EXPECT_EQ(Model(), placed);
    EXPECT_EQ(LayersInModel(), std::vector<std::wstring>(placed.size(), L"PLACED"));
    EXPECT_EQ(user.unexpected, 0);
}
