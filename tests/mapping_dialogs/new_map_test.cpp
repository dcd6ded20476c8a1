#include "tessaro/mapping/dialogs/NewMap.h"

#include "tests/database/database_support.h"
#include "tests/mapping_dialogs/DialogTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

struct NewMapTest : tests::DialogTest {
    NewMapTest() {
        tests::addLayer(drawing, L"Walls");
        tests::addLayer(drawing, L"DOORS");
    }

    /// Opens a dialog for a scheme of that type and carries the script out in it; gives the result of the dialog.
    int Run(NewMap& dialog, const std::function<void(NewMap&)>& script) {
        InNext<NewMap>(script);
        return dialog.DoModal();
    }
    /// OK on these texts, typed.
    int Enter(NewMap& dialog, const QString& from, const QString& to) {
        return Run(dialog, [&](NewMap& shown) {
            Type(*Find<QComboBox>(shown, "from"), from);
            Type(*Find<QComboBox>(shown, "to"), to);
            Press(shown, "OK");
        });
    }
    const std::vector<std::wstring> symbols{L"ZORA_S_LYR", L"ZORA_C_LYR", L"ZORA_H_LYR", L"ZORA_DIM_LYR",
                                            L"S_LYR",      L"C_LYR",      L"H_LYR",      L"DIM_LYR"};
    const std::vector<std::string> entries{
        "ZORA VEX3 Object Layer", "ZORA VEX3 Center Layer", "ZORA VEX3 Hidden Layer", "ZORA VEX3 Dimension Layer",
        "ZORA VEX Object Layer",  "ZORA VEX Center Layer",  "ZORA VEX Hidden Layer",  "ZORA VEX Dimension Layer"};
};

} // namespace

TEST_F(NewMapTest, HasItsTitleItsBoxesAndItsButtons) {
    NewMap dialog;
    Run(dialog, [&](NewMap& shown) {
        EXPECT_EQ(shown.windowTitle(), "Tessaro - New Map");
        EXPECT_TRUE(Find<QComboBox>(shown, "from")->isEditable());
        EXPECT_TRUE(Find<QComboBox>(shown, "to")->isEditable());
        EXPECT_EQ(Find<QCheckBox>(shown, "text")->text().remove('&'), "Text");
        EXPECT_EQ(Find<QCheckBox>(shown, "dimension")->text().remove('&'), "Dimension");
        EXPECT_EQ(Find<QCheckBox>(shown, "isAVariable")->text().remove('&'), "Is A Variable");
        EXPECT_EQ(Find<QAbstractButton>(shown, "color")->text().remove('&'), "Color");
        EXPECT_TRUE(Find<QCheckBox>(shown, "isAVariable")->isEnabled());
    });
}

TEST_F(NewMapTest, TheToBoxOffersTheVariablesThatHoldATextAndThenTheLayersInTableOrder) {
    SetSymbol(L"ZORA_C_LYR", std::wstring(L"Centre"));
    SetSymbol(L"S_LYR", std::wstring());
    SetSymbol(L"H_LYR", 5);
    NewMap some;
    Run(some, [&](NewMap& shown) {
        EXPECT_THAT(Entries(*Find<QComboBox>(shown, "to")),
                    ElementsAre("ZORA VEX3 Center Layer", "ZORA VEX Object Layer", "0", "Walls", "DOORS"));
        EXPECT_EQ(Find<QComboBox>(shown, "to")->currentText(), "");
    });
    for (const std::wstring& symbol : symbols)
        SetSymbol(symbol, std::wstring(L"x"));
    NewMap all;
    Run(all, [&](NewMap& shown) {
        std::vector<std::string> expected = entries;
        expected.insert(expected.end(), {"0", "Walls", "DOORS"});
        EXPECT_EQ(Entries(*Find<QComboBox>(shown, "to")), expected);
    });
    EXPECT_EQ(all.toChoices.size(), 11u);
}

