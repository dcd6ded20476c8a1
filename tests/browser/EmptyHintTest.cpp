// An empty catalogue says what to do.
#include "tests/browser/BrowserFixture.h"

#include "tessaro/browser/EmptyHint.h"

namespace {

struct EmptyCatalogue : Browser {
    static bool HintShows(BlockDlg& dlg) {
        const auto* const hint = dlg.findChild<EmptyHint*>("emptyHint");
        return hint != nullptr && hint->isVisible();
    }
};

TEST_F(EmptyCatalogue, TellsHowToAddAFolderOverTheWholeOfTheBlockList) {
    Run([](BlockDlg& dlg) {
        const auto* const hint = dlg.findChild<EmptyHint*>("emptyHint");
        ASSERT_NE(hint, nullptr);
        EXPECT_TRUE(hint->isVisible());
        EXPECT_TRUE(hint->text().contains("Press \"Add\""));
        EXPECT_TRUE(hint->text().contains("F1"));
        EXPECT_EQ(hint->size(), dlg.Controls().blockList->viewport()->size());
        EXPECT_TRUE(hint->testAttribute(Qt::WA_TransparentForMouseEvents));
    });
}

TEST_F(EmptyCatalogue, SaysNothingOnceThereIsADirectoryEvenAnEmptyOne) {
    Run([](BlockDlg& dlg) {
        ASSERT_TRUE(HintShows(dlg));
        dlg.InsertDirectoryRow(L"Added", nullptr);
        EXPECT_FALSE(HintShows(dlg));
        dlg.DeleteDirectoryRow(0);
        EXPECT_TRUE(HintShows(dlg));
    });
    AddFolder(L"Doors", {"door"});
    Run([](BlockDlg& dlg) { EXPECT_FALSE(HintShows(dlg)); });
}

} // namespace
