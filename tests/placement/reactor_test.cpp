#include "tests/placement/FakeHost.h"

#include "tessaro/placement/CmdLineReactor.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const wchar_t* kExplode = L"._explode (entlast)\n\n";
constexpr const wchar_t* kRelaunch = L"tessaro\n";

class ReactorTest : public tests::PlacementTest {
protected:
    ReactorTest() {
        placement.placementActive = true;
        placement.repeatCommand = L"again\n";
        placement.amCatalogResume = L"resume\n";
        placement.savedCmdDia = 1;
        placement.savedFileDia = 3;
        placement.pendingBlockName = L"DOOR";
    }
    bool Restored() const { return shorts == std::map<std::wstring, short>{{L"CMDDIA", 1}, {L"FILEDIA", 3}}; }
    CmdLineReactor reactor;
};

} // namespace

TEST_F(ReactorTest, WithoutAPlacementNothingIsDoneEvenWithFlagsLeftUp) {
    placement.placementActive = false;
    placement.explodePending = placement.multiplePending = placement.relaunchPending = true;
    placement.amCatalogPending = placement.amCatalogDashPending = true;
    const auto notify = {&CmdLineReactor::commandEnded, &CmdLineReactor::commandCancelled,
                         &CmdLineReactor::commandFailed};
    for (const auto notification : notify)
        for (const wchar_t* command : {L"-INSERT", L"EXPLODE", L"-XREF", L"AMCATALOG", L"-AMCATALOG", L"AMNEW"})
            (reactor.*notification)(command);
    EXPECT_THAT(sent, IsEmpty());
    EXPECT_THAT(shorts, IsEmpty());
    EXPECT_TRUE(placement.explodePending && placement.multiplePending && placement.relaunchPending);
}

TEST_F(ReactorTest, APlainInsertionEndsThePlacement) {
    for (const wchar_t* command : {L"-INSERT", L"EXPLODE", L"-XREF"}) {
        placement.placementActive = true;
        placement.definitionSafe = false;
        reactor.commandEnded(command);
        EXPECT_TRUE(placement.definitionSafe);
        EXPECT_FALSE(placement.placementActive);
    }
    EXPECT_THAT(sent, IsEmpty());
}

TEST_F(ReactorTest, ForeignCommandsThatEndAreIgnoredAndNamesAreExact) {
    for (const wchar_t* command : {L"LINE", L"-insert", L"INSERT", L"-INSERT ", L""})
        reactor.commandEnded(command);
    reactor.commandEnded(nullptr);
    EXPECT_TRUE(placement.placementActive);
    EXPECT_FALSE(placement.definitionSafe);
}

TEST_F(ReactorTest, ExplodeIsSentOnceAndTheExplodeEndsThePlacement) {
    placement.explodePending = true;
    reactor.commandEnded(L"-INSERT");
    EXPECT_THAT(Sent(), ElementsAre(kExplode));
    EXPECT_FALSE(placement.explodePending);
    EXPECT_TRUE(placement.placementActive && placement.definitionSafe);
    reactor.commandEnded(L"EXPLODE");
    EXPECT_THAT(Sent(), ElementsAre(kExplode));
    EXPECT_FALSE(placement.placementActive);
}

TEST_F(ReactorTest, MultipleInsertRepeatsUntilTheCancel) {
    placement.multiplePending = true;
    Define(L"DOOR");
    reactor.commandEnded(L"-INSERT");
    reactor.commandEnded(L"-INSERT");
    EXPECT_THAT(Sent(), ElementsAre(L"again\n", L"again\n"));
    EXPECT_TRUE(placement.placementActive && placement.definitionSafe);
    reactor.commandCancelled(L"-INSERT");
    EXPECT_FALSE(placement.multiplePending || placement.placementActive);
    EXPECT_TRUE(IsDefined(L"DOOR")) << "an insertion has ended: the definition stays";
    EXPECT_EQ(sent.size(), 2u);
}

TEST_F(ReactorTest, ExplodeAndMultipleInsertAlternate) {
    placement.explodePending = placement.multiplePending = true;
    reactor.commandEnded(L"-INSERT");
    reactor.commandEnded(L"EXPLODE");
    reactor.commandEnded(L"-INSERT");
    EXPECT_THAT(Sent(), ElementsAre(kExplode, L"again\n", kExplode));
    EXPECT_TRUE(placement.explodePending && placement.multiplePending);
}

TEST_F(ReactorTest, RepeatReopensTheBrowser) {
    placement.relaunchPending = true;
    reactor.commandEnded(L"-XREF");
    EXPECT_THAT(Sent(), ElementsAre(kRelaunch));
    EXPECT_FALSE(placement.relaunchPending || placement.placementActive);
    EXPECT_TRUE(placement.definitionSafe);
}

TEST_F(ReactorTest, ExplodeAndRepeatReopenAfterTheExplode) {
    placement.explodePending = placement.relaunchPending = true;
    reactor.commandEnded(L"-INSERT");
    reactor.commandEnded(L"EXPLODE");
    EXPECT_THAT(Sent(), ElementsAre(kExplode, kRelaunch));
}

TEST_F(ReactorTest, MultipleInsertAndRepeatReopenAtTheCancel) {
    placement.multiplePending = placement.relaunchPending = true;
    reactor.commandEnded(L"-INSERT");
    reactor.commandCancelled(L"-INSERT");
    EXPECT_THAT(Sent(), ElementsAre(L"again\n", kRelaunch));
}