TEST_F(NewMapTest, TheFromBoxOffersLayersOrLinetypesByTheKindOfSchemeAndNothingInAskMode) {
    AddLinetype(L"BYLAYER");
    AddLinetype(L"DASHED");
    AddLinetype(L"BYBLOCK");
    const std::vector<std::string> linetypes{"ByBlock", "ByLayer", "Continuous", "DASHED"};
    for (const bool askMode : {false, true})
        for (int type = 0; type <= 3; ++type) {
            NewMap dialog;
            dialog.schemeType = type;
            dialog.askMode = askMode;
            Run(dialog, [&](NewMap& shown) {
                std::vector<std::string> found = Entries(*Find<QComboBox>(shown, "from"));
                std::vector<std::string> expected;
                if (!askMode && type == 0)
                    expected = {"0", "Walls", "DOORS"};
                if (!askMode && type == 1) {
                    expected = linetypes;
                    std::sort(found.begin(), found.end());
                    std::sort(expected.begin(), expected.end());
                }
                EXPECT_EQ(found, expected) << "type " << type << ", ask mode " << askMode
                                           << ": the two words in upper case are left out, in other case they stay";
                EXPECT_EQ(Find<QComboBox>(shown, "from")->currentText(), "");
            });
        }
}

TEST_F(NewMapTest, ControlsAreShownAndEnabledByTheKindOfScheme) {
    struct Row {
        int type;
        bool askMode, fromEnabled, colorShown, colorEnabled, kindsShown, kindsEnabled;
    };
    const Row rows[] = {{0, false, true, false, true, true, false},  {0, true, false, false, true, true, false},
                        {1, false, true, false, true, true, true},   {1, true, false, false, true, true, false},
                        {2, false, false, true, true, true, false},  {2, true, false, true, false, true, false},
                        {3, false, true, false, true, false, false}, {3, true, false, false, true, false, false}};
    for (const Row& row : rows) {
        NewMap dialog;
        dialog.schemeType = row.type;
        dialog.askMode = row.askMode;
        Run(dialog, [&](NewMap& shown) {
            SCOPED_TRACE(testing::Message() << "type " << row.type << ", ask mode " << row.askMode);
            EXPECT_EQ(Find<QComboBox>(shown, "from")->isEnabled(), row.fromEnabled);
            EXPECT_EQ(Find<QAbstractButton>(shown, "color")->isVisible(), row.colorShown);
            EXPECT_EQ(Find<QAbstractButton>(shown, "color")->isEnabled(), row.colorEnabled);
            for (const char* const kind : {"text", "dimension"}) {
                EXPECT_EQ(Find<QCheckBox>(shown, kind)->isVisible(), row.kindsShown);
                EXPECT_EQ(Find<QCheckBox>(shown, kind)->isEnabled(), row.kindsEnabled);
            }
        });
    }
}

TEST_F(NewMapTest, TheFromBoxTakesTheRoomOfTheColorButtonForLayersAndLinetypesOnly) {
    for (int type = 0; type <= 3; ++type) {
        NewMap dialog;
        dialog.schemeType = type;
        Run(dialog, [&](NewMap& shown) {
            const QWidget* const from = Find<QComboBox>(shown, "from");
            const QWidget* const to = Find<QComboBox>(shown, "to");
            EXPECT_EQ(from->geometry().left(), to->geometry().left());
            if (type <= 1)
                EXPECT_EQ(from->geometry().right(), to->geometry().right()) << type;
            else
                EXPECT_LT(from->geometry().right(), to->geometry().right()) << type;
        });
    }
}

