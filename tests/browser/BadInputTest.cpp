#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"

#include <filesystem>

namespace {

struct BadInput : Browser {
    /// A Directory at the end of the catalogue for a folder as it is.
    static Directory* Add(const std::wstring& path) {
        auto* directory = new Directory;
        directory->path = path;
        directory->description = L"Odd";
        directories.push_back(directory);
        return directory;
    }
    /// Shows the odd folder, then the good one, and expects the good one's block.
    void ExpectUsable() {
        Run([&](BlockDlg& dlg) {
            ASSERT_TRUE(WaitIdle());
            dlg.SelectDirectoryRow(0);
            ASSERT_TRUE(WaitIdle());
            inOdd = dlg.BlockRowCount();
            dlg.SelectDirectoryRow(1);
            ASSERT_TRUE(WaitFor([&] { return dlg.Controls().blockList->Rows().Text(0, 0) == L"chair"; }));
        });
    }
    int inOdd = -1;
};

TEST_F(BadInput, AFolderThatDoesNotExistStaysEmptyAndTheDialogUsable) {
    const Directory* odd = Add((folder.path() / "nowhere").wstring());
    AddFolder(L"Good", {"chair"});
    ExpectUsable();
    EXPECT_EQ(inOdd, 0);
    EXPECT_FALSE(odd->loaded);
}

TEST_F(BadInput, AFileInThePlaceOfAFolderStaysEmptyAndTheDialogUsable) {
    Add(folder.write("file", "no folder").wstring());
    AddFolder(L"Good", {"chair"});
    ExpectUsable();
    EXPECT_EQ(inOdd, 0);
}

TEST_F(BadInput, AFolderWithoutDrawingsStaysEmptyAndTheDialogUsable) {
    Add(folder.write("texts/readme.txt", "no drawing").parent_path().wstring());
    AddFolder(L"Good", {"chair"});
    ExpectUsable();
    EXPECT_EQ(inOdd, 0);
}

TEST_F(BadInput, DrawingsOfNoBytesOrOfRubbishAreListedAsUnknown) {
    const auto path = folder.write("odd/empty.dwg", "").parent_path();
    folder.write("odd/rubbish.dwg", std::string(3000, '\xFF'));
    folder.write("odd/short.dwg", "AC1015");
    folder.write("odd/wild.dwg", "AC1015" + std::string(400, '\xFF'));
    const Directory* odd = Add(path.wstring());
    AddFolder(L"Good", {"chair"});
    ExpectUsable();
    EXPECT_EQ(inOdd, 4);
    std::wstring types;
    for (const Block* block : odd->blocks)
        types += block->name + L"=" + FileTypeName(block->fileType) + L" ";
    EXPECT_EQ(types, L"empty=Unknwn rubbish=Unknwn short=2000 wild=2000 ");
}

TEST_F(BadInput, SettingsOfBinaryRubbishGiveAnEmptyCatalogueThatCanBeWorkedIn) {
    std::string rubbish;
    for (int byte = 0; byte < 20000; ++byte)
        rubbish += static_cast<char>((byte * 7919 + byte / 13) & 0xFF);
    iniPath = folder.write("tessaro35.ini", rubbish).wstring();
    LoadIni();
    EXPECT_TRUE(directories.empty());
    AddFolder(L"Good", {"chair"});
    Run([&](BlockDlg& dlg) {
        dlg.SelectDirectoryRow(0);
        ASSERT_TRUE(WaitFor([&] { return dlg.Controls().blockList->Rows().Text(0, 0) == L"chair"; }));
    });
}

} // namespace
