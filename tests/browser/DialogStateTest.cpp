#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"

namespace {

struct DialogState : Browser {
    DialogState() {
        furniture = AddFolder(L"Furniture", {"chair", "desk"});
        electrical = AddFolder(L"Electrical", {"switch"});
    }
    /// Stores what the controls show with that text in the scale box.
    void StoreScale(BlockDlg& dlg, const char* text) {
        dlg.Controls().scale->setEditText(text);
        dlg.StoreDlgState();
    }
    Directory* furniture;
    Directory* electrical;
};

TEST_F(DialogState, TheScaleBoxDecidesTheModeIgnoringCase) {
    Run([&](BlockDlg& dlg) {
        drawing->setUserr4(7);
        StoreScale(dlg, "PROMPT");
        EXPECT_EQ(furniture->scaleMode, 2);
        StoreScale(dlg, "1:1");
        EXPECT_EQ(furniture->scaleMode, 0);
        StoreScale(dlg, "drawing");
        EXPECT_EQ(furniture->scaleMode, 1);
        EXPECT_EQ(drawing->userr4(), 7);
        StoreScale(dlg, "12.5");
        EXPECT_EQ(furniture->scaleMode, 3);
        EXPECT_EQ(drawing->userr4(), 12.5);
        StoreScale(dlg, "no number");
        EXPECT_EQ(furniture->scaleMode, 3);
        EXPECT_EQ(drawing->userr4(), 0);
    });
}

TEST_F(DialogState, ANumberInTheScaleBoxGoesToTheDrawingWhenTheDirectoryChanges) {
    Run([&](BlockDlg& dlg) {
        dlg.Controls().scale->setEditText("2.5");
        dlg.SelectDirectoryRow(1);
        EXPECT_EQ(drawing->userr4(), 2.5);
        EXPECT_EQ(furniture->scaleMode, 3);
        EXPECT_EQ(dlg.Controls().scale->currentText(), "1:1");
        drawing->setUserr4(4);
        dlg.SelectDirectoryRow(0);
        EXPECT_EQ(dlg.Controls().scale->currentText().toDouble(), 4) << "the number lives in the drawing";
    });
}

TEST_F(DialogState, TheRotationBoxIsPromptOrANumber) {
    Run([&](BlockDlg& dlg) {
        QComboBox& box = *dlg.Controls().rotation;
        EXPECT_EQ(box.currentText(), "0.000000");
        box.setEditText("45.5");
        dlg.StoreDlgState();
        EXPECT_EQ(furniture->rotationMode, 0);
        EXPECT_EQ(furniture->rotationAngle, 45.5);
        box.setEditText("prompt");
        dlg.StoreDlgState();
        EXPECT_EQ(furniture->rotationMode, 1);
        EXPECT_EQ(furniture->rotationAngle, 45.5) << "the angle stays";
        dlg.FillBlockControls(true);
        EXPECT_EQ(box.currentText(), "Prompt");
        box.setEditText("abc");
        dlg.StoreDlgState();
        EXPECT_EQ(furniture->rotationMode, 0);
        EXPECT_EQ(furniture->rotationAngle, 0);
    });
}

TEST_F(DialogState, ModesComeBackAsTheirWords) {
    Run([&](BlockDlg& dlg) {
        const char* const words[]{"1:1", "Drawing", "Prompt"};
        for (int mode = 0; mode < 3; ++mode) {
            furniture->scaleMode = mode;
            dlg.FillBlockControls(true);
            EXPECT_EQ(dlg.Controls().scale->currentText(), words[mode]);
        }
        furniture->rotationAngle = 12.5;
        dlg.FillBlockControls(true);
        EXPECT_EQ(dlg.Controls().rotation->currentText(), "12.500000");
    });
}

TEST_F(DialogState, CheckBoxesGoBothWays) {
    bool Directory::*const fields[]{&Directory::explode, &Directory::multipleInsert, &Directory::repeat,
                                    &Directory::localize};
    Run([&](BlockDlg& dlg) {
        QCheckBox* const boxes[]{dlg.Controls().explode, dlg.Controls().multipleInsert, dlg.Controls().repeat,
                                 dlg.Controls().localize};
        for (int which = 0; which < 4; ++which) {
            boxes[which]->setChecked(true);
            dlg.StoreDlgState();
            for (int other = 0; other < 4; ++other)
                EXPECT_EQ(furniture->*fields[other], other == which);
            boxes[which]->setChecked(false);
            dlg.FillBlockControls(true);
            EXPECT_TRUE(boxes[which]->isChecked());
            boxes[which]->setChecked(false);
        }
    });
}

TEST_F(DialogState, ASchemeThatIsMissingBecomesNone) {
    schemes.SetAt(L"Metric", new MapScheme);
    furniture->schemeName = L"Metric";
    electrical->schemeName = L"gone";
    Run([&](BlockDlg& dlg) {
        EXPECT_EQ(dlg.Controls().scheme->currentText(), "Metric");
        dlg.SelectDirectoryRow(1);
        EXPECT_EQ(dlg.Controls().scheme->currentText(), "<None>");
        EXPECT_EQ(electrical->schemeName, L"<None>");
        EXPECT_EQ(furniture->schemeName, L"Metric");
        dlg.Controls().scheme->setCurrentText("Metric");
        dlg.StoreDlgState();
        EXPECT_EQ(electrical->schemeName, L"Metric");
    });
}

TEST_F(DialogState, StoringTakesTopSelectionAndView) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.StoreDlgState();
        EXPECT_EQ(furniture->selectedIndex, -1);
        dlg.Controls().blockList->SelectRow(1);
        dlg.SetView(2);
        EXPECT_EQ(furniture->viewMode, 3) << "the view alone does not touch the mode";
        dlg.StoreDlgState();
        EXPECT_EQ(furniture->selectedIndex, 1);
        EXPECT_EQ(furniture->topIndex, 0);
        EXPECT_EQ(furniture->viewMode, 2);
    });
}

TEST_F(DialogState, WithoutADirectoryOrAWindowNothingIsStored) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        currentDirectory = nullptr;
        dlg.Controls().explode->setChecked(true);
        dlg.StoreDlgState();
        dlg.FillBlockControls(true);
        EXPECT_TRUE(dlg.Controls().explode->isChecked());
        currentDirectory = furniture;
        dlg.Controls().explode->setChecked(false);
    });
    BlockDlg unopened;
    furniture->explode = true;
    unopened.StoreDlgState();
    EXPECT_TRUE(furniture->explode);
}

TEST_F(DialogState, TheInternalDirectoryDisablesItsControls) {
    electrical->isInternal = true;
    Run([&](BlockDlg& dlg) {
        dlg.SelectDirectoryRow(1);
        for (const char* name : {"Open", "Xref/A", "EditDescrip.", "schemeCombo"})
            EXPECT_FALSE(dlg.findChild<QWidget*>(name)->isEnabled()) << name;
        dlg.SelectDirectoryRow(0);
        for (const char* name : {"Open", "Xref/A", "schemeCombo"})
            EXPECT_TRUE(dlg.findChild<QWidget*>(name)->isEnabled()) << name;
    });
}

} // namespace
