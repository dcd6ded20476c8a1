#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/Time.h"

#include <QHeaderView>
#include <QTest>

namespace {

struct BlockList : Browser {
    BlockList() { furniture = AddFolder(L"Furniture", {"chair", "desk", "lamp"}); }
    static std::wstring Names(BlockDlg& dlg) {
        std::wstring names;
        for (int row = 0; row < dlg.BlockRowCount(); ++row)
            names += dlg.Controls().blockList->Rows().Text(row, 0) + L" ";
        return names;
    }
    static Block* BlockAt(BlockDlg& dlg, int row) {
        return static_cast<Block*>(dlg.Controls().blockList->Rows().Data(row));
    }
    Directory* furniture;
};

TEST_F(BlockList, ThePaneTellsTheSelectedBlock) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        Block* chair = BlockAt(dlg, 0);
        chair->description = L"with <b>arms</b>";
        dlg.Controls().blockList->SelectRow(0);
        const std::wstring created = platform::FormatTime(chair->created, L"%x, %X");
        const std::wstring modified = platform::FormatTime(chair->modified, L"%x, %X");
        EXPECT_EQ(dlg.Controls().properties->text().toStdWString(),
                  L"Block: chair\nDesc: with <b>arms</b>\nFile Type: 2000\nSize: 211\nCreated: " + created +
                      L"\nModified: " + modified);
        EXPECT_EQ(dlg.Controls().properties->textFormat(), Qt::PlainText);
    });
}

TEST_F(BlockList, ABlockOfALateFileTypeCannotBePlaced) {
    host.setReleaseText(L"15.0");
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        BlockAt(dlg, 1)->fileType = 17;
        dlg.Controls().blockList->SelectRow(1);
        for (const char* name : {"Insert", "Xref/A", "Open"})
            EXPECT_FALSE(dlg.findChild<QWidget*>(name)->isEnabled()) << name;
        dlg.Controls().blockList->clearSelection();
        EXPECT_FALSE(dlg.Controls().insert->isEnabled()) << "only a new selection changes it";
        QTest::mouseDClick(dlg.Controls().blockList->viewport(), Qt::LeftButton, {},
                           dlg.Controls().blockList->RowBounds(1).center());
        EXPECT_FALSE(dlg.closing);
        const MenuAnswer menu;
        emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
        EXPECT_FALSE(menu.Texts().contains("Insert desk"));
        dlg.Controls().blockList->SelectRow(0);
        for (const char* name : {"Insert", "Xref/A", "Open"})
            EXPECT_TRUE(dlg.findChild<QWidget*>(name)->isEnabled()) << name;
    });
}

TEST_F(BlockList, APlacementButtonWithoutASelectionDoesNothing) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().insert->click();
        dlg.Controls().open->click();
        dlg.Controls().xref->click();
        EXPECT_EQ(dlg.placementCallback, nullptr);
        EXPECT_TRUE(closeArmed);
    });
}

TEST_F(BlockList, EachPlacementButtonNotesItsActionAndCloses) {
    const std::tuple<const char*, PlacementAction> buttons[]{
        {"Insert", InsertBlockWithRelaunch}, {"Xref/A", XrefBlock}, {"Open", OpenBlock}};
    for (const auto& [name, action] : buttons) {
        Run([&](BlockDlg& dlg) {
            ASSERT_TRUE(WaitIdle());
            dlg.Controls().blockList->SelectRow(1);
            dlg.findChild<QPushButton*>(name)->click();
            EXPECT_EQ(dlg.placementCallback, action) << name;
            EXPECT_EQ(dlg.placementBlock, BlockAt(dlg, 1));
            EXPECT_EQ(furniture->selectedIndex, 1);
            EXPECT_TRUE(WaitFor([] { return !closeArmed; }));
            dlg.placementCallback = nullptr;
        });
    }
}

TEST_F(BlockList, ADoubleClickInserts) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        const QPoint place = dlg.Controls().blockList->RowBounds(2).center();
        QTest::mouseClick(dlg.Controls().blockList->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(dlg.Controls().blockList->viewport(), Qt::LeftButton, {}, place);
        EXPECT_EQ(dlg.placementCallback, InsertBlockWithRelaunch);
        EXPECT_EQ(dlg.placementBlock, BlockAt(dlg, 2));
        EXPECT_TRUE(WaitFor([] { return !closeArmed; }));
        dlg.placementCallback = nullptr;
    });
}

