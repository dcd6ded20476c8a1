// Every row of the chains over blocks of real drawings and of the sample library, with and without schemes: what the
// drawing holds at the end, the flags, the browser, the layers, and the way back.
#include "tests/chains/ChainFixture.h"
#include "tests/chains/ChainRows.h"
#include "tests/chains/LibraryDrawing.h"

#include "editor/application/drawing.h"
#include "editor/application/text.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/mapping/engine/Engine.h"

#include <gmock/gmock.h>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

using tests::Chain;
using tests::kChains;
using tests::Piece;

namespace {

constexpr tests::LibraryDrawing kLibrary[] = {
    {"samples", "furniture"},  {"samples", "electrical"},   {"samples", "mechanical"},    {"drawings", "2000/Line"},
    {"drawings", "2000/Text"}, {"drawings", "2000/Spline"}, {"drawings", "2000/Polygon"}, {"drawings", "sample_2000"},
};

std::vector<Piece> PiecesOf(const std::vector<AcDbObjectId>& entities) {
    std::vector<Piece> pieces;
    for (const AcDbObjectId id : entities) {
        AcDbEntity* entity = nullptr;
        EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), eOk);
        pieces.emplace_back(entity->isA()->name(), entity->layer());
        entity->close();
    }
    return pieces;
}

std::vector<AcDbObjectId> EntitiesOf(AcDbObjectId block) {
    std::vector<AcDbObjectId> entities;
    AcDbBlockTableRecord* record = nullptr;
    if (acdbOpenObject(record, block, AcDb::kForRead) != eOk)
        return entities;
    AcDbBlockTableRecordIterator* made = nullptr;
    EXPECT_EQ(record->newIterator(made), eOk);
    for (const std::unique_ptr<AcDbBlockTableRecordIterator> walk(made); !walk->done(); walk->step()) {
        AcDbEntity* entity = nullptr;
        EXPECT_EQ(walk->getEntity(entity, AcDb::kForRead), eOk);
        entities.push_back(entity->objectId());
        entity->close();
    }
    record->close();
    return entities;
}

bool IsUpper(const std::wstring& text) {
    return editor::upperCased(text) == text;
}

class ChainTable : public tests::ChainTest, public testing::WithParamInterface<tests::LibraryDrawing> {
protected:
    ChainTable() {
        auto* const byLayer = new MapScheme;
        byLayer->maps.SetAt(L"*", L"MAPPED");
        SetScheme(L"By layer", byLayer);
        auto* const byName = new MapScheme;
        byName->schemeType = 3;
        byName->maps.SetAt(L"*", L"PLACED");
        SetScheme(L"By name", byName);
    }
    ~ChainTable() override { DeleteSchemes(); }

    void Run(const Chain& chain, Block* block) {
        directory->explode = chain.explode;
        directory->multipleInsert = chain.multiple;
        directory->repeat = chain.repeat;
        opened = 0;
        user.messages.clear();
        for (int at = 0; at < chain.picks; ++at)
            user.Picks(10.0 * at, 7);
        if (chain.cancels)
            user.Cancels();
        Place(chain.isXref ? XrefBlock : InsertBlockWithRelaunch, block);
    }

    void ExpectContent(const Chain& chain, const std::wstring& name, const std::vector<Piece>& library) {
        const bool isMapped = directory->schemeName == L"By layer" && !chain.isXref;
        const auto landed = [&](Piece piece) {
            if (isMapped && IsUpper(piece.second))
                piece.second = L"MAPPED";
            return piece;
        };
        std::vector<Piece> definition, model;
        for (const Piece& piece : library)
            definition.push_back(landed(piece));
        const std::vector<Piece> pieces = tests::exploded(definition);
        for (int at = 0; at < chain.picks; ++at) {
            if (chain.explodes)
                model.insert(model.end(), pieces.begin(), pieces.end());
            else
                model.emplace_back(L"AcDbBlockReference", directory->schemeName == L"By name" ? L"PLACED" : L"0");
        }
        EXPECT_EQ(PiecesOf(editor::modelSpaceEntities(Drawing())), model);
        ASSERT_TRUE(IsDefined(name));
        AcDbBlockTableRecord* record = nullptr;
        ASSERT_EQ(acdbOpenObject(record, editor::findBlock(Drawing(), name), AcDb::kForRead), eOk);
        EXPECT_EQ(record->isFromExternalReference(), chain.isXref);
        record->close();
        if (!chain.isXref) {
            EXPECT_EQ(PiecesOf(EntitiesOf(editor::findBlock(Drawing(), name))), definition);
        }
        EXPECT_EQ(editor::findLayer(Drawing(), L"MAPPED").isNull(), !isMapped);
        for (const auto& [type, layer] : library) {
            const bool isGone = chain.isXref || (isMapped && IsUpper(layer));
            if (layer != L"0") {
                EXPECT_EQ(editor::findLayer(Drawing(), layer).isNull(), isGone);
            }
        }
        // A layer whose name has small letters keeps its entities, so that it can't be erased.
        std::set<std::wstring> kept;
        for (const auto& [type, layer] : library)
            if (isMapped && !IsUpper(layer))
                kept.insert(L"Could not erase layer " + editor::upperCased(layer));
        EXPECT_THAT(user.messages, testing::UnorderedElementsAreArray(kept));
    }
};

} // namespace

TEST_P(ChainTable, EndsInTheRightDrawingStateAndBrowserAndGoesBack) {
    const std::filesystem::path file = tests::fileOf(GetParam(), folder.path());
    if (file.empty())
        GTEST_SKIP() << "no shared drawings";
    const std::wstring name = file.stem().wstring();
    directory->path = file.parent_path().wstring();
    Block* const block = AddBlockWithoutFile(name);
    const std::vector<Piece> library = tests::piecesIn(file);
    editor.execute(L"ATTREQ 0\n");
    Remember();
    for (const wchar_t* const scheme : {L"<None>", L"By layer", L"By name"}) {
        directory->schemeName = scheme;
        for (const Chain& chain : kChains) {
            SCOPED_TRACE(testing::Message() << chain.name << ", scheme " << editor::toUtf8(scheme));
            Run(chain, block);
            ExpectContent(chain, name, library);
            ExpectFlags(false, false, false, false);
            EXPECT_TRUE(placement.definitionSafe);
            EXPECT_EQ(opened, chain.opened);
            EXPECT_EQ(user.unexpected, 0);
            EXPECT_EQ(CurrentLayer(), L"0");
            EXPECT_FALSE(clayerSaved);
            ExpectUndone();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Library, ChainTable, testing::ValuesIn(kLibrary),
                         [](const auto& tested) { return tests::TestName(tested.param); });
