// The chains of host commands that a placement is, row by row, in the real editor.
#include "tests/chains/ChainFixture.h"

#include "editor/application/drawing.h"
#include "editor/application/text.h"
#include "tessaro/mapping/engine/Engine.h"

#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Chains : public tests::ChainTest {
protected:
    Chains() { Remember(); }
    /// After every chain all is taken back.
    ~Chains() override { ExpectUndone(); }

    void Begin(bool explode, bool multiple, bool repeat) {
        directory->explode = explode;
        directory->multipleInsert = multiple;
        directory->repeat = repeat;
    }
};

} // namespace

TEST_F(Chains, WithoutOptionsTheInsertionIsAll) {
    Begin(false, false, false);
    user.Picks(3, 4);
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("INSERT DOOR"));
    EXPECT_TRUE(placement.definitionSafe);
    ExpectFlags(false, false, false, false);
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(user.unexpected, 0);
}

TEST_F(Chains, ExplodeLeavesThePieces) {
    Begin(true, false, false);
    user.Picks(3, 4);
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("Line"));
    EXPECT_TRUE(Said("Select objects: "));
    ExpectFlags(false, false, false, false);
    EXPECT_TRUE(IsDefined(L"DOOR"));
}

TEST_F(Chains, MultipleInsertGoesOnUntilTheCancel) {
    Begin(false, true, false);
    for (int at = 0; at < 3; ++at)
        user.Picks(at, 0);
    user.Cancels();
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("INSERT DOOR", "INSERT DOOR", "INSERT DOOR"));
    EXPECT_TRUE(IsDefined(L"DOOR")) << "placed references keep their definition";
    ExpectFlags(false, false, false, false);
    EXPECT_EQ(opened, 1);
}

TEST_F(Chains, ExplodeAndMultipleInsertAlternate) {
    Begin(true, true, false);
    for (int at = 0; at < 3; ++at)
        user.Picks(at, 0);
    user.Cancels();
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("Line", "Line", "Line"));
    ExpectFlags(false, false, false, false);
}

TEST_F(Chains, RepeatReopensTheBrowser) {
    Begin(false, false, true);
    user.Picks(3, 4);
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("INSERT DOOR"));
    EXPECT_EQ(opened, 2);
    ExpectFlags(false, false, false, false);
}

TEST_F(Chains, ExplodeAndRepeatReopenAfterTheExplode) {
    Begin(true, false, true);
    user.Picks(3, 4);
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("Line"));
    EXPECT_EQ(opened, 2);
    ExpectFlags(false, false, false, false);
}

TEST_F(Chains, MultipleInsertAndRepeatReopenAtTheCancel) {
    Begin(false, true, true);
    user.Picks(1, 0);
    user.Picks(2, 0);
    user.Cancels();
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("INSERT DOOR", "INSERT DOOR"));
    EXPECT_EQ(opened, 2);
    ExpectFlags(false, false, false, false);
}

TEST_F(Chains, AllThreeOptionsAtOnce) {
    Begin(true, true, true);
    user.Picks(1, 0);
    user.Picks(2, 0);
    user.Cancels();
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("Line", "Line"));
    EXPECT_EQ(opened, 2);
    ExpectFlags(false, false, false, false);
}

TEST_F(Chains, AnXrefIsAttachedInsideTheCommand) {
    for (const int overlay : {0, 1}) {
        overlayXRef = overlay;
        user.Picks(5, 5);
        Place(XrefBlock, overlay == 0 ? door : AddBlock(L"GATE"));
        EXPECT_THAT(user.messages, IsEmpty());
        EXPECT_TRUE(placement.definitionSafe);
        ExpectFlags(false, false, false, false);
    }
    EXPECT_THAT(Model(), ElementsAre("INSERT DOOR", "INSERT GATE"));
    AcDbBlockTableRecord* record = nullptr;
    ASSERT_EQ(acdbOpenObject(record, editor::findBlock(Drawing(), L"GATE"), AcDb::kForRead), eOk);
    EXPECT_TRUE(record->isFromExternalReference());
    EXPECT_TRUE(record->isFromOverlayReference());
    record->close();
    EXPECT_TRUE(editor::findLayer(Drawing(), L"Leaf").isNull()) << "its layers stay its own";
}

TEST_F(Chains, AnXrefWithRepeatReopensTheBrowser) {
    Begin(false, false, true);
    user.Picks(5, 5);
    Place(XrefBlock, door);
    EXPECT_EQ(opened, 2);
    ExpectFlags(false, false, false, false);
    EXPECT_THAT(Model(), ElementsAre("INSERT DOOR"));
}

TEST_F(Chains, AnXrefWithPromptedScaleAndRotationAsksTheUser) {
    Begin(false, false, false);
    directory->scaleMode = 2;
    directory->rotationMode = 1;
    user.Picks(5, 5);
    user.Types(L"2 3 45 ");
    Place(XrefBlock, door);
    EXPECT_EQ(user.unexpected, 0);
    EXPECT_THAT(user.messages, IsEmpty());
    ASSERT_THAT(Model(), ElementsAre("INSERT DOOR"));
    EXPECT_NE(Content().find("Y scale factor: 3.0000"), std::string::npos);
}

