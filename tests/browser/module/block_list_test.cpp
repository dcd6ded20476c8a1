// The block list: rows, views, order, menu, search, late formats.
#include "tests/browser/module/LoadedModule.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

namespace {

/// Directory "Furniture": chair, desk, lamp and sofa, of rising size, changed in falling order; "Electrical": a switch.
class Blocks : public tests::LoadedModule {
protected:
    Blocks() {
        furniture = AddFolder("Furniture", {"chair", "desk", "lamp", "sofa"}, "AC1015", "SortStyle=None\n");
        int number = 0;
        for (const char* name : {"chair", "desk", "lamp", "sofa"}) {
            const auto file = folder.write(furniture / (std::string(name) + ".dwg"),
                                           "AC10" + std::string(number == 2 ? "14" : "15") +
                                               std::string(static_cast<std::size_t>(300 + 10 * number), '\0'));
            std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() -
                                                       std::chrono::hours(++number));
        }
    }
    /// Loads the module and opens the window, with the first directory's four blocks in it.
    void BrowseFour(const Script& script) {
        if (host == nullptr)
            Load();
        Browse([&](tests::Window& window) {
            ASSERT_TRUE(window.WaitLoaded(4));
            script(window);
        });
    }
    static QString Names(const tests::Window& window) { return window.Column(window.Blocks(), 0); }
    static QString MenuEntry(tests::Window& window, const QString& entry) {
        const MenuAnswer menu(entry);
        window.RightClick(window.Blocks());
        return menu.Texts().join(' ');
    }
    std::filesystem::path furniture;
};

TEST_F(Blocks, RowsTellNameReleaseSizeAndDates) {
    BrowseFour([](tests::Window& window) {
        const QAbstractItemView& list = window.Blocks();
        EXPECT_EQ(Names(window), "chair desk lamp sofa ");
        EXPECT_EQ(window.Column(list, 1), "2000 2000 R14 2000 ");
        EXPECT_EQ(window.Column(list, 3), "306 316 326 336 ");
        for (int row = 0; row < 4; ++row) {
            EXPECT_NE(window.Cell(list, row, 4), "");
            EXPECT_NE(window.Cell(list, row, 5), "");
        }
        QStringList headings;
        for (int column = 0; column < 6; ++column)
            headings << list.model()->headerData(column, Qt::Horizontal).toString();
        EXPECT_EQ(headings, QStringList({"Block", "Rel", "Comments", "Size", "Created", "Modified"}));
    });
}

TEST_F(Blocks, ASelectedRowFillsThePaneAndAnotherDirectoryEmptiesIt) {
    AddFolder("Electrical", {"switch"});
    BrowseFour([](tests::Window& window) {
        window.Click(window.Blocks(), 1);
        const QStringList lines = window.Properties().split('\n');
        ASSERT_EQ(lines.size(), 6);
        EXPECT_EQ(lines.mid(0, 4).join('|'), "Block: desk|Desc: |File Type: 2000|Size: 316");
        EXPECT_EQ(lines[4], "Created: " + window.Cell(window.Blocks(), 1, 4));
        EXPECT_EQ(lines[5], "Modified: " + window.Cell(window.Blocks(), 1, 5));
        window.Click(window.Directories(), 1);
        EXPECT_EQ(window.Properties(), "");
    });
}

TEST_F(Blocks, AHeadingSortsTheSecondClickReversesTheThirdSortsAgain) {
    BrowseFour([](tests::Window& window) {
        QAbstractItemView& list = window.Blocks();
        const QString rising = "chair desk lamp sofa ", falling = "sofa lamp desk chair ";
        for (const int column : {3, 0}) {
            window.ClickHeading(list, column);
            EXPECT_EQ(Names(window), rising) << "from no order, or another column's reversed one";
            window.ClickHeading(list, column);
            EXPECT_EQ(Names(window), falling);
            window.ClickHeading(list, column);
            EXPECT_EQ(Names(window), rising);
            window.ClickHeading(list, column);
        }
        window.ClickHeading(list, 5);
        EXPECT_EQ(Names(window), falling) << "the last one was changed first";
        window.ClickHeading(list, 1);
        EXPECT_TRUE(Names(window).startsWith("lamp ")) << "the earliest release";
        window.ClickHeading(list, 1);
        EXPECT_TRUE(Names(window).endsWith("lamp "));
        window.Click(list, 0);
        const QString selected = window.Cell(list, 0, 0);
        window.ClickHeading(list, 0);
        EXPECT_EQ(window.Cell(list, window.Selected(list), 0), selected) << "the selection goes with its row";
    });
    EXPECT_THAT(Settings(), testing::HasSubstr("sortstyle=Name\n"));
}

