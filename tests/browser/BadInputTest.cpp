#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"

#include <filesystem>

namespace {

struct BadInput : Browser {
    /// A Directory at the end of the catalogue for a folder as it is.
    Directory* Add(const std::wstring& path) const {
        auto* directory = new Directory;
        directory->path = path;
        directory->cacheFile = (folder.path() / "odd_35.cache").wstring();
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

TEST_F(BadInput, NamesOfControlCharactersRightToLeftTextAndGreatLengthAreShownAndPlaced) {
    const std::string names[]{
        "tab\tand\nline",      "bell\a\x1B[31m",      "\u05D0\u05D1\u05D2 chair",
        "\u202Egnp.exe",       std::string(251, 'w'), "\U0001F6CB sofa",
        "e\u0301\u0301\u0301", "<img src=x>",         "50% & more",
    };
    const Directory* odd = AddFolder(L"Odd\tname\n\u202E", {});
    for (const std::string& name : names)
        folder.write(std::filesystem::path(odd->path) / (name + ".dwg"), "AC1015" + std::string(100, '\0'));
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        ASSERT_EQ(dlg.BlockRowCount(), 9);
        for (const int view : {0, 1, 2, 3}) {
            dlg.SetView(view);
            for (int row = 0; row < dlg.BlockRowCount(); ++row) {
                dlg.Controls().blockList->SelectRow(row);
                EXPECT_FALSE(dlg.grab().isNull());
            }
        }
        for (int row = 0; row < dlg.BlockRowCount(); ++row) {
            dlg.Controls().blockList->SelectRow(row);
            const Block* block = static_cast<Block*>(dlg.Controls().blockList->Rows().Data(row));
            EXPECT_TRUE(dlg.Controls().properties->text().startsWith("Block: " + QString::fromStdWString(block->name) +
                                                                     "\nDesc: "));
            const MenuAnswer menu;
            emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
            ASSERT_TRUE(menu.Texts().value(0).startsWith("Insert "));
            for (const QChar& character : menu.Texts().value(0))
                EXPECT_NE(character.category(), QChar::Other_Control);
        }
    });
}

TEST_F(BadInput, NamesThatAreTooLongForAnyFileAreShownFoundAndSorted) {
    Directory* const odd = Add((folder.path() / "nowhere").wstring());
    for (const std::size_t length : {260U, 3'000U}) {
        auto* const block = new Block;
        block->name = std::wstring(length, L'n') + std::to_wstring(length);
        block->description = std::wstring(length, L'd');
        odd->blocks.push_back(block);
    }
    odd->loaded = odd->imagesLoaded = true;
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitFor([&] { return dlg.BlockRowCount() == 2 && dlg.Controls().blockList->isVisible(); }));
        for (const int view : {0, 1, 2, 3}) {
            dlg.SetView(view);
            EXPECT_FALSE(dlg.grab().isNull());
        }
        dlg.SortBlocks(2);
        dlg.Controls().quickFind->setText("n3000");
        EXPECT_EQ(dlg.SelectedBlockRow(), 1);
        EXPECT_EQ(dlg.Controls().properties->text().indexOf("\nDesc: "), 7 + 3'004);
        const MenuAnswer menu;
        emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
        EXPECT_EQ(menu.Texts().value(0).size(), 7 + 3'004);
    });
}

TEST_F(BadInput, AFolderThatIsDeletedWhileItIsShownLeavesTheDialogUsable) {
    const Directory* odd = AddFolder(L"Odd", {"lamp", "desk"});
    AddFolder(L"Good", {"chair"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        ASSERT_EQ(dlg.BlockRowCount(), 2);
        std::filesystem::remove_all(odd->path);
        dlg.Controls().blockList->SelectRow(1);
        EXPECT_TRUE(dlg.Controls().insert->isEnabled()) << "found out only by the action that uses the file";
        dlg.SortBlocks(3);
        dlg.SetView(1);
        const MenuAnswer menu("Refresh Directory");
        emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
        ASSERT_TRUE(WaitIdle());
        dlg.SelectDirectoryRow(1);
        ASSERT_TRUE(WaitFor([&] { return dlg.Controls().blockList->Rows().Text(0, 0) == L"chair"; }));
        dlg.SelectDirectoryRow(0);
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->SelectRow(0);
        dlg.Controls().insert->click();
        dlg.placementCallback = nullptr;
    });
}

TEST_F(BadInput, AFolderThatIsMovedWhileItIsShownComesBackWhenItIsThereAgain) {
    const Directory* odd = AddFolder(L"Odd", {"lamp", "desk"});
    const std::filesystem::path away = std::filesystem::path(odd->path + L" away");
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        std::filesystem::rename(odd->path, away);
        {
            const MenuAnswer menu("Refresh Directory");
            emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
        }
        ASSERT_TRUE(WaitIdle());
        std::filesystem::rename(away, currentDirectory.load()->path);
        dlg.Controls().close->click();
    });
    Run([&](BlockDlg& dlg) { ASSERT_TRUE(WaitFor([&] { return dlg.BlockRowCount() == 2; })); });
}

TEST_F(BadInput, ListsOfAdministratorsOfAllKindsRestrictWhoIsNotOnThem) {
    host.addSupportFolder(folder.path().wstring());
    const std::string user = QString::fromStdWString(platform::UserName()).toStdString();
    // The section's buffer takes 8,190 characters with an end for each line.
    const auto full = [&](std::size_t spare) {
        return "[Users]\r\n" + std::string(8190 - user.size() - 1 + spare - 1, 'x') + "\r\n" + user + "\r\n";
    };
    const std::tuple<std::string, bool, const char*> lists[]{
        {"", false, "empty"},
        {"[Users]\n", false, "an empty section"},
        {std::string("\0\0\0", 3), false, "zeros"},
        {"[Users]\n" + user + "=1\n", false, "a key"},
        {"[Users]\n" + user, true, "the last line without an end"},
        {full(0), true, "as long as the buffer"},
        {full(2), false, "longer by more than the line's end"},
        {std::string(1 << 21, '['), false, "two megabytes of brackets"},
    };
    for (const auto& [text, may, what] : lists) {
        folder.write("tessaroadmin.ini", text);
        Run([&, may = may, what = what](BlockDlg& dlg) {
            EXPECT_EQ(dlg.MayChangeCatalogue(), may) << what;
            EXPECT_EQ(dlg.Controls().add->isEnabled(), may) << what;
        });
    }
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
