// The directory list: adding, deleting, moving, renaming, its menu; and a working day with real folders.
#include "tests/browser/module/LoadedModule.h"
#include "tests/support/Shell.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::Not;

namespace {

/// Renames the current directory in its row.
void Rename(tests::Window& window, const QString& text, Qt::Key end = Qt::Key_Return) {
    window.Dialog().activateWindow();
    window.Directories().setFocus();
    ASSERT_TRUE(window.WaitFor([&] { return window.Directories().hasFocus(); }));
    QTest::keyClick(&window.Directories(), Qt::Key_F2);
    auto* const edit = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(edit, nullptr);
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, end);
    QCoreApplication::processEvents();
}

class Directories : public tests::LoadedModule {
protected:
    Directories() {
        furniture = AddFolder("Furniture", {"chair", "desk"});
        AddFolder("Electrical", {"switch"});
        AddFolder("Mechanical", {"bolt"});
    }
    /// Opens the window, with all three directories loaded.
    void BrowseAll(const Script& script) {
        Load();
        Browse([&](tests::Window& window) {
            ASSERT_TRUE(window.WaitLoaded(2));
            script(window);
        });
    }
    static QString Names(const tests::Window& window) { return window.Column(window.Directories(), 0); }
    std::filesystem::path furniture;
};

TEST_F(Directories, AClickShowsADirectoryAndItsRowTellsCountAndState) {
    BrowseAll([](tests::Window& window) {
        EXPECT_EQ(window.Column(window.Directories(), 1), "2 1 1 ");
        EXPECT_EQ(window.Column(window.Directories(), 2).trimmed(), "");
        window.Click(window.Directories(), 2);
        ASSERT_TRUE(window.WaitLoaded(1));
        EXPECT_EQ(window.Column(window.Blocks(), 0), "bolt ");
    });
}

TEST_F(Directories, AddTakesAFolderTwiceAndACancelNone) {
    const auto more = folder.write("more/valve.dwg", "AC1015" + std::string(200, '\0')).parent_path();
    BrowseAll([&](tests::Window& window) {
        AnswerFolderPicker({});
        window.Press("Add");
        EXPECT_EQ(window.Rows(window.Directories()), 3);
        for (int time = 0; time < 2; ++time) {
            AnswerFolderPicker(QString::fromStdString(more.string()));
            window.Press("Add");
            EXPECT_EQ(window.Selected(window.Directories()), 3 + time);
            ASSERT_TRUE(window.WaitLoaded(1));
            EXPECT_EQ(window.Column(window.Blocks(), 0), "valve ");
        }
        EXPECT_EQ(Names(window), "Furniture Electrical Mechanical New Directory New Directory ");
    });
    EXPECT_THAT(Settings(), HasSubstr("numpaths=5\n"));
}

TEST_F(Directories, DeleteAsksShowsTheNeighbourAndLeavesTheFolder) {
    BrowseAll([](tests::Window& window) {
        {
            const MessageAnswer no("No");
            window.Press("Delete");
            EXPECT_EQ(no.Text(), "Are you sure you wish to delete 'Furniture'?");
        }
        EXPECT_EQ(window.Rows(window.Directories()), 3);
        const MessageAnswer yes("Yes");
        window.Press("Delete");
        ASSERT_TRUE(window.WaitFor([&] { return window.Rows(window.Directories()) == 2; }));
        EXPECT_EQ(Names(window), "Electrical Mechanical ");
        EXPECT_EQ(window.Selected(window.Directories()), 0);
    });
    EXPECT_TRUE(std::filesystem::exists(furniture / "chair.dwg"));
    EXPECT_THAT(Settings(), Not(HasSubstr("Furniture")));
}

TEST_F(Directories, DeletingAllLeavesNoCurrentOneAndAddStartsAfresh) {
    BrowseAll([&](tests::Window& window) {
        for (int left = 2; left >= 0; --left) {
            const MessageAnswer yes("Yes");
            window.Press("Delete");
            ASSERT_TRUE(window.WaitFor([&] { return window.Rows(window.Directories()) == left; }));
        }
        EXPECT_TRUE(window.WaitFor([&] { return window.Rows(window.Blocks()) == 0; }));
        AnswerFolderPicker(QString::fromStdString(furniture.string()));
        window.Press("Add");
        ASSERT_TRUE(window.WaitLoaded(2));
    });
    EXPECT_THAT(Settings(), HasSubstr("numpaths=1\npath1=" + furniture.string() + "\n"));
}

