#include "tests/mapping_dialogs/SchemePrefsTest.h"

#include "tessaro/host/ModuleState.h"

#include <QGroupBox>

#include <memory>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using tests::SchemePrefsTest;

namespace {

std::vector<std::wstring> Names() {
    std::vector<std::wstring> names;
    for (const auto& [name, scheme] : schemes)
        names.push_back(name);
    return names;
}

} // namespace

TEST_F(SchemePrefsTest, HasItsTitleItsListsAndItsButtons) {
    Run([&] {
        EXPECT_EQ(shown->windowTitle(), "Tessaro - Layer Mapping Schemes");
        EXPECT_EQ(Schemes().headerItem()->text(0), "Scheme");
        EXPECT_EQ(Schemes().headerItem()->text(1), "Type");
        EXPECT_EQ(MapRows().headerItem()->text(0), "From");
        EXPECT_EQ(MapRows().headerItem()->text(1), "To");
        for (QTreeWidget* const list : {&Schemes(), &MapRows()}) {
            EXPECT_EQ(list->columnWidth(0), list->viewport()->width() / 2 - 10);
            EXPECT_EQ(list->columnWidth(1), list->viewport()->width() / 2 - 10);
            EXPECT_EQ(list->selectionBehavior(), QAbstractItemView::SelectRows);
        }
        const std::pair<const char*, const char*> captions[]{{"addScheme", "Add"},
                                                             {"deleteScheme", "Delete"},
                                                             {"copyScheme", "Copy"},
                                                             {"newMap", "New"},
                                                             {"deleteMap", "Delete"},
                                                             {"setDefaultToByLayer", "Set default to ByLayer"},
                                                             {"ignore", "Ignore"},
                                                             {"askForNewMap", "Ask for new map"},
                                                             {"defaultTo", "Default to:"},
                                                             {"isVariable", "Is Variable"},
                                                             {"close", "Close"}};
        for (const auto& [name, caption] : captions)
            EXPECT_EQ(Get<QAbstractButton>(name).text().remove('&'), caption);
        EXPECT_EQ(shown->findChild<QGroupBox*>()->title(), "Unknowns?");
    });
}

TEST_F(SchemePrefsTest, TheDefaultForUnknownsIsNeverShown) {
    AddScheme(L"Specific").unknownMode = 2;
    Run([&] {
        SelectRow(Schemes(), 0);
        EXPECT_FALSE(Get<QRadioButton>("defaultTo").isVisible());
        EXPECT_FALSE(Get<QLineEdit>("unknownValue").isVisible());
        EXPECT_FALSE(Get<QCheckBox>("isVariable").isVisible());
    });
}

TEST_F(SchemePrefsTest, OpensWithARowForEachSchemeAndTheDirectorysSelected) {
    AddScheme(L"Zebra", 3);
    AddScheme(L"apple", 0);
    AddScheme(L"Mango", 2);
    AddScheme(L"Apple", 1);
    directory.schemeName = L"Apple";
    Run([&] {
        EXPECT_THAT(Rows(Schemes()), ElementsAre("Zebra|BlockName->Layer", "apple|Layer->Layer", "Mango|Color->Layer",
                                                 "Apple|Linetype->Layer"));
        EXPECT_EQ(SelectedRow(Schemes()), 3);
        EXPECT_EQ(currentScheme, *schemes.Lookup(L"Apple"));
    });
    directory.schemeName = L"<None>";
    Run([&] {
        EXPECT_EQ(SelectedRow(Schemes()), -1);
        EXPECT_EQ(currentScheme, nullptr);
    });
    currentDirectory = nullptr;
    Run([&] { EXPECT_EQ(currentScheme, nullptr); });
}

