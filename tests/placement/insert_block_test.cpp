#include "tests/placement/FakeHost.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using tests::PlacementTest;
using tests::SentText;

TEST_F(PlacementTest, ANewBlockIsInsertedByItsPath) {
    EXPECT_EQ(InsertBlock(door, true), 1);
    EXPECT_THAT(Sent(), ElementsAre(L"._-insert /lib/DOOR.dwg\n_scale 1 _rotate 0.000000\n"));
    EXPECT_EQ(placement.repeatCommand, L"._-insert DOOR\n _scale 1 _rotate 0.000000\n");
    EXPECT_EQ(placement.pendingBlockName, L"DOOR");
    EXPECT_FALSE(placement.definitionSafe);
    EXPECT_TRUE(placement.placementActive);
    EXPECT_FALSE(placement.explodePending || placement.multiplePending || placement.relaunchPending);
}

TEST_F(PlacementTest, TextsAreQueuedActivatingAndWithoutEcho) {
    SendToCommandLine(L"text");
    EXPECT_THAT(sent, ElementsAre(SentText{L"text", true, false, false}));
}

TEST_F(PlacementTest, APathWithATrailingSeparatorGetsNoSecondOne) {
    directory->path = L"/lib/";
    InsertBlock(door, true);
    EXPECT_EQ(Sent().front().substr(0, 25), L"._-insert /lib/DOOR.dwg\n_");
}

TEST_F(PlacementTest, AnExistingDefinitionIsRedefinedWhereTheUserAgrees) {
    Define(L"door");
    InsertBlock(door, true);
    EXPECT_THAT(questions, ElementsAre(L"DOOR already exists, do you wish to overwrite?"));
    EXPECT_THAT(Sent(), ElementsAre(L"._-insert DOOR=/lib/DOOR.dwg\n_y\n_scale 1 _rotate 0.000000\n"));
    EXPECT_TRUE(placement.definitionSafe);
}

TEST_F(PlacementTest, ARefusedOverwritePlacesTheExistingDefinitionByName) {
    Define(L"DOOR");
    answer = platform::MessageAnswer::No;
    InsertBlock(door, true);
    EXPECT_THAT(Sent(), ElementsAre(L"._-insert DOOR\n_scale 1 _rotate 0.000000\n"));
}

TEST_F(PlacementTest, TheDrawingsScaleIsAHostVariableAlsoWhereItIsZero) {
    directory->scaleMode = 1;
    reals[L"dimscale"] = 0;
    InsertBlock(door, true);
    EXPECT_THAT(Sent(), ElementsAre(L"._-insert /lib/DOOR.dwg\n _scale 0.000000 _rotate 0.000000\n"));
}

TEST_F(PlacementTest, ATypedScaleLivesInTheDrawing) {
    directory->scaleMode = 3;
    drawing.setUserr4(12.25);
    InsertBlock(door, true);
    EXPECT_THAT(Sent(), ElementsAre(L"._-insert /lib/DOOR.dwg\n _scale 12.250000 _rotate 0.000000\n"));
}

TEST_F(PlacementTest, BoxesRaiseFlagsAndNothingHereLowersThem) {
    directory->explode = directory->multipleInsert = directory->repeat = true;
    InsertBlock(door, false);
    EXPECT_TRUE(placement.explodePending);
    EXPECT_TRUE(placement.multiplePending);
    EXPECT_FALSE(placement.relaunchPending) << "this road does not reopen the browser";
    InsertBlockWithRelaunch(door);
    EXPECT_TRUE(placement.relaunchPending);
    directory->explode = directory->multipleInsert = directory->repeat = false;
    InsertBlock(door, true);
    EXPECT_TRUE(placement.explodePending && placement.multiplePending && placement.relaunchPending);
}

TEST_F(PlacementTest, AnInternalBlockIsPlacedByNameWithoutALookAtItsDefinition) {
    Define(L"DOOR");
    directory->isInternal = true;
    directory->explode = true;
    placement.pendingBlockName = L"OLD";
    InsertBlock(door, true);
    EXPECT_THAT(questions, IsEmpty());
    EXPECT_THAT(Sent(), ElementsAre(L"._-insert DOOR\n_scale 1 _rotate 0.000000\n"));
    EXPECT_EQ(placement.pendingBlockName, L"OLD");
    EXPECT_TRUE(placement.explodePending);
}

TEST_F(PlacementTest, ABlockThatIsNotOfTheCurrentDirectoryIsNotPlaced) {
    Block stranger;
    EXPECT_EQ(InsertBlock(&stranger, true), 1);
    currentDirectory = nullptr;
    EXPECT_EQ(InsertBlock(door, true), 1);
    EXPECT_EQ(OpenBlock(door), 1);
    EXPECT_EQ(XrefBlock(door), 1);
    EXPECT_THAT(sent, IsEmpty());
    EXPECT_FALSE(placement.placementActive);
}

TEST_F(PlacementTest, AskingGoesByTheSetting) {
    struct Row {
        int setting;
        std::size_t questions;
    };
    for (const Row row : {Row{0, 2}, Row{1, 1}, Row{2, 0}}) {
        blockInsert = row.setting;
        questions.clear();
        askedBlocks.clear();
        EXPECT_TRUE(ConfirmOverwrite(L"A"));
        EXPECT_TRUE(ConfirmOverwrite(L"A"));
        EXPECT_EQ(questions.size(), row.questions) << row.setting;
    }
}

