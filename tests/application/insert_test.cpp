#include "editor/application/drawing.h"
#include "editor/application/numbers.h"
#include "tests/application/EditorSession.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

using namespace editor;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct Placed {
    std::string block;
    AcGePoint3d position;
    AcGeVector3d scale;
    double rotation = 0;
};

class Insert : public testing::Test {
protected:
    Insert() {
        door = fromUtf8(folder.path().string()) + L"/a b/DOOR.dwg";
        std::filesystem::create_directories(folder.path() / "a b");
        session.editor.execute(L"LINE 0,0 1,0 \nSAVEAS " + door + L"\nCLOSE\nNEW\n");
        session.editor.reactors().addReactor(&reactor);
    }

    Placed last() {
        Placed placed;
        const AcDbObjectId id = lastEntity(session.database());
        AcDbBlockReference* reference = nullptr;
        if (acdbOpenObject(reference, id, AcDb::kForRead) != eOk)
            return placed;
        placed = {tests::utf8(recordName(reference->blockTableRecord())), reference->position(),
                  reference->scaleFactors(), reference->rotation()};
        reference->close();
        return placed;
    }

    std::size_t linesIn(const wchar_t* block) {
        AcDbBlockTableRecord* record = nullptr;
        if (acdbOpenObject(record, findBlock(session.database(), block), AcDb::kForRead) != eOk)
            return 0;
        AcDbBlockTableRecordIterator* iterator = nullptr;
        std::size_t count = 0;
        EXPECT_EQ(record->newIterator(iterator), eOk);
        for (const std::unique_ptr<AcDbBlockTableRecordIterator> owned(iterator); !owned->done(); owned->step())
            ++count;
        record->close();
        return count;
    }

    /// What the browser sends, with the user's pick behind it.
    void send(const std::wstring& text) {
        AcApDocManager* const manager = acDocManagerPtr();
        EXPECT_EQ(manager->sendStringToExecute(manager->curDocument(), text.c_str(), true, false, false), eOk);
        session.editor.execute(L"");
    }

    tests::TemporaryFolder folder;
    std::wstring door;
    tests::RecordingReactor reactor;
    tests::Session session;
};

TEST_F(Insert, SentByPathWithPresetsItWaitsForThePointOnly) {
    session.user.picks({20, 30, 0});
    send(L"._-insert " + door + L"\n_scale 1 _rotate 90.000000\n");
    const Placed placed = last();
    EXPECT_EQ(placed.block, "DOOR");
    EXPECT_EQ(placed.position.y, 30);
    EXPECT_EQ(placed.scale.x, 1);
    EXPECT_NEAR(placed.rotation, pi / 2, 1e-12);
    EXPECT_THAT(reactor.events, ElementsAre("started -INSERT", "ended -INSERT"));
    EXPECT_EQ(session.user.prompts.size(), 1u);
    EXPECT_EQ(linesIn(L"DOOR"), 1u);
    EXPECT_EQ(session.variable(L"INSNAME"), "\"DOOR\"");
}

TEST_F(Insert, ABlankInFrontOfTheOptionsIsAnEmptyAnswerThatAsksAgain) {
    session.user.picks({1, 1, 0});
    send(L"._-insert " + door + L"\n _scale 2.500000 _rotate 45\n");
    EXPECT_EQ(last().scale.z, 2.5);
    EXPECT_NEAR(last().rotation, pi / 4, 1e-12);
    session.user.picks({2, 2, 0});
    send(L"._-insert DOOR\n _scale 1\n");
    EXPECT_THAT(reactor.events, Contains("cancelled -INSERT")) << "no rotation was preset and nobody answered";
}

TEST_F(Insert, WithoutPresetsEverythingIsAskedBehindThePoint) {
    session.editor.execute(L"-INSERT " + door + L"\n5,6 2 3 30\n");
    EXPECT_EQ(last().position.x, 5);
    EXPECT_EQ(last().scale.x, 2);
    EXPECT_EQ(last().scale.y, 3);
    EXPECT_EQ(last().scale.z, 2);
    EXPECT_NEAR(last().rotation, radians(30), 1e-12);
}

TEST_F(Insert, EmptyAnswersTakeTheDefaults) {
    session.editor.execute(L"-INSERT " + door + L"\n5,6\n\n\n\n");
    EXPECT_EQ(last().scale.y, 1);
    EXPECT_EQ(last().rotation, 0);
    session.editor.execute(L"-INSERT " + door + L"\nN\n5,6 4\n\n\n");
    EXPECT_EQ(last().scale.y, 4) << "the y scale follows the x scale";
}

TEST_F(Insert, AxesAreSetOneByOne) {
    session.editor.execute(L"-INSERT " + door + L"\nX 2 Y 3 R 0 1,1\n");
    EXPECT_EQ(last().scale.x, 2);
    EXPECT_EQ(last().scale.y, 3);
    EXPECT_EQ(last().scale.z, 1);
    session.editor.execute(L"-INSERT DOOR\n1,1 XYZ 2 3 4 0\n");
    EXPECT_EQ(last().scale.z, 4);
}

