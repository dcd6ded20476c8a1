#include "tests/browser/BrowserFixture.h"

#include "tessaro/browser/DialogLayout.h"
#include "tessaro/browser/QtUserInterface.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/platform/File.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/UserInterface.h"
#include "tessaro/reading/Loader.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>

#include <thread>

namespace {

QStringList Items(const QComboBox& box) {
    QStringList items;
    for (int index = 0; index < box.count(); ++index)
        items << box.itemText(index);
    return items;
}

TEST_F(Browser, EveryControlStandsInItsRectangle) {
    Run([](BlockDlg& dlg) {
        const DialogUnits units(dlg.font());
        EXPECT_EQ(dlg.size(), QSize(units.X(520), units.Y(346)));
        EXPECT_EQ(dlg.minimumSize(), dlg.maximumSize()) << "the size is fixed";
        for (const auto& [name, rectangle] : ControlPlaces()) {
            const auto* control = dlg.findChild<QWidget*>(QString::fromLatin1(name), Qt::FindDirectChildrenOnly);
            ASSERT_NE(control, nullptr) << name;
            QRect expected = units.Pixels(rectangle);
            if (qobject_cast<const QComboBox*>(control) != nullptr)
                expected.setHeight(units.Pixels({0, rectangle.y(), 1, 14}).height());
            EXPECT_EQ(control->geometry(), expected) << name;
        }
    });
}

TEST_F(Browser, CaptionsAreThoseOfTheTableAndKeepThemWithTheirAltKeys) {
    Run([](BlockDlg& dlg) {
        const std::pair<const char*, const char*> captions[]{
            {"Preferences", "Preferences"},
            {"Close", "Close"},
            {"Schemes", "Schemes"},
            {"viewButton", "3"},
            {"Help", "Help"},
            {"Print", "Print"},
            {"EditDescrip.", "Edit Descrip."},
            {"Insert", "Insert"},
            {"Open", "Open"},
            {"Xref/A", "Xref/A"},
            {"AmCatalog", "AmCatalog"},
            {"Explode", "Explode"},
            {"MultipleInsert", "Multiple Insert"},
            {"Repeat", "Repeat"},
            {"Localize", "Localize"},
            {"Add", "Add"},
            {"Delete", "Delete"},
            {"MoveUp", "Move Up"},
            {"MoveDown", "Move Down"},
        };
        QStringList keys;
        for (const auto& [name, caption] : captions) {
            const auto* button = dlg.findChild<QAbstractButton*>(QString::fromLatin1(name));
            ASSERT_NE(button, nullptr) << name;
            EXPECT_EQ(button->text(), QString::fromLatin1(caption));
            const QString key = button->shortcut().toString();
            EXPECT_FALSE(!key.isEmpty() && keys.contains(key)) << name << " shares " << key.toStdString();
            keys << key;
        }
        EXPECT_EQ(dlg.findChild<QLabel*>("quickFindLabel")->text(), "Quick Find:");
        EXPECT_EQ(dlg.findChild<QLabel*>("scaleLabel")->text(), "Scale:");
        EXPECT_EQ(dlg.findChild<QLabel*>("rotationLabel")->text(), "Rotation:");
        EXPECT_EQ(dlg.findChild<QLabel*>("itemPropertiesLabel")->text(), "Item Properties");
        EXPECT_EQ(dlg.findChild<QLabel*>("properties")->text(), "No Block Selected");
    });
}

TEST_F(Browser, TheTitleIsVersionAndIniPath) {
    Run([](BlockDlg& dlg) {
        EXPECT_EQ(dlg.windowTitle().toStdWString(), L"3.9.10 - " + iniPath);
        EXPECT_TRUE(dlg.isModal());
    });
}

TEST_F(Browser, InsertIsTheOnlyDefaultButton) {
    Run([](BlockDlg& dlg) {
        for (const QPushButton* button : dlg.findChildren<QPushButton*>()) {
            EXPECT_EQ(button->isDefault(), button->objectName() == "Insert") << button->text().toStdString();
            EXPECT_FALSE(button->autoDefault()) << button->text().toStdString();
        }
    });
}

TEST_F(Browser, AmCatalogLocalizeAndTheCurtainStartHidden) {
    Run([](BlockDlg& dlg) {
        for (const char* name : {"AmCatalog", "Localize", "curtainList"})
            EXPECT_FALSE(dlg.findChild<QWidget*>(name)->isVisible()) << name;
        EXPECT_TRUE(dlg.Controls().blockList->isVisible());
    });
}

TEST_F(Browser, WithASelectedBlockEveryButtonIsEnabled) {
    AddFolder(L"Furniture", {"chair"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->SelectRow(0);
        for (const char* name : {"Preferences", "Schemes", "Print", "EditDescrip.", "Close", "Help", "Insert", "Open",
                                 "Xref/A", "Add", "Delete", "MoveUp", "schemeCombo"})
            EXPECT_TRUE(dlg.findChild<QWidget*>(name)->isEnabled()) << name;
    });
}

TEST_F(Browser, ListsHaveTheirColumnsAndTheSettingsWidths) {
    columnWidths = {141, 36, 151, 61, 106, 107};
    dirColumnWidths = {81, 41, 21};
    AddFolder(L"Furniture", {});
    Run([](BlockDlg& dlg) {
        const auto headings = [](const ListView& list) {
            QStringList texts;
            for (int column = 0; column < list.model()->columnCount(); ++column)
                texts << list.model()->headerData(column, Qt::Horizontal).toString();
            return texts;
        };
        EXPECT_EQ(headings(*dlg.Controls().directoryList), QStringList({"Library", "Count", "Status"}));
        EXPECT_EQ(headings(*dlg.Controls().blockList),
                  QStringList({"Block", "Rel", "Comments", "Size", "Created", "Modified"}));
        EXPECT_EQ(dlg.BlockColumnWidths(), columnWidths);
        EXPECT_EQ(dlg.DirectoryColumnWidths(), dirColumnWidths);
    });
}

TEST_F(Browser, ComboBoxesAreSortedAndHoldTheirItems) {
    schemes.SetAt(L"metric", new MapScheme);
    schemes.SetAt(L"Architecture", new MapScheme);
    drawing->setUserr4(2.5);
    AddFolder(L"Furniture", {});
    Run([](BlockDlg& dlg) {
        EXPECT_EQ(Items(*dlg.Controls().scheme), QStringList({"<None>", "Architecture", "metric"}));
        EXPECT_FALSE(dlg.Controls().scheme->isEditable());
        EXPECT_EQ(Items(*dlg.Controls().rotation), QStringList({"0", "180", "270", "90", "Prompt"}));
        EXPECT_TRUE(dlg.Controls().rotation->isEditable());
        const QStringList scales = Items(*dlg.Controls().scale);
        ASSERT_EQ(scales.size(), 4);
        EXPECT_EQ(scales[0], "1:1");
        EXPECT_TRUE(scales[1].startsWith("2.5"));
        EXPECT_EQ(scales.mid(2), QStringList({"Drawing", "Prompt"}));
        EXPECT_TRUE(dlg.Controls().scale->isEditable());
    });
}

TEST_F(Browser, OverlayXRefCaptionsTheXrefButton) {
    overlayXRef = 1;
    Run([](BlockDlg& dlg) {
        EXPECT_EQ(dlg.Controls().xref->text(), "XRef/O");
        EXPECT_EQ(dlg.Controls().xref->shortcut().toString(), "Alt+X");
        EXPECT_EQ(dlg.Controls().xref->objectName(), "Xref/A");
    });
}

TEST_F(Browser, TheHostsReleaseTellsTheHighestFileType) {
    host.setReleaseText(L"17.2s");
    Run([](BlockDlg& dlg) { EXPECT_EQ(dlg.maxFileType, 18); });
    host.setReleaseText(L"24.1s");
    Run([](BlockDlg& dlg) { EXPECT_EQ(dlg.maxFileType, 21); });
}

TEST_F(Browser, TheBackgroundOfTheHostGivesTheForeground) {
    host.setColours({0xC0C0C0, 0xFFFFFF});
    Run([](BlockDlg&) { EXPECT_EQ(foreColor.load(), Rgb{}); });
    host.setColours({0xC0C0C1, 0xFFFFFF});
    Run([](BlockDlg&) { EXPECT_EQ(foreColor.load(), (Rgb{255, 255, 255, 0})); });
}

TEST_F(Browser, AnOpenDialogIsKnownToTheModuleAndAClosedOneIsNot) {
    Run([](BlockDlg& dlg) {
        EXPECT_EQ(theBlockDlg.load(), &dlg);
        EXPECT_TRUE(dialogOpen);
        EXPECT_TRUE(closeArmed);
        EXPECT_FALSE(dlg.closing);
    });
    EXPECT_EQ(theBlockDlg.load(), nullptr);
    EXPECT_FALSE(dialogOpen);
    EXPECT_FALSE(closeArmed);
}

TEST_F(Browser, TheWorkerFillsBothLists) {
    const Directory* furniture = AddFolder(L"Furniture", {"chair", "desk", "lamp"});
    const Directory* empty = AddFolder(L"Electrical", {"switch"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        EXPECT_EQ(currentDirectory.load(), furniture) << "the first row is selected";
        const ListModel& rows = dlg.Controls().blockList->Rows();
        ASSERT_EQ(rows.RowCount(), 3);
        EXPECT_EQ(rows.Text(0, 0), L"chair");
        EXPECT_EQ(rows.Text(0, 1), L"2000");
        EXPECT_EQ(rows.Text(0, 3), L"211");
        EXPECT_FALSE(rows.Text(0, 4).empty());
        EXPECT_EQ(static_cast<Block*>(rows.Data(1)), *std::next(furniture->blocks.begin()));
        EXPECT_TRUE(dlg.Controls().blockList->isVisible());
        EXPECT_FALSE(dlg.Controls().curtainList->isVisible());
        ASSERT_TRUE(WaitFor([&] { return empty->loaded; }));
        const ListModel& list = dlg.Controls().directoryList->Rows();
        ASSERT_EQ(list.RowCount(), 2);
        EXPECT_EQ(list.Text(0, 0), L"Furniture");
        EXPECT_EQ(list.Text(0, 1), L"3");
        EXPECT_EQ(list.Text(0, 2), L"");
        EXPECT_EQ(list.Text(1, 1), L"1");
    });
}

TEST_F(Browser, SelectingADirectoryShowsItsBlocksAndEmptiesThePane) {
    const Directory* furniture = AddFolder(L"Furniture", {"chair", "desk"});
    const Directory* electrical = AddFolder(L"Electrical", {"switch"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->SelectRow(1);
        EXPECT_TRUE(dlg.Controls().properties->text().startsWith("Block: desk\n"));
        QTest::mouseClick(dlg.Controls().directoryList->viewport(), Qt::LeftButton, {},
                          dlg.Controls().directoryList->RowBounds(1).center());
        EXPECT_EQ(currentDirectory.load(), electrical);
        EXPECT_EQ(dlg.Controls().properties->text(), "");
        ASSERT_TRUE(WaitFor([&] { return dlg.Controls().blockList->Rows().Text(0, 0) == L"switch"; }));
        ASSERT_TRUE(WaitIdle());
        EXPECT_EQ(furniture->selectedIndex, 1);
        dlg.SelectDirectoryRow(0);
        ASSERT_TRUE(WaitFor([&] { return dlg.BlockRowCount() == 2 && dlg.SelectedBlockRow() == 1; }))
            << "the selection comes back";
    });
    EXPECT_EQ(currentDirectory.load(), furniture);
}

TEST_F(Browser, OpeningAgainComesBackToTheCurrentDirectoryWithItsState) {
    AddFolder(L"Furniture", {"chair"});
    Directory* electrical = AddFolder(L"Electrical", {"switch", "lamp"});
    currentDirectory = electrical;
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        EXPECT_EQ(dlg.Controls().directoryList->SelectedRow(), 1);
        dlg.SetView(1);
        dlg.SortBlocks(3);
        dlg.Controls().blockList->SelectRow(1);
        dlg.Controls().repeat->setChecked(true);
    });
    EXPECT_EQ(electrical->viewMode, 1);
    EXPECT_EQ(electrical->sortStyle, 4);
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        ASSERT_TRUE(WaitFor([&] { return dlg.SelectedBlockRow() == 1; }));
        EXPECT_EQ(dlg.Controls().viewButton->view, 1);
        EXPECT_EQ(dlg.Controls().blockList->ViewBits(), 1);
        EXPECT_TRUE(dlg.Controls().repeat->isChecked());
    });
}

