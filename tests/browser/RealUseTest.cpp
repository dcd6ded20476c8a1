// A working day with real folders.
#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <set>

namespace {

struct RealUse : Browser {
    RealUse() {
        const auto shared = tests::sharedFolder("drawings");
        if (shared.empty())
            return;
        for (const auto& entry : std::filesystem::directory_iterator(shared))
            if (entry.is_directory())
                folders.push_back(entry.path());
        std::sort(folders.begin(), folders.end());
        // A few of them, but where time is given for all.
        if (qgetenv("TESSARO_ALL_FOLDERS").isEmpty())
            std::erase_if(folders, [](const std::filesystem::path& place) {
                return !std::set<std::string>{"2000", "2013", "r10", "r14"}.contains(place.filename().string());
            });
    }
    static std::size_t DrawingsIn(const std::filesystem::path& place) {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(place))
            count += entry.path().extension() == ".dwg" ? 1 : 0;
        return count;
    }
    static std::vector<std::wstring> Cells(BlockDlg& dlg, int column) {
        std::vector<std::wstring> texts;
        for (int row = 0; row < dlg.BlockRowCount(); ++row)
            texts.push_back(dlg.Controls().blockList->Rows().Text(row, column));
        return texts;
    }
    static bool Ordered(const std::vector<std::wstring>& texts, int column, bool reversed) {
        return std::is_sorted(texts.begin(), texts.end(), [=](const std::wstring& a, const std::wstring& b) {
            const int order = column == 3 ? static_cast<int>(platform::ToReal(a) - platform::ToReal(b))
                                          : platform::CompareNoCase(a, b);
            return reversed ? order > 0 : order < 0;
        });
    }
    void AddAll(BlockDlg& dlg) {
        for (const auto& place : folders) {
            AnswerFolderPicker(QString::fromStdString(place.string()));
            dlg.Controls().add->click();
            ASSERT_EQ(currentDirectory.load()->path, place.wstring());
        }
        ASSERT_TRUE(WaitFor([] {
            return std::all_of(directories.begin(), directories.end(),
                               [](const Directory* each) { return each->loaded; });
        }));
        ASSERT_TRUE(WaitIdle());
    }
    void BrowseAndSort(BlockDlg& dlg) {
        QHeaderView& header = *dlg.Controls().blockList->Header();
        for (int row = 0; row < dlg.DirectoryRowCount(); ++row) {
            dlg.SelectDirectoryRow(row);
            const auto expected = static_cast<int>(DrawingsIn(folders[static_cast<std::size_t>(row)]));
            ASSERT_TRUE(WaitFor([&] {
                return dlg.BlockRowCount() == expected && dlg.Controls().blockList->isVisible();
            })) << folders[static_cast<std::size_t>(row)];
            ASSERT_TRUE(WaitIdle());
            for (int view = 0; view < 4; ++view) {
                QTest::mouseClick(dlg.Controls().viewButton, Qt::LeftButton, {}, {4, 4});
                EXPECT_FALSE(dlg.Controls().blockList->viewport()->grab().isNull());
            }
            ASSERT_EQ(dlg.Controls().viewButton->view, 3);
            const auto names = Cells(dlg, 0);
            const std::set<std::wstring> all(names.begin(), names.end());
            for (int column = 0; column < 6; ++column)
                for (int click = 0; click < 3; ++click) {
                    const QPoint heading(header.sectionViewportPosition(column) + 8, header.height() / 2);
                    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, heading);
                    const bool reversed = currentDirectory.load()->sortStyle >= 7;
                    if (column == 0 || column == 2 || column == 3) {
                        EXPECT_TRUE(Ordered(Cells(dlg, column), column, reversed)) << row << " column " << column;
                    }
                    const auto present = Cells(dlg, 0);
                    EXPECT_EQ(std::set<std::wstring>(present.begin(), present.end()), all);
                }
            for (int each = 0; each < dlg.BlockRowCount(); ++each) {
                const auto* block = static_cast<Block*>(dlg.Controls().blockList->Rows().Data(each));
                EXPECT_EQ(block->listIndex, each);
            }
        }
    }
    /// A drawing of the current folder, one that only a later folder has, and the one after it.
    void Search(BlockDlg& dlg) {
        dlg.SelectDirectoryRow(0);
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().quickFind->setText("HELIX");
        EXPECT_EQ(platform::ToLower(dlg.Controls().blockList->Rows().Text(dlg.SelectedBlockRow(), 0)), L"helix");
        QTest::keyClick(dlg.Controls().quickFind, Qt::Key_Return);
        ASSERT_TRUE(WaitIdle());
        EXPECT_NE(currentDirectory.load(), directories.front()) << "the next folder has one too";
        dlg.SelectDirectoryRow(0);
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().quickFind->setText("gh109*1");
        const Directory* const found = currentDirectory;
        EXPECT_NE(found, directories.front());
        const auto position = found->selectedIndex;
        ASSERT_TRUE(WaitIdle());
        ASSERT_TRUE(position >= 0 && position < static_cast<int>(found->blocks.size()));
        EXPECT_TRUE((*std::next(found->blocks.begin(), position))->name.starts_with(L"gh109"));
        EXPECT_EQ(dlg.SelectedBlockRow(), position);
    }
    std::vector<std::filesystem::path> folders;
};