TEST_F(Chains, AnXrefThatTheHostRefusesIsTold) {
    Block* const missing = AddBlockWithoutFile(L"MISSING");
    directory->repeat = true;
    Place(XrefBlock, missing);
    EXPECT_THAT(user.messages, ElementsAre(L"This file cannot be xrefed"));
    EXPECT_TRUE(Said("Can't find file"));
    EXPECT_EQ(opened, 2) << "the failure reopens the browser all the same";
    ExpectFlags(false, false, false, false);
    EXPECT_THAT(Model(), IsEmpty());
}

TEST_F(Chains, EscapeAtThePickOfAnXrefIsNoSuccessAndLeavesNothing) {
    user.Cancels();
    Place(XrefBlock, door);
    EXPECT_THAT(user.messages, ElementsAre(L"This file cannot be xrefed"));
    EXPECT_EQ(Content(), contentBefore);
    ExpectFlags(false, false, false, false);
}

TEST_F(Chains, EscapeAtTheFirstPickTakesTheNewDefinitionOut) {
    Begin(true, true, true);
    user.Cancels();
    Insert(door);
    EXPECT_THAT(Model(), IsEmpty());
    EXPECT_FALSE(IsDefined(L"DOOR"));
    EXPECT_EQ(opened, 2);
    ExpectFlags(false, false, false, false);
}

TEST_F(Chains, EscapeLeavesADefinitionThatWasThereBefore) {
    user.Picks(0, 0);
    Insert(door);
    for (const auto answer : {platform::MessageAnswer::Yes, platform::MessageAnswer::No}) {
        user.answer = answer;
        user.Cancels();
        Insert(door);
        EXPECT_TRUE(IsDefined(L"DOOR"));
        ExpectFlags(false, false, false, false);
    }
    EXPECT_THAT(user.messages, testing::Each(L"DOOR already exists, do you wish to overwrite?"));
    EXPECT_EQ(user.messages.size(), 2u);
    EXPECT_THAT(Model(), ElementsAre("INSERT DOOR"));
}

TEST_F(Chains, EscapeAtALaterPickKeepsDefinitionAndReferences) {
    Begin(false, true, false);
    user.Picks(1, 1);
    user.Cancels();
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("INSERT DOOR"));
    EXPECT_TRUE(IsDefined(L"DOOR"));
}

TEST_F(Chains, AForeignCommandThatEndsInTheMiddleChangesNothing) {
    Begin(false, false, false);
    user.Types(L"'USERR4 2\n");
    user.Picks(1, 1);
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("INSERT DOOR"));
    ExpectFlags(false, false, false, false);
    EXPECT_TRUE(placement.definitionSafe);
}

TEST_F(Chains, TheCancelOfAForeignCommandInTheMiddleEndsThePlacement) {
    directory->explode = directory->repeat = true;
    editor.commands().addOwn(
        {L"TEST", L"STOP", L"STOP", ACRX_CMD_TRANSPARENT, [] { throw editor::CommandCancelled(); }});
    user.Types(L"'STOP\n");
    user.Picks(1, 1);
    Insert(door);
    EXPECT_FALSE(placement.placementActive);
    EXPECT_TRUE(placement.explodePending) << "left up for the next placement";
    EXPECT_EQ(opened, 2);
    EXPECT_THAT(Model(), IsEmpty()) << "the definition went with the placement";

    // The next placement explodes because of it.
    directory->explode = directory->repeat = false;
    user.Picks(2, 2);
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("Line"));
    ExpectFlags(false, false, false, false);
}

TEST_F(Chains, TheUsersOwnInsertionTriggersNoChain) {
    placement.explodePending = placement.multiplePending = placement.relaunchPending = true;
    editor.execute(L"-INSERT " + PathOf(L"DOOR.dwg") + L"\nS 1 R 0 1,1\n");
    EXPECT_THAT(Model(), ElementsAre("INSERT DOOR"));
    EXPECT_EQ(opened, 0);
    ExpectFlags(false, true, true, true);
}

TEST_F(Chains, AFailureLowersTheFlagsAndReopensTheBrowser) {
    Begin(true, true, true);
    Insert(AddBlockWithoutFile(L"VANISHED"));
    EXPECT_TRUE(Said("Can't find file"));
    EXPECT_EQ(opened, 2);
    ExpectFlags(false, false, false, false);
    EXPECT_THAT(Model(), IsEmpty());
    EXPECT_THAT(user.messages, IsEmpty());
}