TEST_F(PlacementTest, ARefusedBlockIsReplacedWithoutAQuestionTheSecondTime) {
    blockInsert = 1;
    answer = platform::MessageAnswer::No;
    EXPECT_FALSE(ConfirmOverwrite(L"A"));
    EXPECT_TRUE(ConfirmOverwrite(L"A"));
    EXPECT_FALSE(ConfirmOverwrite(L"B"));
    EXPECT_THAT(askedBlocks, ElementsAre(L"A", L"B"));
}

TEST_F(PlacementTest, DefinitionsAreFoundWithoutRegardToCaseAndErased) {
    Define(L"Desk");
    placement.pendingBlockName = L"dESK";
    EXPECT_TRUE(BlockExistsInDrawing());
    EraseBlockDefinition();
    EXPECT_FALSE(BlockExistsInDrawing());
    EXPECT_FALSE(IsDefined(L"Desk"));
    EraseBlockDefinition();
    placement.pendingBlockName = L"none";
    EXPECT_FALSE(BlockExistsInDrawing());
}

TEST_F(PlacementTest, FindingPlacesAnExactNameWithoutRelaunch) {
    directory->repeat = true;
    currentDirectory = nullptr;
    EXPECT_EQ(FindAndInsertBlock(L"dOOr"), 1);
    EXPECT_EQ(currentDirectory, directory);
    EXPECT_EQ(sent.size(), 1u);
    EXPECT_FALSE(placement.relaunchPending);
}

TEST_F(PlacementTest, FindingStopsAtTheFirstMatchAndHasTheBrowserOpenOnIt) {
    auto* const first = new Directory;
    first->path = L"/first";
    directories.push_front(first);
    AddBlock(*first, L"WINDOW");
    Block* const doorway = AddBlock(*first, L"DOORWAY");
    doorway->listIndex = 7;
    EXPECT_EQ(FindAndInsertBlock(L"door"), 0);
    EXPECT_EQ(currentDirectory, first);
    EXPECT_EQ(first->topIndex, 7);
    EXPECT_EQ(first->selectedIndex, 7);
    EXPECT_THAT(sent, IsEmpty());
}

TEST_F(PlacementTest, FindingTakesWildcardsAndChangesNothingWithoutAMatch) {
    EXPECT_EQ(FindAndInsertBlock(L"window"), 0);
    EXPECT_EQ(directory->selectedIndex, -1);
    door->listIndex = 3;
    EXPECT_EQ(FindAndInsertBlock(L"D??R"), 0) << "a pattern is no exact name";
    EXPECT_EQ(directory->selectedIndex, 3);
}

TEST_F(PlacementTest, OpeningNotesThePathAndSendsTheCommandWithEcho) {
    EXPECT_EQ(OpenBlock(door), 1);
    EXPECT_EQ(pendingOpenPath, L"/lib/DOOR.dwg");
    EXPECT_THAT(sent, ElementsAre(SentText{L"norvanetessaroopen ", true, false, true}));
    EXPECT_FALSE(placement.placementActive);
}

TEST_F(PlacementTest, AnXrefIsAttachedByAListOfElementsAtOnce) {
    directory->path = L"/my lib";
    EXPECT_EQ(XrefBlock(door), 1);
    EXPECT_THAT(lists, ElementsAre(ElementsAre(L"._-xref", L"_attach", L"/my lib/DOOR.dwg", L"_scale", L"1", L"_rotate",
                                               L"real 0.000000", L"\\", L"end")));
    EXPECT_EQ(placement.repeatCommand, L"._-xref _a /my lib/DOOR.dwg\n _scale 1 _rotate 0.000000\n");
    EXPECT_TRUE(placement.placementActive);
    EXPECT_THAT(sent, IsEmpty());
    EXPECT_THAT(questions, IsEmpty());
}

TEST_F(PlacementTest, AnXrefTakesTheOptionsOfItsDirectory) {
    overlayXRef = 1;
    directory->explode = directory->multipleInsert = directory->repeat = true;
    directory->rotationMode = 1;
    directory->scaleMode = 1;
    reals[L"dimscale"] = 4;
    XrefBlock(door);
    EXPECT_THAT(lists.back(),
                ElementsAre(L"._-xref", L"_overlay", L"/lib/DOOR.dwg", L"_scale", L"real 4.000000", L"\\", L"end"));
    EXPECT_EQ(placement.repeatCommand, L"._-xref _o /lib/DOOR.dwg\n _scale 4.000000\n");
    EXPECT_TRUE(placement.relaunchPending);
    EXPECT_FALSE(placement.explodePending || placement.multiplePending);
    directory->scaleMode = 2;
    XrefBlock(door);
    EXPECT_THAT(lists.back(), ElementsAre(L"._-xref", L"_overlay", L"/lib/DOOR.dwg", L"\\", L"end"));
    directory->scaleMode = 3;
    drawing.setUserr4(0.5);
    XrefBlock(door);
    EXPECT_THAT(lists.back(),
                ElementsAre(L"._-xref", L"_overlay", L"/lib/DOOR.dwg", L"_scale", L"real 0.500000", L"\\", L"end"));
}

TEST_F(PlacementTest, AnXrefThatTheHostRefusesIsToldAndTheFlagsStay) {
    listResult = RTERROR;
    XrefBlock(door);
    EXPECT_THAT(questions, ElementsAre(L"This file cannot be xrefed"));
    EXPECT_TRUE(placement.placementActive);
}