TEST_F(RealUse, FoldersAreAddedBrowsedSortedSearchedReorderedRenamedDeletedAndOpenedAgain) {
    if (folders.empty())
        GTEST_SKIP() << "no shared drawings";
    std::vector<std::wstring> expected;
    Run([&](BlockDlg& dlg) {
        AddAll(dlg);
        BrowseAndSort(dlg);

        Search(dlg);

        dlg.SelectDirectoryRow(0);
        ASSERT_TRUE(WaitIdle());
        MyList2& list = *dlg.Controls().directoryList;
        dlg.activateWindow();
        list.setFocus();
        ASSERT_TRUE(WaitFor([&] { return list.hasFocus(); }));
        QTest::keyClick(&list, Qt::Key_F2);
        ASSERT_NE(qobject_cast<QLineEdit*>(QApplication::focusWidget()), nullptr);
        QTest::keyClicks(QApplication::focusWidget(), "Renamed");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        ASSERT_TRUE(WaitFor([] { return directories.front()->description == L"Renamed"; }));
        dlg.Controls().moveDown->click();
        dlg.Controls().moveDown->click();

        dlg.SelectDirectoryRow(3);
        ASSERT_TRUE(WaitIdle());
        const int before = dlg.DirectoryRowCount();
        const MessageAnswer answer("Yes");
        dlg.Controls().remove->click();
        ASSERT_TRUE(WaitFor([&] { return dlg.DirectoryRowCount() == before - 1; }));
        ASSERT_TRUE(WaitIdle());
        for (const Directory* directory : directories)
            expected.push_back(directory->path + L"=" + directory->description);
    });
    ASSERT_EQ(expected.size(), folders.size() - 1);
    EXPECT_EQ(expected[2], folders[0].wstring() + L"=Renamed") << "two places down";
    for (const auto& place : folders)
        EXPECT_GT(DrawingsIn(place), 0U) << "the folders are not touched";

    // Another run of the host: the catalogue comes from the files.
    currentDirectory = nullptr;
    for (const Directory* directory : directories)
        delete directory;
    directories.clear();
    LoadIni();
    std::vector<std::wstring> present;
    for (const Directory* directory : directories)
        present.push_back(directory->path + L"=" + directory->description);
    EXPECT_EQ(present, expected);
    Run([&](BlockDlg& dlg) {
        ASSERT_EQ(dlg.DirectoryRowCount(), static_cast<int>(expected.size()));
        dlg.SelectDirectoryRow(2);
        ASSERT_TRUE(WaitFor([&] { return dlg.BlockRowCount() == static_cast<int>(DrawingsIn(folders[0])); }));
        EXPECT_EQ(currentDirectory.load()->sortStyle % 7, 5) << "sorted by the last column as it was left";
    });
}

} // namespace