TEST_F(Chains, OverwritingBringsTheNewDefinitionAndRefusingKeepsTheOld) {
    user.Picks(0, 0);
    Insert(door);
    AcDbDatabase other;
    for (int line = 0; line < 3; ++line)
        editor::addToModelSpace(other, std::make_unique<AcDbLine>(AcGePoint3d{}, AcGePoint3d{2, 0, 0}));
    ASSERT_EQ(other.saveAs(PathOf(L"DOOR.dwg").c_str()), eOk);
    const auto lines = [this] {
        directory->explode = true;
        user.Picks(0, 0);
        const std::size_t count = Model().size();
        Insert(door);
        directory->explode = false;
        return Model().size() - count;
    };
    user.answer = platform::MessageAnswer::No;
    EXPECT_EQ(lines(), 1u);
    user.answer = platform::MessageAnswer::Yes;
    EXPECT_EQ(lines(), 3u);
}

TEST_F(Chains, AnInternalBlockIsPlacedByItsNameAndMayBeExploded) {
    user.Picks(0, 0);
    Insert(door);
    directory->isInternal = true;
    directory->explode = true;
    placement.pendingBlockName = L"OLD";
    user.Picks(1, 1);
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("INSERT DOOR", "Line"));
    EXPECT_EQ(placement.pendingBlockName, L"OLD");
    EXPECT_THAT(user.messages, IsEmpty());
}

TEST_F(Chains, EscapeInAnInternalPlacementActsOnWhatTheLastCatalogueOneLeft) {
    user.Picks(0, 0);
    Insert(door);
    AddBlock(L"GATE");
    editor.execute(L"-INSERT " + PathOf(L"GATE.dwg") + L"\nS 1 R 0 1,1\nERASE L\n\n");
    placement.pendingBlockName = L"GATE";
    placement.definitionSafe = false;
    directory->isInternal = true;
    user.Cancels();
    Insert(door);
    EXPECT_TRUE(IsDefined(L"DOOR"));
    EXPECT_FALSE(IsDefined(L"GATE")) << "the old name, not the block that was just placed";
}

TEST_F(Chains, ScaleAndRotationReachTheReference) {
    struct Row {
        int scaleMode, rotationMode;
        const char* scale;
        const char* rotation;
    };
    editor.execute(L"DIMSCALE 4\nUSERR4 0.5\n");
    directory->rotationAngle = 30;
    user.answer = platform::MessageAnswer::No;
    for (const Row row :
         {Row{0, 0, "1.0000", "30.0000"}, Row{1, 0, "4.0000", "30.0000"}, Row{3, 0, "0.5000", "30.0000"},
          Row{0, 1, "1.0000", "60.0000"}, Row{2, 0, "7.0000", "30.0000"}, Row{2, 1, "7.0000", "60.0000"}}) {
        directory->scaleMode = row.scaleMode;
        directory->rotationMode = row.rotationMode;
        user.Picks(1, 1);
        if (row.scaleMode == 2)
            user.Types(L"7\n\n");
        if (row.rotationMode == 1)
            user.Types(L"60\n");
        Insert(door);
        EXPECT_EQ(user.unexpected, 0);
        const std::string content = Content();
        const auto last = content.rfind("X scale factor: ");
        ASSERT_NE(last, std::string::npos);
        EXPECT_EQ(content.substr(last + 16, 6), row.scale) << row.scaleMode;
        EXPECT_EQ(content.substr(content.rfind("rotation angle: ") + 16, 7), row.rotation) << row.scaleMode;
    }
}

TEST_F(Chains, NamesOfEveryKindAreFoundAndPlaced) {
    std::vector<std::string> placed;
    for (const wchar_t* const name : {L"oak door", L"door.v2", L"50%s off %d", L"T\u00FCr", L"\u30C9\u30A2"}) {
        for (const bool explode : {false, true}) {
            directory->explode = explode;
            user.Picks(1, 1);
            Block* const block = explode ? directory->blocks.back() : AddBlock(name);
            Insert(block);
            placed.push_back(explode ? "Line" : "INSERT " + editor::toUtf8(name));
        }
    }
    EXPECT_EQ(Model(), placed);
    EXPECT_EQ(user.unexpected, 0);
}

TEST_F(Chains, BlocksOfRealDrawingsArePlacedExplodedAndTakenBack) {
    const auto drawings = tests::sharedFolder("drawings");
    if (drawings.empty())
        GTEST_SKIP() << "no shared drawings";
    editor.execute(L"ATTREQ 0\n");
    directory->path = editor::fromUtf8((drawings / "2000").string());
    std::size_t count = 0;
    for (const char* const name : {"Line", "Arc", "circle", "Ellipse", "Text", "PolyLine2D", "PolyLine3D", "Spline"}) {
        Block* const block = AddBlockWithoutFile(editor::fromUtf8(name));
        directory->explode = ++count % 2 == 0;
        user.Picks(1, 1);
        Insert(block);
        EXPECT_TRUE(IsDefined(block->name)) << name;
        ExpectFlags(false, false, false, false);
    }
    EXPECT_EQ(user.unexpected, 0);
    EXPECT_THAT(Model(), Contains("INSERT Line"));
}