TEST_F(ReactorTest, ACancelTakesAnUnusedDefinitionOut) {
    Define(L"DOOR");
    reactor.commandCancelled(L"-INSERT");
    EXPECT_FALSE(IsDefined(L"DOOR"));
    EXPECT_FALSE(placement.placementActive);
}

TEST_F(ReactorTest, AFailureLeavesTheDefinition) {
    Define(L"DOOR");
    placement.relaunchPending = true;
    reactor.commandFailed(L"-INSERT");
    EXPECT_TRUE(IsDefined(L"DOOR"));
    EXPECT_FALSE(placement.placementActive);
    EXPECT_THAT(Sent(), ElementsAre(kRelaunch));
}

TEST_F(ReactorTest, TheCancelOfAnyCommandEndsThePlacementAndLeavesFlagsThatItDoesNotName) {
    placement.explodePending = placement.multiplePending = true;
    reactor.commandCancelled(L"ZOOM");
    EXPECT_FALSE(placement.placementActive);
    EXPECT_TRUE(placement.explodePending && placement.multiplePending);
}

TEST_F(ReactorTest, ACancelledExplodeLowersTheRepetitionOnly) {
    placement.explodePending = placement.multiplePending = true;
    reactor.commandCancelled(L"EXPLODE");
    EXPECT_TRUE(placement.explodePending);
    EXPECT_FALSE(placement.multiplePending);
}

TEST_F(ReactorTest, TheEndOfTheCatalogueCommandRestoresAndEnds) {
    placement.amCatalogPending = placement.relaunchPending = true;
    reactor.commandEnded(L"AMCATALOG");
    EXPECT_TRUE(Restored());
    EXPECT_FALSE(placement.amCatalogPending || placement.placementActive);
    EXPECT_TRUE(placement.definitionSafe);
    EXPECT_THAT(Sent(), ElementsAre(kRelaunch));
}

TEST_F(ReactorTest, TheEndOfTheCatalogueCommandResumesWhereTheDashedOneIsAwaited) {
    placement.amCatalogPending = placement.amCatalogDashPending = placement.relaunchPending = true;
    reactor.commandEnded(L"AMCATALOG");
    EXPECT_THAT(shorts, IsEmpty());
    EXPECT_THAT(Sent(), ElementsAre(L"resume\n"));
    EXPECT_TRUE(placement.placementActive && placement.definitionSafe && placement.amCatalogDashPending);
    EXPECT_FALSE(placement.amCatalogPending);
}

TEST_F(ReactorTest, TheDashedCatalogueCommandAndTheNewOneEndAlike) {
    for (const wchar_t* command : {L"-AMCATALOG", L"AMNEW"}) {
        for (const auto notification : {&CmdLineReactor::commandEnded, &CmdLineReactor::commandCancelled}) {
            placement.placementActive = placement.relaunchPending = true;
            placement.definitionSafe = false;
            placement.amCatalogPending = placement.amCatalogDashPending = true;
            sent.clear();
            shorts.clear();
            (reactor.*notification)(command);
            EXPECT_TRUE(Restored());
            EXPECT_FALSE(placement.amCatalogDashPending || placement.placementActive);
            EXPECT_EQ(placement.amCatalogPending, std::wstring(command) != L"AMNEW");
            EXPECT_TRUE(placement.definitionSafe);
            EXPECT_THAT(Sent(), ElementsAre(kRelaunch));
        }
    }
}

TEST_F(ReactorTest, ACancelledCatalogueCommandEndsThePlacement) {
    Define(L"DOOR");
    placement.amCatalogPending = placement.relaunchPending = true;
    reactor.commandCancelled(L"AMCATALOG");
    EXPECT_TRUE(Restored());
    EXPECT_TRUE(IsDefined(L"DOOR"));
    EXPECT_FALSE(placement.placementActive);
    EXPECT_THAT(Sent(), ElementsAre(kRelaunch));
}

TEST_F(ReactorTest, ACancelledCatalogueCommandAheadOfTheDashedOneNeitherRestoresNorReopens) {
    placement.amCatalogPending = placement.amCatalogDashPending = placement.relaunchPending = true;
    reactor.commandCancelled(L"AMCATALOG");
    EXPECT_THAT(shorts, IsEmpty());
    EXPECT_THAT(sent, IsEmpty());
    EXPECT_FALSE(placement.placementActive);
    EXPECT_TRUE(placement.relaunchPending && placement.amCatalogDashPending);
}

TEST_F(ReactorTest, AFailureEndsTheDashedWaitByTheNameWithoutTheDash) {
    placement.amCatalogDashPending = true;
    reactor.commandFailed(L"AMCATALOG");
    EXPECT_TRUE(Restored());
    EXPECT_FALSE(placement.amCatalogDashPending);
    EXPECT_TRUE(placement.definitionSafe);

    placement.placementActive = placement.amCatalogDashPending = true;
    shorts.clear();
    reactor.commandFailed(L"-AMCATALOG");
    EXPECT_THAT(shorts, IsEmpty());
    EXPECT_TRUE(placement.amCatalogDashPending);
    EXPECT_FALSE(placement.placementActive);
}

TEST_F(ReactorTest, TheExplodeTextGoesByTheHostsExecutableInAnyCase) {
    EXPECT_STREQ(ExplodeText(L"/opt/host/tessaro-editor"), kExplode);
    EXPECT_STREQ(ExplodeText(L"/opt/aclt.exe/editor"), kExplode);
    EXPECT_STREQ(ExplodeText(L"/opt/host/aclt.exe"), L"._explode _l\n\n");
    EXPECT_STREQ(ExplodeText(L"C:\\Host\\ACLT.EXE"), L"._explode _l\n\n");
}