TEST_F(SchemePrefsTest, SelectingASchemeShowsItsMapsAndSettings) {
    MapScheme& one = AddScheme(L"One");
    one.maps.SetAt(L"B", L"LAYER");
    one.maps.SetAt(L"A", L"S_LYR");
    one.variableMaps.SetAt(L"A", 1);
    one.variableMaps.SetAt(L"NOT THERE", 1);
    one.defaultToByLayer = false;
    one.unknownMode = 1;
    MapScheme& two = AddScheme(L"Two", 2);
    two.unknownMode = 2;
    two.unknownValue = L"REST";
    two.unknownIsVariable = true;
    AddScheme(L"Three", 3);
    Run([&] {
        SelectRow(Schemes(), 0);
        EXPECT_THAT(Rows(MapRows()), ElementsAre("B|LAYER", "A|Variable: S_LYR"));
        EXPECT_TRUE(Get<QRadioButton>("askForNewMap").isChecked());
        EXPECT_FALSE(Get<QCheckBox>("setDefaultToByLayer").isChecked());
        EXPECT_TRUE(Get<QCheckBox>("setDefaultToByLayer").isEnabled());
        EXPECT_FALSE(Get<QLineEdit>("unknownValue").isEnabled());
        EXPECT_FALSE(Get<QCheckBox>("isVariable").isEnabled());
        SelectRow(Schemes(), 1);
        EXPECT_THAT(Rows(MapRows()), IsEmpty());
        EXPECT_TRUE(Get<QRadioButton>("defaultTo").isChecked());
        EXPECT_TRUE(Get<QCheckBox>("setDefaultToByLayer").isChecked()) << "a new scheme resets to BYLAYER";
        EXPECT_TRUE(Get<QLineEdit>("unknownValue").isEnabled());
        EXPECT_TRUE(Get<QCheckBox>("isVariable").isEnabled());
        EXPECT_EQ(Get<QLineEdit>("unknownValue").text(), "REST");
        EXPECT_TRUE(Get<QCheckBox>("isVariable").isChecked());
        SelectRow(Schemes(), 2);
        EXPECT_TRUE(Get<QRadioButton>("ignore").isChecked());
        EXPECT_FALSE(Get<QCheckBox>("setDefaultToByLayer").isChecked()) << "moves no entities";
        EXPECT_FALSE(Get<QCheckBox>("setDefaultToByLayer").isEnabled());
        SelectRow(Schemes(), 0);
        EXPECT_TRUE(Get<QCheckBox>("setDefaultToByLayer").isEnabled());
    });
    EXPECT_EQ(two.unknownMode, 2) << "what is never shown is read back as it was";
    EXPECT_EQ(two.unknownValue, L"REST");
    EXPECT_TRUE(two.unknownIsVariable);
}

TEST_F(SchemePrefsTest, TheRadioButtonsEnableTheValueOfTheThird) {
    AddScheme(L"One");
    Run([&] {
        SelectRow(Schemes(), 0);
        for (const auto& [button, enabled] : {std::pair("defaultTo", true), std::pair("askForNewMap", false),
                                              std::pair("defaultTo", true), std::pair("ignore", false)}) {
            Click(*shown, button);
            EXPECT_EQ(Get<QLineEdit>("unknownValue").isEnabled(), enabled) << button;
            EXPECT_EQ(Get<QCheckBox>("isVariable").isEnabled(), enabled) << button;
        }
    });
}