TEST_F(Insert, ByNameTheDefinitionOfTheDrawingIsTaken) {
    session.editor.execute(L"-INSERT " + door + L"\nS 1 R 0 1,1\n-INSERT door\nS 1 R 0 2,2\n-INSERT\n\nS 1 R 0 3,3\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("INSERT DOOR", "INSERT DOOR", "INSERT DOOR"));
    EXPECT_THAT(session.transcript, HasSubstr("Enter block name or [?] <door>: "));
    EXPECT_THAT(session.faults(), IsEmpty());
}

TEST_F(Insert, ByNameAFileOnTheSupportPathIsFound) {
    session.editor.addSupportFolder(fromUtf8((folder.path() / "a b").string()));
    session.editor.execute(L"-INSERT DOOR\nS 1 R 0 1,1\n");
    EXPECT_EQ(last().block, "DOOR");
}

TEST_F(Insert, NameAndPathRedefineAfterTheQuestion) {
    session.editor.execute(L"-INSERT " + door + L"\nS 1 R 0 1,1\n");
    session.editor.execute(L"OPEN " + door + L"\nLINE 2,2 3,3 \nQSAVE\nCLOSE\n");
    ASSERT_EQ(linesIn(L"DOOR"), 1u);
    session.user.picks({9, 9, 0});
    send(L"._-insert DOOR=" + door + L"\n_y\n_scale 1 _rotate 0.000000\n");
    EXPECT_THAT(session.transcript, HasSubstr("Block \"DOOR\" already exists. Redefine it? [Yes/No] <N>: "));
    EXPECT_EQ(linesIn(L"DOOR"), 2u);
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("INSERT DOOR", "INSERT DOOR"));
}

TEST_F(Insert, TheQuestionAnsweredByNoKeepsTheDefinition) {
    session.editor.execute(L"-INSERT " + door + L"\nS 1 R 0 1,1\n");
    session.editor.execute(L"OPEN " + door + L"\nLINE 2,2 3,3 \nQSAVE\nCLOSE\n");
    session.editor.execute(L"-INSERT DOOR=" + door + L"\n\nS 1 R 0 1,1\n");
    EXPECT_EQ(linesIn(L"DOOR"), 1u);
    EXPECT_EQ(tests::modelSpaceOf(session.database()).size(), 2u);
}

TEST_F(Insert, NameAndPathGiveTheDefinitionAnotherName) {
    session.editor.execute(L"-INSERT GATE=" + door + L"\nS 1 R 0 1,1\n");
    EXPECT_EQ(last().block, "GATE");
}

TEST_F(Insert, AMissingFileFails) {
    session.editor.execute(L"-INSERT /no such/GATE.dwg\n");
    EXPECT_THAT(session.transcript, HasSubstr("Can't find file \"/no such/GATE.dwg\"."));
    session.editor.execute(L"-INSERT GATE\n");
    EXPECT_THAT(session.transcript, HasSubstr("Can't find file \"GATE.dwg\"."));
    EXPECT_THAT(reactor.events, ElementsAre("started -INSERT", "failed -INSERT", "started -INSERT", "failed -INSERT"));
}

TEST_F(Insert, AFileThatIsNoDrawingFails) {
    const auto rubbish = folder.write("RUBBISH.dwg", "nothing of the kind");
    session.editor.execute(L"-INSERT " + fromUtf8(rubbish.string()) + L"\n");
    EXPECT_THAT(reactor.events, ElementsAre("started -INSERT", "failed -INSERT"));
    EXPECT_TRUE(findBlock(session.database(), L"RUBBISH").isNull());
}

TEST_F(Insert, TheUsersEscapeAtThePointCancelsAndLeavesTheDefinition) {
    session.user.cancels();
    send(L"._-insert " + door + L"\n_scale 1 _rotate 0.000000\n");
    EXPECT_THAT(reactor.events, ElementsAre("started -INSERT", "cancelled -INSERT"));
    EXPECT_FALSE(findBlock(session.database(), L"DOOR").isNull());
    EXPECT_THAT(tests::modelSpaceOf(session.database()), IsEmpty());
}

TEST_F(Insert, AScaleOfZeroIsRefusedAndTheNextNumberTaken) {
    session.user.picks({1, 1, 0});
    session.user.types(L"0\n");
    send(L"._-insert " + door + L"\n_scale 0.000000 _rotate 90.000000\n");
    EXPECT_EQ(last().scale.x, 90);
}

TEST_F(Insert, TheReferenceLiesOnTheCurrentLayer) {
    session.editor.execute(L"-INSERT " + door + L"\nS 1 R 0 1,1\n");
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenObject(entity, lastEntity(session.database()), AcDb::kForRead), eOk);
    EXPECT_EQ(entity->layer(), L"0");
    entity->close();
}

TEST_F(Insert, TheBlocksOfTheDrawingAreListed) {
    session.editor.execute(L"-INSERT " + door + L"\nS 1 R 0 1,1\n-INSERT ?\nd*\nDOOR\nS 1 R 0 1,1\n");
    EXPECT_THAT(session.transcript, HasSubstr("\n\"DOOR\"\n"));
}

class Drawing : public testing::Test {
protected:
    tests::Session session;
};

TEST_F(Drawing, LinesGoOnUntilAnEmptyAnswerCloseOrUndo) {
    session.editor.execute(L"LINE 0,0 1,0 U U 1,1 2,2 C\nLINE\n\n@1,0\n\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("LINE", "LINE", "LINE", "LINE"));
    EXPECT_TRUE(session.said("All segments already undone."));
}

TEST_F(Drawing, ACircleTakesARadiusOrADiameter) {
    session.editor.execute(L"CIRCLE 0,0 -1 2\nCIRCLE 0,0 D 4\nCIRCLE 0,0 3,4\n");
    EXPECT_EQ(tests::modelSpaceOf(session.database()).size(), 3u);
    EXPECT_THAT(session.faults(), IsEmpty());
}

TEST_F(Drawing, EraseTakesLastAllAndExpressions) {
    session.editor.execute(L"CIRCLE 0,0 1\nLINE 0,0 1,1 \nCIRCLE 0,0 2\nERASE (entlast)\n\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("CIRCLE", "LINE"));
    session.editor.execute(L"ERASE _l\n\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("CIRCLE"));
    session.editor.execute(L"ERASE nonsense ALL\n\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), IsEmpty());
    EXPECT_TRUE(session.said("*Invalid selection*"));
}

} // namespace
