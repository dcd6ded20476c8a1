// The list of a scheme's maps.
#include "tests/mapping_dialogs/SchemePrefsTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using tests::SchemePrefsTest;

TEST_F(SchemePrefsTest, NewEntersAMapAndRefusesAKeyThatIsThere) {
    MapScheme& one = AddScheme(L"One", 3);
    one.maps.SetAt(L"A", L"B");
    Run([&] {
        SelectRow(Schemes(), 0);
        InNext<NewMap>([&](NewMap& dialog) {
            EXPECT_EQ(dialog.schemeType, 3);
            EXPECT_FALSE(dialog.askMode);
            EXPECT_THAT(dialog.existingMaps, ElementsAre(L"A"));
            EXPECT_EQ(dialog.isVariable, 0);
            Type(*Find<QComboBox>(dialog, "from"), "a");
            Type(*Find<QComboBox>(dialog, "to"), "s_lyr");
            Click(dialog, "isAVariable");
            Press(dialog, "OK");
            Type(*Find<QComboBox>(dialog, "from"), "c*");
            Press(dialog, "OK");
        });
        Click(*shown, "newMap");
        EXPECT_THAT(Rows(MapRows()), ElementsAre("A|B", "C*|Variable: S_LYR"));
        InNext<NewMap>([&](NewMap& dialog) { Press(dialog, "Cancel"); });
        Click(*shown, "newMap");
        EXPECT_EQ(one.maps.size(), 2u);
    });
    EXPECT_THAT(messages, ElementsAre(Pair(L"Tessaro", L"This map already exists.")));
    EXPECT_EQ(*one.maps.Lookup(L"C*"), L"S_LYR");
    EXPECT_NE(one.variableMaps.Lookup(L"C*"), nullptr);
}

TEST_F(SchemePrefsTest, ADoubleClickEditsAMapAndAnEditedFromLeavesTheOldOne) {
    MapScheme& one = AddScheme(L"One");
    one.maps.SetAt(L"A", L"S_LYR");
    one.maps.SetAt(L"B", L"LAYER");
    one.variableMaps.SetAt(L"A", 1);
    Run([&] {
        SelectRow(Schemes(), 0);
        InNext<NewMap>([&](NewMap& dialog) {
            EXPECT_EQ(dialog.fromText, L"A");
            EXPECT_EQ(dialog.toText, L"S_LYR");
            EXPECT_EQ(dialog.isVariable, 1);
            EXPECT_THAT(dialog.existingMaps, IsEmpty());
            EXPECT_EQ(Find<QComboBox>(dialog, "to")->currentText(), "S_LYR");
            EXPECT_TRUE(Find<QCheckBox>(dialog, "isAVariable")->isChecked());
            Click(dialog, "isAVariable");
            Press(dialog, "OK");
        });
        DoubleClick(MapRows(), 0);
        EXPECT_THAT(Rows(MapRows()), ElementsAre("A|S_LYR", "B|LAYER"));
        EXPECT_EQ(one.variableMaps.Lookup(L"A"), nullptr);

        EnterMap("x", "y", true);
        DoubleClick(MapRows(), 1);
        EXPECT_THAT(Rows(MapRows()), ElementsAre("A|S_LYR", "X|Variable: Y"));
        EXPECT_EQ(*one.maps.Lookup(L"B"), L"LAYER");
        EXPECT_EQ(*one.maps.Lookup(L"X"), L"Y");
        InNext<NewMap>([&](NewMap& dialog) { Press(dialog, "Cancel"); });
        DoubleClick(MapRows(), 0);
        Click(*shown, "close");
    });
    Run([&] {
        SelectRow(Schemes(), 0);
        EXPECT_THAT(Rows(MapRows()), ElementsAre("A|S_LYR", "B|LAYER", "X|Variable: Y")) << "shown afresh";
    });
}

TEST_F(SchemePrefsTest, DeletingAMapSelectsTheRowAboveOrTheFirstOfWhatIsLeft) {
    MapScheme& one = AddScheme(L"One");
    for (const wchar_t* const from : {L"A", L"B", L"C"})
        one.maps.SetAt(from, L"X");
    Run([&] {
        SelectRow(Schemes(), 0);
        Click(*shown, "deleteMap");
        EXPECT_EQ(one.maps.size(), 3u) << "no row is selected";
        SelectRow(MapRows(), 2);
        Click(*shown, "deleteMap");
        EXPECT_EQ(SelectedRow(MapRows()), 1);
        SelectRow(MapRows(), 0);
        Click(*shown, "deleteMap");
        EXPECT_EQ(SelectedRow(MapRows()), 0);
        EXPECT_THAT(Rows(MapRows()), ElementsAre("B|X"));
        Click(*shown, "deleteMap");
        EXPECT_THAT(Rows(MapRows()), IsEmpty());
        Click(*shown, "deleteMap");
        EXPECT_TRUE(one.maps.empty());
    });
}

TEST_F(SchemePrefsTest, TheVariablesNoteOfADeletedMapStaysAndCountsForANewMapOfItsKey) {
    MapScheme& one = AddScheme(L"One");
    one.maps.SetAt(L"A", L"S_LYR");
    one.variableMaps.SetAt(L"A", 1);
    Run([&] {
        SelectRow(Schemes(), 0);
        SelectRow(MapRows(), 0);
        Click(*shown, "deleteMap");
        EXPECT_NE(one.variableMaps.Lookup(L"A"), nullptr);
        EnterMap("a", "layer");
        Click(*shown, "newMap");
        EXPECT_THAT(Rows(MapRows()), ElementsAre("A|LAYER"));
        EXPECT_NE(one.variableMaps.Lookup(L"A"), nullptr);
    });
}