TEST_F(NewMapTest, ASpecialFromChecksItsBoxesAndDisablesFrom) {
    struct Row {
        const wchar_t* from;
        bool text, dimension, enabled;
    };
    for (const Row& row : {Row{L"*TEXT OBJECTS", true, false, false}, Row{L"*DIMENSION OBJECTS", false, true, false},
                           Row{L"*TEXT AND DIMENSION OBJECTS", true, true, false}, Row{L"*OTHER", false, false, true},
                           Row{L"TEXT OBJECTS", false, false, true}}) {
        NewMap dialog;
        dialog.schemeType = 1;
        dialog.fromText = row.from;
        Run(dialog, [&](NewMap& shown) {
            EXPECT_EQ(Find<QCheckBox>(shown, "text")->isChecked(), row.text);
            EXPECT_EQ(Find<QCheckBox>(shown, "dimension")->isChecked(), row.dimension);
            EXPECT_EQ(Find<QComboBox>(shown, "from")->isEnabled(), row.enabled);
            EXPECT_EQ(Find<QComboBox>(shown, "from")->currentText().toStdWString(), row.from);
        });
    }
}

TEST_F(NewMapTest, TextAndDimensionWriteTheSpecialEntriesAndTakeThemOffAgain) {
    NewMap dialog;
    dialog.schemeType = 1;
    Run(dialog, [&](NewMap& shown) {
        const QComboBox& from = *Find<QComboBox>(shown, "from");
        Type(*Find<QComboBox>(shown, "from"), "typed");
        Type(*Find<QComboBox>(shown, "to"), "kept");
        const auto expect = [&](const char* clicked, const char* text, bool enabled) {
            Click(shown, clicked);
            EXPECT_EQ(from.currentText(), text);
            EXPECT_EQ(from.isEnabled(), enabled);
            EXPECT_EQ(Find<QComboBox>(shown, "to")->currentText(), "kept");
        };
        expect("text", "*TEXT OBJECTS", false);
        expect("dimension", "*TEXT AND DIMENSION OBJECTS", false);
        expect("text", "*DIMENSION OBJECTS", false);
        expect("dimension", "", true);
        expect("dimension", "*DIMENSION OBJECTS", false);
        Press(shown, "OK");
    });
    EXPECT_EQ(dialog.fromText, L"*DIMENSION OBJECTS");
    EXPECT_EQ(dialog.toText, L"KEPT");
    EXPECT_EQ(dialog.dimensionChecked, 1);
    EXPECT_EQ(dialog.textChecked, 0);
}

TEST_F(NewMapTest, PickingAToEntryDisablesIsAVariableAndTypingEnablesIt) {
    NewMap dialog;
    Run(dialog, [&](NewMap& shown) {
        QComboBox& to = *Find<QComboBox>(shown, "to");
        const QCheckBox& variable = *Find<QCheckBox>(shown, "isAVariable");
        EXPECT_TRUE(variable.isEnabled());
        Pick(to, "Walls");
        EXPECT_EQ(to.currentText(), "Walls");
        EXPECT_FALSE(variable.isEnabled());
        QTest::keyClicks(to.lineEdit(), "2");
        EXPECT_EQ(to.currentText(), "Walls2");
        EXPECT_TRUE(variable.isEnabled());
        Pick(to, "0");
        EXPECT_FALSE(variable.isEnabled());
    });
}

TEST_F(NewMapTest, TheColorButtonStartsFromTheFieldAndWritesAlsoOnCancel) {
    struct Row {
        const wchar_t* from;
        int start;
        std::optional<int> picked;
        const char* shown;
    };
    for (const Row& row : {Row{L"", 7, 30, "30"}, Row{L"", 7, {}, "7"}, Row{L"0", 7, {}, "7"}, Row{L"-3", 7, {}, "7"},
                           Row{L"256", 7, {}, "7"}, Row{L"255", 255, {}, "255"}, Row{L"12", 12, 200, "200"},
                           Row{L"12x", 12, {}, "12"}, Row{L"red", 7, {}, "7"}, Row{L"300", 300, {}, "300"}}) {
        colourStarts.clear();
        colour = row.picked;
        NewMap dialog;
        dialog.schemeType = 2;
        dialog.fromText = row.from;
        Run(dialog, [&](NewMap& shown) {
            Click(shown, "color");
            EXPECT_EQ(Find<QComboBox>(shown, "from")->currentText(), row.shown);
        });
        EXPECT_THAT(colourStarts, ElementsAre(row.start));
    }
}