TEST_F(Browser, EscapeTheCloseBoxAndCloseAllGoThroughTheCloseRequest) {
    const std::function<void(BlockDlg&)> ways[]{
        [](BlockDlg& dlg) { QTest::keyClick(&dlg, Qt::Key_Escape); },
        [](BlockDlg& dlg) { QTest::keyClick(dlg.Controls().quickFind, Qt::Key_Escape); },
        [](BlockDlg& dlg) { dlg.close(); },
        [](BlockDlg& dlg) { dlg.Controls().close->click(); },
    };
    for (const auto& way : ways) {
        bool stillThere = false;
        Run([&](BlockDlg& dlg) {
            way(dlg);
            stillThere = dlg.isVisible();
        });
        EXPECT_TRUE(stillThere) << "the window stays until the worker has stopped";
        EXPECT_FALSE(loader.quit);
    }
}

TEST_F(Browser, PressingCloseTwiceClosesOnce) {
    Run([](BlockDlg& dlg) {
        dlg.Controls().close->click();
        dlg.Controls().close->click();
        EXPECT_TRUE(WaitFor([] { return !closeArmed; }));
    });
    EXPECT_EQ(theBlockDlg.load(), nullptr);
    Run([](BlockDlg& dlg) { EXPECT_TRUE(dlg.Exists()); });
}

