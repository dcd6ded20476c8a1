#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/reading/Loader.h"

#include <QTest>

namespace {

struct QuickFindRules : Browser {
    QuickFindRules() {
        furniture = AddFolder(L"Furniture", {"armchair", "desk", "high chair"});
        electrical = AddFolder(L"Electrical", {"chairlift", "switch"});
        mechanical = AddFolder(L"Mechanical", {"bolt"});
    }
    static std::wstring Selected(BlockDlg& dlg) {
        return dlg.Controls().blockList->Rows().Text(dlg.SelectedBlockRow(), 0);
    }
    Directory *furniture, *electrical, *mechanical;
};

TEST_F(QuickFindRules, AChangeSelectsTheFirstMatchInDisplayOrderIgnoringCase) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().quickFind->setText("CHAIR");
        EXPECT_EQ(Selected(dlg), L"armchair");
        dlg.SortBlocks(0);
        EXPECT_TRUE(dlg.QuickFind(true));
        EXPECT_EQ(Selected(dlg), L"high chair");
    });
}

TEST_F(QuickFindRules, TheHostsWildCardsWork) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().quickFind->setText("h??h");
        EXPECT_EQ(Selected(dlg), L"high chair");
        dlg.Controls().quickFind->setText("");
        EXPECT_EQ(Selected(dlg), L"armchair") << "an empty text matches all";
    });
}

TEST_F(QuickFindRules, TheDescriptionIsSearchedToo) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        static_cast<Block*>(dlg.Controls().blockList->Rows().Data(1))->description = L"Oak Table";
        dlg.Controls().quickFind->setText("oak");
        EXPECT_EQ(Selected(dlg), L"desk");
    });
}

TEST_F(QuickFindRules, NothingIsSearchedUntilTheDirectoryIsLoaded) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        furniture->loaded = false;
        dlg.Controls().quickFind->setText("desk");
        EXPECT_EQ(dlg.SelectedBlockRow(), -1);
        EXPECT_FALSE(dlg.QuickFind(true));
        currentDirectory = nullptr;
        EXPECT_FALSE(dlg.QuickFind(true));
        currentDirectory = furniture;
    });
}

TEST_F(QuickFindRules, ATextWithoutAMatchLeavesTheSelection) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->SelectRow(1);
        dlg.Controls().quickFind->setText("unicorn");
        EXPECT_EQ(Selected(dlg), L"desk");
        EXPECT_EQ(currentDirectory.load(), furniture);
    });
}

TEST_F(QuickFindRules, TheSearchGoesOnInTheDirectoriesBehind) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().quickFind->setText("switch");
        EXPECT_EQ(currentDirectory.load(), electrical);
        EXPECT_EQ(dlg.Controls().directoryList->SelectedRow(), 1);
        EXPECT_EQ(electrical->selectedIndex, 1) << "the position in the stored order";
        ASSERT_TRUE(WaitFor([&] { return Selected(dlg) == L"switch"; }));
    });
}

TEST_F(QuickFindRules, ADirectoryAheadIsShownWithoutARowSelected) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.SelectDirectoryRow(2);
        ASSERT_TRUE(WaitFor([&] { return dlg.BlockRowCount() == 1; }));
        dlg.Controls().quickFind->setText("desk");
        EXPECT_EQ(currentDirectory.load(), furniture);
        EXPECT_EQ(furniture->selectedIndex, -1) << "its rows are not there yet";
        ASSERT_TRUE(WaitFor([&] { return dlg.BlockRowCount() == 3; }));
    });
}

TEST_F(QuickFindRules, TheSecondHalfEndsAheadOfTheCurrentDirectory) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().quickFind->setText("high");
        ASSERT_EQ(Selected(dlg), L"high chair");
        EXPECT_FALSE(dlg.QuickFind(false)) << "the current directory's blocks are not looked at";
        EXPECT_EQ(Selected(dlg), L"high chair");
        dlg.QuickFindNext();
        EXPECT_EQ(Selected(dlg), L"high chair") << "found again from the top of this directory";
        EXPECT_EQ(loader.pause, 0) << "without having the directory read again";
    });
}

TEST_F(QuickFindRules, ThePositionInTheStoredOrderIsNotTheRowAfterSorting) {
    electrical->sortStyle = 8;
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().quickFind->setText("switch");
        EXPECT_EQ(electrical->selectedIndex, 1);
        ASSERT_TRUE(WaitFor([&] { return dlg.SelectedBlockRow() == 1; }));
        EXPECT_EQ(Selected(dlg), L"chairlift") << "another row than the one that was found";
    });
}

TEST_F(QuickFindRules, WildCardAndRegularExpressionCharactersAreTheHostsOrThemselves) {
    folder.write(std::filesystem::path(furniture->path) / "x[1].dwg", "AC1015" + std::string(100, '\0'));
    folder.write(std::filesystem::path(furniture->path) / "a+b (c)$.dwg", "AC1015" + std::string(100, '\0'));
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        ASSERT_EQ(dlg.BlockRowCount(), 5);
        const std::pair<const char*, const wchar_t*> finds[]{
            {"a+b", L"a+b (c)$"}, {"(c)$", L"a+b (c)$"}, {"x`[1", L"x[1]"}, {"[d]esk", L"desk"}, {"b (", L"a+b (c)$"},
        };
        for (const auto& [text, name] : finds) {
            dlg.Controls().quickFind->setText(text);
            EXPECT_EQ(Selected(dlg), name) << text;
        }
        for (const char* text :
             {"[", "]", "~", "`", "[a-", "[~", "``", "\\", "#", "@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@@",
              "*?*?*?*?*?*?*?*?*?*?*?*?*?*?*?*?*?*?z", ",", "~,"}) {
            dlg.Controls().quickFind->setText(text);
            dlg.QuickFindNext();
            EXPECT_TRUE(dlg.isVisible()) << text;
        }
        dlg.Controls().quickFind->setText(QString(5000, '*'));
        dlg.Controls().quickFind->setText(QString(5000, '['));
        EXPECT_TRUE(dlg.isVisible());
    });
}

TEST_F(QuickFindRules, DirectoriesThatAreNotLoadedAreSkipped) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        electrical->loaded = false;
        dlg.Controls().quickFind->setText("switch");
        EXPECT_EQ(currentDirectory.load(), furniture);
    });
}

TEST_F(QuickFindRules, EnterGoesToTheNextMatchAndWrapsAround) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().quickFind->setText("chair");
        QTest::keyClick(dlg.Controls().quickFind, Qt::Key_Return);
        EXPECT_EQ(Selected(dlg), L"high chair");
        QTest::keyClick(dlg.Controls().quickFind, Qt::Key_Return);
        EXPECT_EQ(currentDirectory.load(), electrical) << "the rows ran out";
        EXPECT_EQ(dlg.placementCallback, nullptr) << "Enter here never inserts";
        ASSERT_TRUE(WaitFor([&] { return Selected(dlg) == L"chairlift"; }));
    });
}

TEST_F(QuickFindRules, WithOneDirectoryTheNextMatchAfterTheLastIsTheFirst) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        electrical->loaded = mechanical->loaded = false;
        dlg.Controls().quickFind->setText("desk");
        dlg.QuickFindNext();
        EXPECT_EQ(Selected(dlg), L"desk");
    });
}

} // namespace