TEST_F(Blocks, TheViewButtonGoesThroughTheFourViews) {
    BrowseFour([](tests::Window& window) {
        for (const char* view : {"Large*", "Small*", "List*", "Report*"}) {
            window.Press("viewButton");
            EXPECT_TRUE(MenuEntry(window, {}).contains(QString("View/") + view)) << view;
            EXPECT_FALSE(window.Blocks().viewport()->grab().isNull());
        }
        window.Press("viewButton");
    });
    EXPECT_THAT(Settings(), testing::HasSubstr("view=0\n"));
    BrowseFour([](tests::Window& window) { EXPECT_TRUE(MenuEntry(window, {}).contains("View/Large*")); });
}

TEST_F(Blocks, WithoutLargePicturesThereIsNoLargeEntryAndTheButtonPassesItOver) {
    AddFolder("Small", {"one"}, "AC1015", "UseLargeImages=No\nView=3\n");
    BrowseFour([](tests::Window& window) {
        window.Click(window.Directories(), 1);
        ASSERT_TRUE(window.WaitLoaded(1));
        EXPECT_FALSE(MenuEntry(window, {}).contains("View/Large"));
        window.Press("viewButton");
        EXPECT_TRUE(MenuEntry(window, {}).contains("View/Small*"));
    });
}

TEST_F(Blocks, TheMenuFollowsSelectionRightsAndState) {
    BrowseFour([](tests::Window& window) {
        EXPECT_TRUE(MenuEntry(window, {}).startsWith("Edit Description - Sort Sort/Filename Sort/File Type"));
        window.Click(window.Blocks(), 2);
        EXPECT_EQ(MenuEntry(window, "Sort/Size"),
                  "Insert lamp XRef lamp Open lamp - Edit Description - Sort Sort/Filename Sort/File Type "
                  "Sort/Description Sort/Size Sort/Last Modified Time Sort/Creation Time View View/Large View/Small "
                  "View/List View/Report* - Refresh Directory");
        EXPECT_TRUE(MenuEntry(window, "Sort/Last Modified Time").contains("Sort/Size*"));
        EXPECT_TRUE(MenuEntry(window, "View/List").contains("Sort/Creation Time*")) << "the crossing of the dates";
        EXPECT_TRUE(MenuEntry(window, {}).contains("View/List*"));
    });
}

TEST_F(Blocks, RefreshReadsTheFolderAnew) {
    BrowseFour([&](tests::Window& window) {
        folder.write(furniture / "stool.dwg", "AC1015" + std::string(200, '\0'));
        MenuEntry(window, "Refresh Directory");
        EXPECT_TRUE(window.WaitLoaded(5));
    });
}

TEST_F(Blocks, QuickFindSearchesAllDirectoriesByTheHostsPatterns) {
    AddFolder("Electrical", {"socket", "switch"});
    AddFolder("Late", {"chaise"});
    BrowseFour([](tests::Window& window) {
        QAbstractItemView& list = window.Blocks();
        const auto find = [&](const QString& text) { window.QuickFind().setText(text); };
        find("AM");
        EXPECT_EQ(window.Selected(list), 2) << "lamp";
        find("s#,[dx]esk");
        EXPECT_EQ(window.Selected(list), 1);
        find("zebra");
        EXPECT_EQ(window.Selected(list), 1) << "nothing matches: the selection stays where the last match left it";
        find("cha");
        EXPECT_EQ(window.Selected(list), 0);
        QTest::keyClick(&window.QuickFind(), Qt::Key_Return);
        EXPECT_EQ(window.Selected(window.Directories()), 2) << "no other one here: the next directory that has one";
        ASSERT_TRUE(window.WaitLoaded(1));
        EXPECT_EQ(window.Cell(list, window.Selected(list), 0), "chaise");
        find("switch");
        EXPECT_EQ(window.Selected(window.Directories()), 1) << "ahead of the current one";
        ASSERT_TRUE(window.WaitLoaded(2));
    });
}

