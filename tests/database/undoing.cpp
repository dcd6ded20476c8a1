#include "editor/database/exploding.h"
#include "editor/database/external_references.h"
#include "editor/database/undo.h"
#include "tests/database/database_support.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Undo : public testing::Test {
protected:
    Undo() { editor::recordUndo(database); }

    template <class Function> bool group(const wchar_t* name, Function function) {
        editor::beginUndoGroup(database, name);
        function();
        return editor::endUndoGroup(database);
    }

    std::wstring undo() { return editor::undoGroup(database).value_or(L"(none)"); }
    std::wstring redo() { return editor::redoGroup(database).value_or(L"(none)"); }

    std::vector<AcDbObjectId> model() { return entitiesOf(blockNamed(database, ACDB_MODEL_SPACE)); }

    AcDbDatabase database;
};

TEST_F(Undo, TakesAnAddedEntityOutAndPutsItBack) {
    EXPECT_TRUE(group(L"LINE", [this] { appendToModel(database, new AcDbLine({}, {1, 2, 3})); }));
    const auto drawn = model();
    EXPECT_EQ(undo(), L"LINE");
    EXPECT_THAT(model(), IsEmpty());
    EXPECT_EQ(redo(), L"LINE");
    EXPECT_EQ(model(), drawn);
    EXPECT_EQ(objectOf(drawn[0]).as<dwg::Line>()->end.z, 3);
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenObject(entity, drawn[0], AcDb::kForWrite), eOk);
    EXPECT_EQ(entity->setColorIndex(5), eOk);
    entity->close();
    EXPECT_EQ(objectOf(drawn[0]).entity->color.index, 5) << "what was opened before is the object again";
}

TEST_F(Undo, TakesAnErasureBack) {
    const AcDbObjectId line = appendToModel(database, new AcDbLine({}, {1, 0, 0}));
    group(L"ERASE", [&] { tests::erase(line); });
    EXPECT_THAT(model(), IsEmpty());
    undo();
    EXPECT_THAT(model(), ElementsAre(line));
    redo();
    EXPECT_THAT(model(), IsEmpty());
}

TEST_F(Undo, GivesVariablesOfTheDrawingTheirOldValues) {
    group(L"SETVAR", [this] {
        database.setUserr4(48);
        database.setDimscale(3);
        database.setClayer(addLayer(database, L"New"));
    });
    undo();
    EXPECT_EQ(database.userr4(), 0);
    EXPECT_EQ(database.dimscale(), 1);
    EXPECT_EQ(database.clayer(), layerNamed(database, L"0"));
    EXPECT_EQ(layerNamed(database, L"New").handle, 0u);
    redo();
    EXPECT_EQ(database.clayer(), layerNamed(database, L"New"));
    EXPECT_EQ(database.userr4(), 48);
}

TEST_F(Undo, AGroupThatChangesNothingIsNone) {
    const AcDbObjectId line = appendToModel(database, new AcDbLine({}, {1, 0, 0}));
    editor::endUndoGroup(database);
    EXPECT_FALSE(group(L"LOOK", [&] {
        AcDbEntity* entity = nullptr;
        ASSERT_EQ(acdbOpenObject(entity, line, AcDb::kForWrite), eOk);
        entity->close();
        database.setUserr4(database.userr4());
    }));
}

TEST_F(Undo, ANewChangeEndsWhatCouldBeCarriedOutAgain) {
    group(L"ONE", [this] { appendToModel(database, new AcDbLine({}, {1, 0, 0})); });
    undo();
    group(L"TWO", [this] { appendToModel(database, new AcDbLine({}, {2, 0, 0})); });
    EXPECT_EQ(redo(), L"(none)");
    EXPECT_EQ(undo(), L"TWO");
    EXPECT_EQ(undo(), L"(none)");
}

TEST_F(Undo, ChangesOutsideOfGroupsBelongToTheLastOne) {
    group(L"ONE", [this] { appendToModel(database, new AcDbLine({}, {1, 0, 0})); });
    appendToModel(database, new AcDbLine({}, {2, 0, 0}));
    EXPECT_EQ(undo(), L"ONE");
    EXPECT_THAT(model(), IsEmpty());
    EXPECT_EQ(undo(), L"(none)");
}

