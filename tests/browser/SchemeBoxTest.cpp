#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"

namespace {

using SchemeBox = Browser;

TEST_F(SchemeBox, ADirectoryWithoutASchemesNameHasNone) {
    Directory* const directory = AddFolder(L"Furniture", {"chair"});
    directory->schemeName.clear();
    Run([&](BlockDlg& dlg) {
        EXPECT_EQ(dlg.Controls().scheme->currentText(), "<None>");
        EXPECT_EQ(directory->schemeName, L"<None>");
    });
}

} // namespace