TEST_F(Directories, MovingExchangesNeighboursKeepsTheSelectionAndReachesTheSettings) {
    BrowseAll([](tests::Window& window) {
        window.Press("MoveUp");
        EXPECT_EQ(Names(window), "Furniture Electrical Mechanical ") << "the first row up";
        EXPECT_EQ(window.Selected(window.Directories()), 0);
        window.Press("MoveDown");
        EXPECT_EQ(Names(window), "Electrical Furniture Mechanical ");
        EXPECT_EQ(window.Selected(window.Directories()), 1);
        EXPECT_EQ(window.Cell(window.Directories(), 0, 1), "1");
        EXPECT_EQ(window.Cell(window.Directories(), 0, 2), "") << "the moved neighbour";
        window.Press("MoveDown");
        window.Press("MoveDown");
        EXPECT_EQ(Names(window), "Electrical Mechanical Furniture ") << "the last row down";
        window.Press("MoveUp");
    });
    const std::string settings = Settings();
    EXPECT_LT(settings.find("description=Electrical"), settings.find("description=Furniture"));
    EXPECT_LT(settings.find("description=Furniture"), settings.find("description=Mechanical"));
}

TEST_F(Directories, ARowIsRenamedInPlaceAndEscapeLeavesItsName) {
    BrowseAll([](tests::Window& window) {
        Rename(window, "Chairs & Co");
        ASSERT_TRUE(window.WaitFor([&] { return Names(window).startsWith("Chairs & Co "); }));
        window.Click(window.Directories(), 1);
        Rename(window, "never", Qt::Key_Escape);
        EXPECT_EQ(Names(window), "Chairs & Co Electrical Mechanical ");
        EXPECT_TRUE(window.Dialog().isVisible());
    });
    EXPECT_THAT(Settings(), HasSubstr("description=Chairs & Co\n"));
}

TEST_F(Directories, TheMenuReloadsTheCurrentDirectory) {
    BrowseAll([&](tests::Window& window) {
        folder.write(furniture / "sofa.dwg", "AC1015" + std::string(200, '\0'));
        const MenuAnswer menu("Reload Directory");
        window.RightClick(window.Directories());
        EXPECT_EQ(menu.Texts(), QStringList({"Properties", "-", "Reload Directory"}));
        EXPECT_TRUE(window.WaitLoaded(3));
    });
}

/// Two folders of real drawings.
class RealFolders : public tests::LoadedModule {
protected:
    RealFolders() {
        const auto shared = tests::sharedFolder("drawings");
        if (!shared.empty())
            folders = {shared / "2000", shared / "r14"};
    }
    static int DrawingsIn(const std::filesystem::path& place) {
        return static_cast<int>(std::count_if(std::filesystem::directory_iterator(place), {},
                                              [](const auto& entry) { return entry.path().extension() == ".dwg"; }));
    }
    /// What the browser shows in another run of the host, by the program itself.
    std::string ShownLater() {
        folder.write("script.scr", "TESSARO\n> wait-until idle\n> expect directoryList Renamed\n> grab later.png\n"
                                   "> click Close\n");
        const tests::ShellRun program =
            tests::runShell("cd " + tests::quoted(folder.path().string()) +
                            " && timeout 120 " TESSARO_BIN_DIR "/tessaro-editor --batch --script script.scr --load " +
                            tests::quoted((app / "tessaro24-64.arx").string()));
        EXPECT_EQ(program.status, 0);
        return program.output;
    }
    std::vector<std::filesystem::path> folders;
};

TEST_F(RealFolders, AreAddedBrowsedSortedRenamedMovedAndThereAgainInAnotherRun) {
    if (folders.empty())
        GTEST_SKIP() << "no shared drawings";
    Load();
    Browse([&](tests::Window& window) {
        for (const auto& place : folders) {
            AnswerFolderPicker(QString::fromStdString(place.string()));
            window.Press("Add");
            ASSERT_TRUE(window.WaitLoaded(DrawingsIn(place))) << place;
            for (int view = 0; view < 4; ++view)
                window.Press("viewButton");
            for (int click = 0; click < 18; ++click)
                window.ClickHeading(window.Blocks(), click / 3);
            EXPECT_EQ(window.Rows(window.Blocks()), DrawingsIn(place));
        }
        window.Press("MoveUp");
        Rename(window, "Renamed");
        ASSERT_TRUE(window.WaitFor([&] { return window.Cell(window.Directories(), 0, 0) == "Renamed"; }));
    });
    EXPECT_THAT(Settings(), HasSubstr("numpaths=2\npath1=" + folders[1].string() + "\npath2=" + folders[0].string()));
    EXPECT_THAT(Settings(), HasSubstr("description=Renamed\n"));
    EXPECT_THAT(Settings(), HasSubstr("sortstyle=Modified\n")) << "by the last column, the third time";
    Quit();
    for (const char* file : {"tessaro35.cache", "path1_35.cache", "path2_35.cache"})
        EXPECT_GT(std::filesystem::file_size(app / file), 0U) << file;
    ShownLater();
}

} // namespace