TEST_F(SchemePrefsTest, TheRightHandSideIsStoredBeforeAnotherSelectionAndOnClose) {
    MapScheme &one = AddScheme(L"One"), &two = AddScheme(L"Two");
    const int result = Run([&] {
        SelectRow(Schemes(), 0);
        Click(*shown, "setDefaultToByLayer");
        Click(*shown, "askForNewMap");
        Get<QLineEdit>("unknownValue").setText("VALUE");
        Get<QCheckBox>("isVariable").setChecked(true);
        EXPECT_TRUE(one.defaultToByLayer) << "not before";
        SelectRow(Schemes(), 1);
        EXPECT_FALSE(one.defaultToByLayer);
        EXPECT_EQ(one.unknownMode, 1);
        EXPECT_EQ(one.unknownValue, L"VALUE");
        EXPECT_TRUE(one.unknownIsVariable);
        Click(*shown, "defaultTo");
        Click(*shown, "close");
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(two.unknownMode, 2);
    EXPECT_TRUE(two.defaultToByLayer);
}

TEST_F(SchemePrefsTest, WithNoRadioButtonCheckedTheUnknownModeStays) {
    MapScheme& one = AddScheme(L"One");
    one.unknownMode = 1;
    Run([&] {
        SelectRow(Schemes(), 0);
        for (const char* const name : {"ignore", "askForNewMap", "defaultTo"}) {
            Get<QRadioButton>(name).setAutoExclusive(false);
            Get<QRadioButton>(name).setChecked(false);
        }
        Click(*shown, "setDefaultToByLayer");
        Click(*shown, "close");
    });
    EXPECT_EQ(one.unknownMode, 1);
    EXPECT_FALSE(one.defaultToByLayer);
}

TEST_F(SchemePrefsTest, EscapeLeavesTheLastEditsUnstoredAndWhatWasDoneDone) {
    MapScheme& one = AddScheme(L"One");
    const int result = Run([&] {
        SelectRow(Schemes(), 0);
        EnterMap("a", "b");
        Click(*shown, "newMap");
        Click(*shown, "askForNewMap");
        QTest::keyClick(shown, Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(one.unknownMode, 0);
    EXPECT_EQ(*one.maps.Lookup(L"A"), L"B");
}

TEST_F(SchemePrefsTest, ABlockNameSchemeStoresTheUncheckedBox) {
    MapScheme& blocks = AddScheme(L"Blocks", 3);
    Run([&] {
        SelectRow(Schemes(), 0);
        Click(*shown, "close");
    });
    EXPECT_FALSE(blocks.defaultToByLayer);
}

TEST_F(SchemePrefsTest, ADoubleClickChoosesTheSchemeStoresAndCloses) {
    AddScheme(L"One");
    MapScheme& two = AddScheme(L"Two");
    directory.schemeName = L"One";
    const int result = Run([&] {
        SelectRow(Schemes(), 1);
        Click(*shown, "askForNewMap");
        DoubleClick(Schemes(), 1);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(directory.schemeName, L"Two");
    EXPECT_EQ(two.unknownMode, 1);
    currentDirectory = nullptr;
    EXPECT_EQ(Run([&] { DoubleClick(Schemes(), 0); }), QDialog::Accepted);
}

TEST_F(SchemePrefsTest, AddMakesASchemeWithTheDefaultsAndSelectsIt) {
    AddScheme(L"One");
    Run([&] {
        SelectRow(Schemes(), 0);
        NameScheme("addScheme", " New ", "color");
        EXPECT_THAT(Rows(Schemes()), ElementsAre("One|Layer->Layer", "New|Color->Layer"));
        EXPECT_EQ(SelectedRow(Schemes()), 1);
        EXPECT_EQ(currentScheme, *schemes.Lookup(L"New"));
        EXPECT_TRUE(Get<QCheckBox>("setDefaultToByLayer").isChecked());
        EXPECT_TRUE(Get<QRadioButton>("ignore").isChecked());
        InNext<SchemeType>([&](SchemeType& dialog) {
            Click(dialog, "layer");
            Type(*Find<QLineEdit>(dialog, "name"), "ONE");
            Press(dialog, "OK");
            Press(dialog, "Cancel");
        });
        Click(*shown, "addScheme");
        EXPECT_EQ(schemes.size(), 2u) << "cancel changes nothing";
    });
    EXPECT_THAT(messages, ElementsAre(Pair(L"New Scheme", L"Scheme already defined.")));
    const MapScheme& made = **schemes.Lookup(L"New");
    EXPECT_EQ(made.schemeType, 2);
    EXPECT_EQ(made.unknownMode, 0);
    EXPECT_TRUE(made.defaultToByLayer);
}

TEST_F(SchemePrefsTest, DeletingSelectsTheRowAboveOrTheNextOne) {
    struct Row {
        int deleted, selected;
        std::vector<std::wstring> left;
    };
    for (const Row& row : {Row{0, 0, {L"Two", L"Three"}}, Row{1, 0, {L"One", L"Three"}}, Row{2, 1, {L"One", L"Two"}}}) {
        DeleteSchemes();
        for (const wchar_t* const name : {L"One", L"Two", L"Three"})
            AddScheme(name);
        Run([&] {
            SelectRow(Schemes(), row.deleted);
            Click(*shown, "deleteScheme");
            EXPECT_EQ(Schemes().topLevelItemCount(), 2);
            EXPECT_EQ(SelectedRow(Schemes()), row.selected);
            EXPECT_EQ(currentScheme, *schemes.Lookup(row.left[static_cast<std::size_t>(row.selected)]));
        });
        EXPECT_EQ(Names(), row.left);
    }
    EXPECT_THAT(messages, IsEmpty()) << "without a question";
}

TEST_F(SchemePrefsTest, WithTheLastSchemeDeletedNewDoesNothingTillAnotherIsAdded) {
    AddScheme(L"One").maps.SetAt(L"A", L"B");
    Run([&] {
        SelectRow(Schemes(), 0);
        Click(*shown, "deleteScheme");
        EXPECT_THAT(Rows(Schemes()), IsEmpty());
        EXPECT_THAT(Rows(MapRows()), IsEmpty());
        EXPECT_EQ(currentScheme, nullptr);
        EXPECT_TRUE(schemes.empty());
        WithoutDialog([&] { Click(*shown, "newMap"); });
        WithoutDialog([&] { Click(*shown, "copyScheme"); });
        Click(*shown, "deleteScheme");
        Click(*shown, "deleteMap");
        NameScheme("addScheme", "Two", "layer");
        EnterMap("a", "b");
        Click(*shown, "newMap");
        EXPECT_THAT(Rows(MapRows()), ElementsAre("A|B"));
        Click(*shown, "close");
    });
}

TEST_F(SchemePrefsTest, WithNothingSelectedNoButtonDoesAnything) {
    AddScheme(L"One");
    Run([&] {
        for (const char* const name : {"newMap", "copyScheme", "deleteScheme", "deleteMap"})
            WithoutDialog([&] { Click(*shown, name); });
        Click(*shown, "setDefaultToByLayer");
        Click(*shown, "close");
    });
    EXPECT_EQ(schemes.size(), 1u);
    EXPECT_TRUE((*schemes.Lookup(L"One"))->defaultToByLayer);
}

TEST_F(SchemePrefsTest, ACopyHasAllThatTheSchemeHasUnderTheTypedName) {
    MapScheme& one = AddScheme(L"One", 1);
    one.unknownMode = 2;
    one.unknownValue = L"REST";
    one.unknownIsVariable = true;
    one.defaultToByLayer = false;
    one.maps.SetAt(L"A", L"S_LYR");
    one.maps.SetAt(L"B", L"LAYER");
    one.variableMaps.SetAt(L"A", 1);
    AddScheme(L"Two");
    Run([&] {
        SelectRow(Schemes(), 0);
        InNext<SchemeType>([&](SchemeType& dialog) {
            EXPECT_TRUE(dialog.typeLocked);
            EXPECT_EQ(dialog.typeIndex, 1);
            EXPECT_THAT(dialog.existingNames, IsEmpty());
            Type(*Find<QLineEdit>(dialog, "name"), "Copy");
            Press(dialog, "OK");
        });
        Click(*shown, "copyScheme");
        EXPECT_EQ(Rows(Schemes()).back(), "Copy|Linetype->Layer");
        EXPECT_EQ(SelectedRow(Schemes()), 2);
        EXPECT_THAT(Rows(MapRows()), ElementsAre("A|Variable: S_LYR", "B|LAYER"));
    });
    const MapScheme& copy = **schemes.Lookup(L"Copy");
    EXPECT_NE(&copy, &one);
    EXPECT_EQ(copy.schemeType, 1);
    EXPECT_EQ(copy.unknownMode, 2);
    EXPECT_EQ(copy.unknownValue, L"REST");
    EXPECT_TRUE(copy.unknownIsVariable);
    EXPECT_FALSE(copy.defaultToByLayer);
    EXPECT_EQ(copy.maps.size(), 2u);
    EXPECT_NE(copy.variableMaps.Lookup(L"A"), nullptr);
}

TEST_F(SchemePrefsTest, ACopyRefusesNoNameAndLeavesTheOldRecordUndeleted) {
    const std::unique_ptr<MapScheme> old(&AddScheme(L"One"));
    old->maps.SetAt(L"A", L"B");
    AddScheme(L"Two");
    Run([&] {
        SelectRow(Schemes(), 0);
        Click(*shown, "askForNewMap");
        NameScheme("copyScheme", "One");
        EXPECT_THAT(Rows(Schemes()), ElementsAre("One|Layer->Layer", "Two|Layer->Layer", "One|Layer->Layer"));
        EXPECT_EQ(old->unknownMode, 1) << "the old record took the settings on the right";
        EXPECT_EQ((*schemes.Lookup(L"One"))->unknownMode, 0) << "which came after the copy";
        EXPECT_NE(*schemes.Lookup(L"One"), old.get());
        // Both rows stand for the new record; with one of them the record goes.
        Click(*shown, "deleteScheme");
        EXPECT_THAT(Rows(Schemes()), ElementsAre("One|Layer->Layer", "Two|Layer->Layer"));
        EXPECT_EQ(schemes.Lookup(L"One"), nullptr);
        SelectRow(Schemes(), 0);
        EXPECT_EQ(currentScheme, nullptr);
        EXPECT_THAT(Rows(MapRows()), IsEmpty());
        Click(*shown, "deleteScheme");
        EXPECT_THAT(Rows(Schemes()), ElementsAre("Two|Layer->Layer"));
        Click(*shown, "close");
    });
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Two"}));
}

TEST_F(SchemePrefsTest, DeletingOneOfTwoRowsOfARecordWhileTheOtherBecomesSelectedLeavesNoScheme) {
    const std::unique_ptr<MapScheme> old(&AddScheme(L"One"));
    Run([&] {
        SelectRow(Schemes(), 0);
        NameScheme("copyScheme", "One");
        EXPECT_EQ(SelectedRow(Schemes()), 1);
        Click(*shown, "deleteScheme");
        EXPECT_EQ(SelectedRow(Schemes()), 0);
        EXPECT_EQ(currentScheme, nullptr);
        WithoutDialog([&] { Click(*shown, "newMap"); });
        Click(*shown, "close");
    });
    EXPECT_TRUE(schemes.empty());
}