TEST_F(Browser, ClosingTakesTheWidthsAndSavesTheSettings) {
    AddFolder(L"Furniture", {"chair"});
    Run([](BlockDlg& dlg) {
        dlg.SetView(0);
        dlg.Controls().blockList->Header()->resizeSection(2, 321);
        dlg.Controls().directoryList->Header()->resizeSection(0, 99);
    });
    EXPECT_EQ(columnWidths[2], 321);
    EXPECT_EQ(dirColumnWidths[0], 99);
    EXPECT_TRUE(platform::FileExists(iniPath));
}

int placedAfterTheWindow = 0;

int NotePlacement(Block*) {
    placedAfterTheWindow = theBlockDlg == nullptr && QApplication::activeModalWidget() == nullptr ? 1 : 2;
    return 1;
}

TEST_F(Browser, ThePlacementRunsWhenTheWindowIsGone) {
    placedAfterTheWindow = 0;
    Run([](BlockDlg& dlg) { dlg.placementCallback = NotePlacement; });
    EXPECT_EQ(placedAfterTheWindow, 1);
}

TEST_F(Browser, ACommandOfAnotherIdDoesNotEndTheDialog) {
    Run([](BlockDlg& dlg) {
        dlg.PostCommand(269);
        QTest::qWait(5);
        EXPECT_TRUE(dlg.isVisible());
    });
}