TEST_F(Undo, GroupsAreJoined) {
    for (const double x : {1.0, 2.0, 3.0})
        group(L"LINE", [&] { appendToModel(database, new AcDbLine({}, {x, 0, 0})); });
    editor::joinUndoGroups(database, 1, L"GROUP");
    EXPECT_EQ(editor::undoDepth(database), 2u);
    EXPECT_EQ(undo(), L"GROUP");
    EXPECT_EQ(model().size(), 1u);
    EXPECT_EQ(redo(), L"GROUP");
    EXPECT_EQ(model().size(), 3u);
    EXPECT_EQ(undo(), L"GROUP");
    EXPECT_EQ(undo(), L"LINE");
    EXPECT_THAT(model(), IsEmpty());
}

TEST_F(Undo, KeepsALimitedNumberOfGroups) {
    for (std::size_t count = 0; count < editor::undoGroupsKept + 5; ++count)
        group(L"SET", [&] { database.setUserr4(static_cast<double>(count) + 1); });
    EXPECT_EQ(editor::undoDepth(database), editor::undoGroupsKept);
    while (undo() != L"(none)") {
    }
    EXPECT_EQ(database.userr4(), 5);
}

TEST_F(Undo, SavingDoesNotEndIt) {
    const tests::TemporaryFolder folder;
    const AcDbObjectId line = appendToModel(database, new AcDbLine({}, {1, 0, 0}));
    group(L"ERASE", [&] { tests::erase(line); });
    const std::size_t depth = editor::undoDepth(database);
    const std::wstring file = wide((folder.path() / "a.dwg").string());
    group(L"QSAVE", [&] { EXPECT_EQ(database.saveAs(file.c_str()), eOk); });
    EXPECT_EQ(editor::undoDepth(database), depth) << "saving is nothing to be taken back";
    EXPECT_EQ(undo(), L"ERASE");
    EXPECT_THAT(model(), ElementsAre(line));
    EXPECT_EQ(database.saveAs(file.c_str()), eOk);
    AcDbDatabase again(false);
    ASSERT_EQ(again.readDwgFile(file.c_str()), eOk);
    EXPECT_EQ(entitiesOf(blockNamed(again, ACDB_MODEL_SPACE)).size(), 1u);
}

TEST_F(Undo, TakesARedefinitionBack) {
    AcDbDatabase first, second;
    appendToModel(first, new AcDbLine({}, {1, 0, 0}));
    appendToModel(second, new AcDbCircle({}, AcGeVector3d::kZAxis, 1));
    addLayer(second, L"Brought");
    appendToModel(second, new AcDbLine({}, {5, 0, 0}), L"Brought");
    AcDbObjectId block;
    group(L"-INSERT", [&] { ASSERT_EQ(database.insert(block, L"B", &first), eOk); });
    const auto before = entitiesOf(block);
    group(L"-INSERT", [&] { ASSERT_EQ(database.insert(block, L"B", &second), eOk); });
    EXPECT_EQ(entitiesOf(block).size(), 2u);
    undo();
    EXPECT_EQ(entitiesOf(block), before);
    EXPECT_EQ(layerNamed(database, L"Brought").handle, 0u);
    undo();
    EXPECT_EQ(blockNamed(database, L"B").handle, 0u);
    redo();
    redo();
    EXPECT_EQ(entitiesOf(blockNamed(database, L"B")).size(), 2u);
}

TEST_F(Undo, TakesAnExplosionBackWithAllItMade) {
    const AcDbObjectId block = addBlock(database, L"B");
    append(block, new AcDbLine({}, {1, 0, 0}));
    append(block, new NewEntity(38, dwg::Carried{}));
    const AcDbObjectId reference = appendToModel(database, new AcDbBlockReference({}, block));
    editor::endUndoGroup(database);
    std::vector<AcDbObjectId> made;
    group(L"EXPLODE", [&] { editor::explodeReference(reference, made); });
    undo();
    EXPECT_THAT(model(), ElementsAre(reference));
    EXPECT_EQ(blockNamed(database, L"*U1").handle, 0u);
    redo();
    EXPECT_EQ(model(), made);
}

} // namespace