TEST_F(NewMapTest, InAskModeAColorSchemesFromShowsTheColourAndCanNotBeChanged) {
    NewMap dialog;
    dialog.schemeType = 2;
    dialog.askMode = true;
    dialog.fromText = L"42";
    const int result = Run(dialog, [&](NewMap& shown) {
        EXPECT_EQ(Find<QComboBox>(shown, "from")->currentText(), "42");
        Click(shown, "color");
        EXPECT_EQ(Find<QComboBox>(shown, "from")->currentText(), "42");
        Type(*Find<QComboBox>(shown, "to"), "red");
        Press(shown, "OK");
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(dialog.fromText, L"42");
    EXPECT_EQ(dialog.toText, L"RED");
    EXPECT_THAT(colourStarts, IsEmpty());
}

TEST_F(NewMapTest, TextsAreUpperCasedAndTrimmedWhetherTypedOrPicked) {
    NewMap typed;
    EXPECT_EQ(Enter(typed, "  a-wall ", " New layer  "), QDialog::Accepted);
    EXPECT_EQ(typed.fromText, L"A-WALL");
    EXPECT_EQ(typed.toText, L"NEW LAYER");
    EXPECT_EQ(typed.isVariable, 0);
    NewMap picked;
    Run(picked, [&](NewMap& shown) {
        Pick(*Find<QComboBox>(shown, "from"), "Walls");
        Pick(*Find<QComboBox>(shown, "to"), "Walls");
        Press(shown, "OK");
    });
    EXPECT_EQ(picked.fromText, L"WALLS");
    EXPECT_EQ(picked.toText, L"WALLS");
    EXPECT_EQ(picked.isVariable, 0);
}

TEST_F(NewMapTest, EachMessageKeepsTheDialogAndTheyComeInTheirOrder) {
    NewMap dialog;
    dialog.existingMaps = {L"TAKEN", L"lower"};
    const int result = Run(dialog, [&](NewMap& shown) {
        QComboBox &from = *Find<QComboBox>(shown, "from"), &to = *Find<QComboBox>(shown, "to");
        const auto expect = [&](const QString& fromText, const QString& toText, const wchar_t* message) {
            messages.clear();
            Type(from, fromText);
            Type(to, toText);
            Press(shown, "OK");
            EXPECT_THAT(messages, ElementsAre(Pair(L"Tessaro", message)));
            EXPECT_TRUE(shown.isVisible());
            EXPECT_EQ(from.currentText(), fromText.toUpper().trimmed()) << "written back";
            EXPECT_EQ(to.currentText(), toText.toUpper().trimmed());
        };
        expect("", "", L"The 'From' field must not be empty.");
        expect("  ", "layer", L"The 'From' field must not be empty.");
        expect(" taken", "", L"This map already exists.");
        expect("taken", "layer", L"This map already exists.");
        expect("free", "  ", L"The 'To' field must not be empty.");
        messages.clear();
        Type(from, "lower");
        Type(to, "layer");
        Press(shown, "OK");
        EXPECT_THAT(messages, IsEmpty()) << "keys are compared with case";
    });
    EXPECT_EQ(result, QDialog::Accepted);
}

TEST_F(NewMapTest, APickedVariableIsStoredByItsSymbol) {
    for (const std::wstring& symbol : symbols)
        SetSymbol(symbol, std::wstring(L"x"));
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        NewMap dialog;
        const int result = Run(dialog, [&](NewMap& shown) {
            Type(*Find<QComboBox>(shown, "from"), "A");
            Pick(*Find<QComboBox>(shown, "to"), QString::fromStdString(entries[i]));
            Press(shown, "OK");
        });
        EXPECT_EQ(result, QDialog::Accepted);
        EXPECT_EQ(dialog.toText, symbols[i]);
        EXPECT_EQ(dialog.isVariable, 1);
    }
}

TEST_F(NewMapTest, APickedLayerIsNoVariableThoughTheBoxWasChecked) {
    NewMap dialog;
    dialog.isVariable = 1;
    Run(dialog, [&](NewMap& shown) {
        EXPECT_TRUE(Find<QCheckBox>(shown, "isAVariable")->isChecked());
        Type(*Find<QComboBox>(shown, "from"), "A");
        Pick(*Find<QComboBox>(shown, "to"), "DOORS");
        Press(shown, "OK");
    });
    EXPECT_EQ(dialog.isVariable, 0);
    EXPECT_EQ(dialog.toText, L"DOORS");
}

TEST_F(NewMapTest, ATypedTextIsAVariableAsCheckedAndStaysAsItIs) {
    for (const bool checked : {false, true}) {
        NewMap dialog;
        Run(dialog, [&](NewMap& shown) {
            Type(*Find<QComboBox>(shown, "from"), "A");
            Type(*Find<QComboBox>(shown, "to"), "Zora Vex3 Object Layer");
            Find<QCheckBox>(shown, "isAVariable")->setChecked(checked);
            Press(shown, "OK");
        });
        EXPECT_EQ(dialog.toText, L"ZORA VEX3 OBJECT LAYER");
        EXPECT_EQ(dialog.isVariable, checked ? 1 : 0);
    }
}

TEST_F(NewMapTest, ALayerWhoseNameOnlyBeginsLikeAVariableKeepsItsName) {
    for (const wchar_t* const name : {L"Zora Vex", L"ZORA VEX9", L"ZORA VEX  Q", L"ZORA VEX X"}) {
        tests::addLayer(drawing, name);
        NewMap dialog;
        Run(dialog, [&](NewMap& shown) {
            Type(*Find<QComboBox>(shown, "from"), "A");
            Pick(*Find<QComboBox>(shown, "to"), QString::fromWCharArray(name));
            Press(shown, "OK");
        });
        EXPECT_EQ(dialog.toText, QString::fromWCharArray(name).toUpper().toStdWString());
        EXPECT_EQ(dialog.isVariable, 1) << "an undefined variable gives its own name";
    }
}

TEST_F(NewMapTest, ABlockNameMapTakesAnyTypedFrom) {
    NewMap dialog;
    dialog.schemeType = 3;
    EXPECT_EQ(Enter(dialog, "door*,window?", "openings"), QDialog::Accepted);
    EXPECT_EQ(dialog.fromText, L"DOOR*,WINDOW?");
}

TEST_F(NewMapTest, WithoutADrawingOnlyVariablesAreOffered) {
    SetSymbol(L"C_LYR", std::wstring(L"x"));
    host.documents().close(*host.documents().current());
    NewMap dialog;
    Run(dialog, [&](NewMap& shown) {
        EXPECT_THAT(Entries(*Find<QComboBox>(shown, "to")), ElementsAre("ZORA VEX Center Layer"));
        EXPECT_THAT(Entries(*Find<QComboBox>(shown, "from")), IsEmpty());
    });
}

TEST_F(NewMapTest, TheQuestionOfAPlacementGivesTheToTextOrNothing) {
    InNext<NewMap>([&](NewMap& shown) {
        EXPECT_TRUE(shown.askMode);
        EXPECT_EQ(shown.schemeType, 1);
        EXPECT_EQ(Find<QComboBox>(shown, "from")->currentText(), "DASHED");
        EXPECT_FALSE(Find<QComboBox>(shown, "from")->isEnabled());
        EXPECT_FALSE(Find<QCheckBox>(shown, "text")->isEnabled());
        Type(*Find<QComboBox>(shown, "to"), "s_lyr");
        Click(shown, "isAVariable");
        Press(shown, "OK");
    });
    const auto answer = AskForNewMap(1, L"DASHED");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->toText, L"S_LYR");
    EXPECT_TRUE(answer->isVariable);

    InNext<NewMap>([&](NewMap& shown) { Press(shown, "Cancel"); });
    EXPECT_FALSE(AskForNewMap(0, L"A"));
}