TEST_F(Browser, AMessageOfAnotherThreadIsShownAsPlainText) {
    Run([](BlockDlg&) {
        const MessageAnswer answer(QStringLiteral("OK"));
        std::thread other([] { platform::MessageBox(L"<b>plain & simple</b>"); });
        EXPECT_TRUE(WaitFor([&] { return !answer.Text().isEmpty(); }));
        EXPECT_EQ(answer.Text(), "<b>plain & simple</b>");
        EXPECT_TRUE(WaitFor([] { return QApplication::activeModalWidget()->objectName() == "BlockDlg"; }));
        other.join();
    });
}

/// A folder picker that fails, and a record of what the user is told.
struct FailingPicker : QtUserInterface {
    explicit FailingPicker(std::function<void()> pickerFailure) : failure(std::move(pickerFailure)) {
        platform::SetUserInterface(this);
    }
    ~FailingPicker() override { platform::SetUserInterface(nullptr); }
    platform::MessageAnswer MessageBox(const std::wstring& text, const std::wstring&, platform::MessageButtons,
                                       platform::MessageIcon) override {
        told = text;
        return platform::MessageAnswer::Ok;
    }
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override {
        failure();
        return std::nullopt;
    }
    std::function<void()> failure;
    std::wstring told;
};

TEST_F(Browser, AFailureInAHandlerEndsWithItsMessage) {
    using platform::ArchiveException;
    using platform::FileException;
    const FileException file(FileException::accessDenied, L"chairs");
    const ArchiveException archive(ArchiveException::endOfFile, L"chairs");
    const std::pair<std::function<void()>, std::wstring> failures[]{
        {[&] { throw FileException(file); }, file.ErrorText()},
        {[&] { throw ArchiveException(archive); }, archive.ErrorText()},
        {[] { throw std::runtime_error("no room"); }, L"no room"},
    };
    for (const auto& [failure, text] : failures)
        Run([&](BlockDlg& dlg) {
            const FailingPicker picker(failure);
            dlg.Controls().add->click();
            EXPECT_EQ(picker.told, text);
            EXPECT_TRUE(dlg.isVisible()) << "the dialog stays usable";
        });
}

