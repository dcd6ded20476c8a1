// Names of files and definitions that would be more than one answer on the command line.
#include "tests/placement/FakeHost.h"

#include <gmock/gmock.h>

using testing::Each;
using testing::IsEmpty;
using testing::SizeIs;
using tests::PlacementTest;

namespace {

const std::wstring kHostile[] = {L"a\nERASE ALL", L"a\rb", std::wstring(1, L'\x1b') + L"ERASE", L"a\tb", L"^CERASE ALL",
                                 L"^cU",          L"a\x7f"};

} // namespace

TEST_F(PlacementTest, ANameThatWouldBeginACommandIsNotInserted) {
    for (const std::wstring& name : kHostile) {
        EXPECT_EQ(InsertBlock(AddBlock(*directory, name), true), 1);
        EXPECT_THAT(sent, IsEmpty()) << "at " << &name - kHostile;
    }
    EXPECT_FALSE(placement.placementActive);
    EXPECT_THAT(questions, SizeIs(std::size(kHostile)));
    EXPECT_THAT(questions, Each(L"This name cannot be given to the command line"));
}

TEST_F(PlacementTest, AnInternalDefinitionOfSuchANameIsNotInsertedEither) {
    directory->isInternal = true;
    for (const std::wstring& name : kHostile)
        InsertBlock(AddBlock(*directory, name), true);
    EXPECT_THAT(sent, IsEmpty());
}

TEST_F(PlacementTest, AFolderOfSuchANameGivesNothingToPlace) {
    directory->path = L"/lib\nERASE ALL\n";
    InsertBlock(door, true);
    XrefBlock(door);
    EXPECT_THAT(sent, IsEmpty());
    EXPECT_THAT(lists, IsEmpty());
    EXPECT_THAT(questions, SizeIs(2));
}

TEST_F(PlacementTest, ANameThatHoldsTheSignForEscapeInItsMiddleIsPlaced) {
    InsertBlock(AddBlock(*directory, L"10^C"), true);
    EXPECT_THAT(sent, SizeIs(1));
}