TEST_F(BlockList, EnterAnywhereButInQuickFindInserts) {
    for (const char* name :
         {"blockList", "directoryList", "rotationCombo", "scaleCombo", "Close", "Repeat", "schemeCombo"})
        Run([&](BlockDlg& dlg) {
            ASSERT_TRUE(WaitIdle());
            dlg.Controls().blockList->SelectRow(0);
            auto* control = dlg.findChild<QWidget*>(name);
            QWidget* target = control->focusProxy() != nullptr ? control->focusProxy() : control;
            target->setFocus();
            QTest::keyClick(target, Qt::Key_Return);
            EXPECT_EQ(dlg.placementCallback, InsertBlockWithRelaunch) << name;
            dlg.placementCallback = nullptr;
        });
}

TEST_F(BlockList, SetViewSwitchesListAndButtonInOneStep) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        for (const int view : {0, 1, 2, 3}) {
            dlg.SetView(view);
            EXPECT_EQ(dlg.Controls().blockList->ViewBits(), view);
            EXPECT_EQ(dlg.Controls().viewButton->view, view);
        }
    });
}

TEST_F(BlockList, TheViewButtonCyclesAndPassesOverLargeWithoutLargePictures) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        std::vector<int> views;
        for (int click = 0; click < 4; ++click) {
            QTest::mouseClick(dlg.Controls().viewButton, Qt::LeftButton, {}, {5, 5});
            views.push_back(dlg.Controls().viewButton->view);
        }
        EXPECT_EQ(views, (std::vector{0, 1, 2, 3}));
        furniture->useLargeImages = false;
        QTest::mouseClick(dlg.Controls().viewButton, Qt::LeftButton, {}, {5, 5});
        EXPECT_EQ(dlg.Controls().viewButton->view, 1);
        currentDirectory = nullptr;
        QTest::mouseClick(dlg.Controls().viewButton, Qt::LeftButton, {}, {5, 5});
        EXPECT_EQ(dlg.Controls().viewButton->view, 1);
        currentDirectory = furniture;
        furniture->useLargeImages = true;
    });
}

TEST_F(BlockList, AClickOnAHeadingSorts) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        QHeaderView* header = dlg.Controls().blockList->Header();
        const auto click = [&](int column) {
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                              {header->sectionViewportPosition(column) + 8, header->height() / 2});
        };
        dlg.Controls().blockList->SelectRow(0);
        click(0);
        EXPECT_EQ(furniture->sortStyle, 8);
        EXPECT_EQ(Names(dlg), L"lamp desk chair ");
        EXPECT_EQ(dlg.SelectedBlockRow(), 2) << "the selection goes with its block";
        EXPECT_EQ(BlockAt(dlg, 0)->listIndex, 0);
        EXPECT_EQ(dlg.FindBlockRow(BlockAt(dlg, 2)), 2);
        EXPECT_EQ(header->sortIndicatorSection(), 0);
        EXPECT_EQ(header->sortIndicatorOrder(), Qt::DescendingOrder);
        click(4);
        EXPECT_EQ(furniture->sortStyle, 6);
        click(0);
        EXPECT_EQ(furniture->sortStyle, 1);
        EXPECT_EQ(Names(dlg), L"chair desk lamp ");
        EXPECT_EQ(header->sortIndicatorOrder(), Qt::AscendingOrder);
    });
}

TEST_F(BlockList, WithoutADirectoryAHeadingDoesNothing) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        currentDirectory = nullptr;
        dlg.SortBlocks(0);
        EXPECT_EQ(Names(dlg), L"chair desk lamp ");
        currentDirectory = furniture;
        EXPECT_EQ(furniture->sortStyle, 1);
    });
}