TEST_F(Blocks, ADescriptionIsEditedIntoItsDrawing) {
    const auto doors = AddFolder("Doors", {});
    WriteDrawing(doors / "gate.dwg", L"as it was");
    Load();
    Browse([&](tests::Window& window) {
        window.Click(window.Directories(), 1);
        ASSERT_TRUE(window.WaitLoaded(1));
        ASSERT_EQ(window.Cell(window.Blocks(), 0, 2), "as it was");
        window.Click(window.Blocks(), 0);
        QTimer answer;
        QObject::connect(&answer, &QTimer::timeout, [] {
            auto* const edit = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (edit == nullptr || edit->objectName() != "EditDesc")
                return;
            edit->findChild<QLineEdit*>("description")->setText("swing gate");
            edit->findChild<QAbstractButton*>("OK")->click();
        });
        answer.start(5);
        window.Press("EditDescrip.");
        EXPECT_EQ(window.Cell(window.Blocks(), 0, 2), "swing gate");
    });
    AcDbDatabase drawing(false, false);
    ASSERT_EQ(drawing.readDwgFile((doors / "gate.dwg").wstring().c_str()), eOk);
    AcDbDatabaseSummaryInfo* made = nullptr;
    ASSERT_EQ(acdbGetSummaryInfo(&drawing, made), eOk);
    const std::unique_ptr<AcDbDatabaseSummaryInfo> summary(made);
    std::wstring comments;
    summary->getComments(comments);
    EXPECT_EQ(comments, L"swing gate");
}

TEST_F(Blocks, ARowWhoseFileIsGoneIsFoundOutByThePlacementAlone) {
    BrowseFour([&](tests::Window& window) {
        std::filesystem::remove(furniture / "chair.dwg");
        window.Click(window.Blocks(), 0);
        EXPECT_TRUE(window.IsEnabled("Insert"));
        window.Press("Insert");
        EXPECT_EQ(QApplication::activeModalWidget(), &window.Dialog()) << "no message";
    });
    EXPECT_FALSE(host->processor().faults().empty()) << "the host tells";
}

class LateFormats : public tests::LoadedModule {
protected:
    LateFormats() {
        for (const char* mark : {"AC1014", "AC1015", "AC1018", "AC1027"})
            folder.write(AddedFolder() / (std::string(mark) + ".dwg"), mark + std::string(300, '\0'));
    }
    const std::filesystem::path& AddedFolder() {
        if (place.empty())
            place = AddFolder("All", {});
        return place;
    }
    std::filesystem::path place;
};

TEST_F(LateFormats, AHostOfRelease15SelectsThemAndPlacesNone) {
    Load();
    host->setReleaseText(L"15.0");
    Browse([](tests::Window& window) {
        ASSERT_TRUE(window.WaitLoaded(4));
        for (int row = 0; row < 4; ++row) {
            window.Click(window.Blocks(), row);
            EXPECT_EQ(window.Selected(window.Blocks()), row);
            const bool readable = row < 2;
            for (const char* name : {"Insert", "Open", "Xref/A"})
                EXPECT_EQ(window.IsEnabled(name), readable) << row << name;
            EXPECT_TRUE(window.IsEnabled("EditDescrip."));
            const MenuAnswer menu;
            window.RightClick(window.Blocks());
            EXPECT_EQ(menu.Texts().filter("Insert ").size() + menu.Texts().filter("XRef ").size() +
                          menu.Texts().filter("Open ").size(),
                      readable ? 3 : 0);
        }
        window.DoubleClick(window.Blocks(), 3);
        QTest::keyClick(&window.Blocks(), Qt::Key_Return);
        EXPECT_TRUE(window.Dialog().isVisible());
        QTest::qWait(20);
        EXPECT_TRUE(window.Dialog().isVisible()) << "neither places";
    });
    host->setReleaseText(L"19.1");
    Browse([](tests::Window& window) {
        ASSERT_TRUE(window.WaitLoaded(4));
        window.Click(window.Blocks(), 3);
        EXPECT_TRUE(window.IsEnabled("Insert")) << "2013 is read by release 19";
    });
}

} // namespace
