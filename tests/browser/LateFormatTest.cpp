// Drawings of later releases than the host reads.
#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"

#include <QTest>

namespace {

struct LateFormats : Browser {
    /// One drawing of each release in one folder, named by its version mark.
    LateFormats() {
        host.setReleaseText(L"15.0");
        all = AddFolder(L"All", {});
        for (const char* mark : {"AC1012", "AC1014", "AC1015", "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"})
            folder.write(std::filesystem::path(all->path) / (std::string(mark) + ".dwg"),
                         mark + std::string(300, '\0'));
    }
    Directory* all;
};

TEST_F(LateFormats, OfReleaseFifteenReadsUpToTwoThousand) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        ASSERT_EQ(dlg.BlockRowCount(), 8);
        EXPECT_EQ(dlg.maxFileType, 16);
        for (int row = 0; row < 8; ++row) {
            dlg.Controls().blockList->SelectRow(row);
            EXPECT_EQ(dlg.SelectedBlockRow(), row) << "it can be selected";
            // The last mark, AC1032, is known to no type: such a drawing counts as one of an unknown, early format.
            const bool readable = row <= 2 || row == 7;
            for (const QPushButton* button : {dlg.Controls().insert, dlg.Controls().xref, dlg.Controls().open})
                EXPECT_EQ(button->isEnabled(), readable) << row << " " << button->text().toStdString();
            const MenuAnswer menu;
            emit dlg.Controls().blockList->customContextMenuRequested({5, 5});
            EXPECT_EQ(dlg.Controls().editDescription->isEnabled(), row < 7) << "from R13 on";
            for (const char* entry : {"Insert ", "XRef ", "Open "})
                EXPECT_EQ(!menu.Texts().filter(entry).isEmpty(), readable) << row << entry;
        }
    });
}

TEST_F(LateFormats, NeitherADoubleClickNorEnterInsertsOne) {
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        MyList& list = *dlg.Controls().blockList;
        list.SelectRow(6);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, list.RowBounds(6).center());
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Return);
        QTest::keyClick(&list, Qt::Key_I, Qt::AltModifier);
        EXPECT_EQ(dlg.placementCallback, nullptr);
        EXPECT_TRUE(closeArmed);
    });
}

TEST_F(LateFormats, AButtonOnceDisabledStaysSoUntilANewSelectionInAnotherDirectory) {
    AddFolder(L"Old", {"chair"}, "AC1014");
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->SelectRow(6);
        dlg.SelectDirectoryRow(1);
        ASSERT_TRUE(WaitFor([&] { return dlg.Controls().blockList->Rows().Text(0, 0) == L"chair"; }));
        EXPECT_FALSE(dlg.Controls().insert->isEnabled()) << "a change of directory leaves Insert as it is";
        EXPECT_TRUE(dlg.Controls().open->isEnabled()) << "and enables the other two";
        EXPECT_TRUE(dlg.Controls().xref->isEnabled());
        dlg.Controls().blockList->SelectRow(0);
        EXPECT_TRUE(dlg.Controls().insert->isEnabled());
    });
}

} // namespace