TEST_F(BlockList, TheMenuIsBuiltFromTheState) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->SelectRow(1);
        {
            const MenuAnswer menu;
            emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
            EXPECT_EQ(menu.Texts(), QStringList({"Insert desk",
                                                 "XRef desk",
                                                 "Open desk",
                                                 "-",
                                                 "Edit Description",
                                                 "-",
                                                 "Sort",
                                                 "Sort/Filename*",
                                                 "Sort/File Type",
                                                 "Sort/Description",
                                                 "Sort/Size",
                                                 "Sort/Last Modified Time",
                                                 "Sort/Creation Time",
                                                 "View",
                                                 "View/Large",
                                                 "View/Small",
                                                 "View/List",
                                                 "View/Report*",
                                                 "-",
                                                 "Refresh Directory"}));
        }
        dlg.Controls().blockList->clearSelection();
        furniture->useLargeImages = false;
        furniture->loaded = false;
        const MenuAnswer menu(QStringLiteral("View/Small"));
        emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
        EXPECT_FALSE(menu.Texts().contains("View/Large"));
        EXPECT_FALSE(menu.Texts().contains("Insert desk"));
        EXPECT_TRUE(menu.Texts().contains("[Refresh Directory]"));
        EXPECT_EQ(dlg.Controls().viewButton->view, 1);
        furniture->useLargeImages = true;
    });
}

TEST_F(BlockList, TheSortMenuCrossesTheTwoDates) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        {
            const MenuAnswer menu(QStringLiteral("Sort/Last Modified Time"));
            emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
        }
        EXPECT_EQ(furniture->sortStyle, 6) << "sorts by creation time";
        const MenuAnswer menu(QStringLiteral("Sort/Creation Time"));
        emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
        EXPECT_TRUE(menu.Texts().contains("Sort/Creation Time*"));
        EXPECT_FALSE(menu.Texts().contains("Sort/Last Modified Time*"));
        EXPECT_EQ(furniture->sortStyle, 5);
    });
}

TEST_F(BlockList, AnAmpersandInANameStandsForItself) {
    AddFolder(L"Special", {"nut & bolt"});
    Run([&](BlockDlg& dlg) {
        dlg.SelectDirectoryRow(1);
        ASSERT_TRUE(WaitFor([&] { return Names(dlg) == L"nut & bolt "; }));
        dlg.Controls().blockList->SelectRow(0);
        const MenuAnswer menu;
        emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
        EXPECT_TRUE(menu.Texts().contains("Insert nut && bolt"));
    });
}

TEST_F(BlockList, RefreshReadsTheFolderAnew) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        folder.write(std::filesystem::path(furniture->path) / "sofa.dwg", "AC1015" + std::string(200, '\0'));
        const MenuAnswer menu(QStringLiteral("Refresh Directory"));
        emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
        ASSERT_TRUE(WaitFor([&] { return Names(dlg) == L"chair desk lamp sofa "; }));
    });
}

TEST_F(BlockList, AmCatalogSwitchesTheDialogsOffAndPlacesNothing) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().amCatalog->click();
        EXPECT_EQ(dlg.placementCallback, nullptr);
        dlg.Controls().blockList->SelectRow(0);
        dlg.Controls().amCatalog->click();
        EXPECT_EQ(placement.savedCmdDia, 1);
        EXPECT_EQ(placement.savedFileDia, 1);
        EXPECT_EQ(std::get<int>(host.variables().get(L"CMDDIA").value()), 0);
        EXPECT_EQ(std::get<int>(host.variables().get(L"FILEDIA").value()), 0);
        ASSERT_NE(dlg.placementCallback, nullptr);
        EXPECT_EQ(dlg.placementCallback(dlg.placementBlock), 1);
    });
}

TEST_F(BlockList, TheCurtainTakesThePlaceOfTheList) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.ShowCurtain(true);
        EXPECT_FALSE(dlg.Controls().blockList->isVisible());
        EXPECT_TRUE(dlg.Controls().curtainList->isVisible());
        EXPECT_EQ(dlg.Controls().curtainList->geometry(), dlg.Controls().blockList->geometry());
        dlg.ShowCurtain(false);
        EXPECT_TRUE(dlg.Controls().blockList->isVisible());
        EXPECT_FALSE(dlg.Controls().curtainList->isVisible());
    });
}

} // namespace
