#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/mapping/dialogs/NewMap.h"
#include "tessaro/mapping/dialogs/SchemePrefs.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

namespace {

class SchemeBox : public Browser {
protected:
    SchemeBox() {
        for (const wchar_t* const name : {L"Walls", L"doors", L"Beams"})
            SetScheme(name, new MapScheme);
    }

    static QStringList Entries(BlockDlg& dlg) {
        QStringList entries;
        for (int i = 0; i < dlg.Controls().scheme->count(); ++i)
            entries << dlg.Controls().scheme->itemText(i);
        return entries;
    }
    /// Presses the button and carries the script out in the list of schemes, which is then closed.
    static void InSchemes(BlockDlg& dlg, const std::function<void(SchemePrefs&)>& script) {
        bool shown = false;
        QTimer::singleShot(0, &dlg, [&] {
            auto* const prefs = dynamic_cast<SchemePrefs*>(QApplication::activeModalWidget());
            ASSERT_NE(prefs, nullptr);
            shown = true;
            script(*prefs);
            prefs->close();
        });
        dlg.Controls().schemes->click();
        EXPECT_TRUE(shown);
    }
    static QTreeWidget& List(SchemePrefs& prefs) {
        return *prefs.findChild<QTreeWidget*>(QStringLiteral("schemeList"));
    }
};

TEST_F(SchemeBox, ADirectoryWithoutASchemesNameHasNone) {
    Directory* const directory = AddFolder(L"Furniture", {"chair"});
    directory->schemeName.clear();
    Run([&](BlockDlg& dlg) {
        EXPECT_EQ(dlg.Controls().scheme->currentText(), "<None>");
        EXPECT_EQ(directory->schemeName, L"<None>");
    });
}

TEST_F(SchemeBox, HoldsNoneAndTheNamesSortedAndShowsTheDirectorysOne) {
    Directory* const directory = AddFolder(L"Furniture", {"chair"});
    directory->schemeName = L"doors";
    Run([&](BlockDlg& dlg) {
        EXPECT_EQ(Entries(dlg), (QStringList{"<None>", "Beams", "doors", "Walls"}));
        EXPECT_EQ(dlg.Controls().scheme->currentText(), "doors");
        EXPECT_TRUE(dlg.Controls().schemes->isEnabled());
    });
}

TEST_F(SchemeBox, TheButtonStoresTheStateOfTheWindowFirst) {
    Directory* const directory = AddFolder(L"Furniture", {"chair"});
    Run([&](BlockDlg& dlg) {
        dlg.Controls().scheme->setCurrentText("Walls");
        dlg.Controls().explode->setChecked(true);
        InSchemes(dlg, [&](SchemePrefs& prefs) {
            EXPECT_EQ(directory->schemeName, L"Walls");
            EXPECT_TRUE(directory->explode);
            EXPECT_EQ(List(prefs).selectedItems().value(0)->text(0), "Walls") << "the list opens on it";
        });
    });
}

TEST_F(SchemeBox, IsFilledAnewWithTheDirectorysSchemeSelected) {
    Directory* const directory = AddFolder(L"Furniture", {"chair"});
    directory->schemeName = L"doors";
    Run([&](BlockDlg& dlg) {
        InSchemes(dlg, [](SchemePrefs&) { SetScheme(L"Ceiling", new MapScheme); });
        EXPECT_EQ(Entries(dlg), (QStringList{"<None>", "Beams", "Ceiling", "doors", "Walls"}));
        EXPECT_EQ(dlg.Controls().scheme->currentText(), "doors");
    });
}

TEST_F(SchemeBox, ADoubleClickInTheListChoosesTheScheme) {
    Directory* const directory = AddFolder(L"Furniture", {"chair"});
    Run([&](BlockDlg& dlg) {
        InSchemes(dlg, [](SchemePrefs& prefs) {
            const QPoint place = List(prefs).visualItemRect(List(prefs).topLevelItem(2)).center();
            QTest::mouseClick(List(prefs).viewport(), Qt::LeftButton, {}, place);
            QTest::mouseDClick(List(prefs).viewport(), Qt::LeftButton, {}, place);
        });
        EXPECT_EQ(dlg.Controls().scheme->currentText(), "Beams");
        EXPECT_EQ(directory->schemeName, L"Beams");
    });
}

TEST_F(SchemeBox, ADeletedSchemeShowsNoneAtOnceAndTheDirectoryTakesItWhenItIsStored) {
    Directory* const directory = AddFolder(L"Furniture", {"chair"});
    directory->schemeName = L"doors";
    Run([&](BlockDlg& dlg) {
        InSchemes(dlg, [](SchemePrefs& prefs) {
            prefs.findChild<QAbstractButton*>(QStringLiteral("deleteScheme"))->click();
        });
        EXPECT_EQ(Entries(dlg), (QStringList{"<None>", "Beams", "Walls"}));
        EXPECT_EQ(dlg.Controls().scheme->currentText(), "<None>");
        EXPECT_EQ(directory->schemeName, L"doors");
        dlg.StoreDlgState();
        EXPECT_EQ(directory->schemeName, L"<None>");
    });
}

TEST_F(SchemeBox, WithoutADirectoryTheButtonWorksAndNoneIsSelected) {
    Run([&](BlockDlg& dlg) {
        InSchemes(dlg, [](SchemePrefs& prefs) { EXPECT_TRUE(List(prefs).selectedItems().isEmpty()); });
        EXPECT_EQ(Entries(dlg), (QStringList{"<None>", "Beams", "doors", "Walls"}));
        EXPECT_EQ(dlg.Controls().scheme->currentText(), "<None>");
    });
}

/// Calls the script in the dialog for a new map as soon as it is up, however long that takes.
void WhenAsked(const std::function<void(NewMap&)>& script) {
    QTimer::singleShot(5, [script] {
        if (auto* const question = dynamic_cast<NewMap*>(QApplication::activeModalWidget()))
            script(*question);
        else
            WhenAsked(script);
    });
}

TEST_F(SchemeBox, AnUnknownNameIsAskedForOnceTheWindowIsGoneAndTheAnswerCounts) {
    Directory* const directory = AddFolder(L"Furniture", {"chair"});
    const std::wstring file = directory->path + L"/chair.dwg";
    {
        AcDbDatabase library;
        AcDbLayerTable* layers = nullptr;
        ASSERT_EQ(library.getLayerTable(layers, AcDb::kForWrite), eOk);
        auto* const layer = new AcDbLayerTableRecord;
        layer->setName(L"LEGS");
        ASSERT_EQ(layers->add(layer), eOk);
        layer->close();
        layers->close();
        AcDbBlockTable* blocks = nullptr;
        ASSERT_EQ(library.getBlockTable(blocks), eOk);
        AcDbSymbolTableRecord* space = nullptr;
        ASSERT_EQ(blocks->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite), eOk);
        auto* const line = new AcDbLine({0, 0, 0}, {1, 1, 0});
        ASSERT_EQ(dynamic_cast<AcDbBlockTableRecord*>(space)->appendAcDbEntity(line), eOk);
        EXPECT_EQ(line->setLayer(L"LEGS"), eOk);
        line->close();
        space->close();
        blocks->close();
        ASSERT_EQ(library.saveAs(file.c_str()), eOk);
    }
    MapScheme& scheme = **schemes.Lookup(L"Walls");
    scheme.unknownMode = 1;
    scheme.maps.SetAt(L"0", L"0");
    directory->schemeName = L"Walls";
    bool windowWasUp = true;
    WhenAsked([&](NewMap& question) {
        windowWasUp = BlockDlg::IsUp();
        EXPECT_EQ(question.fromText, L"LEGS");
        question.findChild<QComboBox*>(QStringLiteral("to"))->setEditText(QStringLiteral("a-furn"));
        QTest::keyClick(&question, Qt::Key_Return);
    });
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitFor([&] { return dlg.Controls().blockList->Rows().Text(0, 0) == L"chair"; }));
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->SelectRow(0);
        dlg.Controls().insert->click();
    });
    EXPECT_FALSE(windowWasUp);
    ASSERT_NE(scheme.maps.Lookup(L"LEGS"), nullptr);
    EXPECT_EQ(*scheme.maps.Lookup(L"LEGS"), L"A-FURN");
    AcDbBlockTable* blocks = nullptr;
    ASSERT_EQ(drawing->getBlockTable(blocks), eOk);
    EXPECT_TRUE(blocks->has(L"chair"));
    blocks->close();
    AcDbLayerTable* layers = nullptr;
    ASSERT_EQ(drawing->getLayerTable(layers), eOk);
    EXPECT_TRUE(layers->has(L"A-FURN"));
    EXPECT_FALSE(layers->has(L"LEGS"));
    layers->close();
}

} // namespace