TEST_F(Browser, TheMainThreadsLoopServesOtherThreads) {
    Run([](BlockDlg&) {
        std::atomic<bool> done{false};
        std::thread other([&] {
            for (int call = 0; call < 100; ++call)
                platform::CallOnMainThread([] { EXPECT_TRUE(platform::IsMainThread()); });
            done = true;
        });
        EXPECT_TRUE(WaitFor([&] { return done.load(); }));
        other.join();
    });
}

TEST_F(Browser, AUserWhoIsNotOnTheListKeepsPlacingOnly) {
    host.addSupportFolder(folder.path().wstring());
    folder.write("tessaroadmin.ini", "[Users]\nnobody of that name\n");
    AddFolder(L"Furniture", {"chair"}, "AC1032");
    AddFolder(L"Electrical", {"switch"});
    Run([&](BlockDlg& dlg) {
        const auto expectRestricted = [&] {
            for (const char* name :
                 {"Preferences", "schemeCombo", "Schemes", "Add", "Delete", "MoveUp", "MoveDown", "EditDescrip."})
                EXPECT_FALSE(dlg.findChild<QWidget*>(name)->isEnabled()) << name;
        };
        ASSERT_TRUE(WaitIdle());
        expectRestricted();
        dlg.Controls().blockList->SelectRow(0);
        expectRestricted();
        EXPECT_TRUE(dlg.Controls().insert->isEnabled());
        dlg.SelectDirectoryRow(1);
        ASSERT_TRUE(WaitIdle());
        expectRestricted();
    });
    folder.write("tessaroadmin.ini",
                 "[Users]\nsomebody\n" + QString::fromStdWString(platform::UserName()).toUpper().toStdString() + "\n");
    Run([&](BlockDlg& dlg) {
        EXPECT_TRUE(dlg.MayChangeCatalogue()) << "the check is made anew at each opening";
        EXPECT_TRUE(dlg.Controls().add->isEnabled());
    });
}

} // namespace
