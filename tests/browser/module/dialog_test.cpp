// The window as a whole: its controls, who may change the catalogue, closing, and what a placement does.
#include "tests/browser/module/LoadedModule.h"

#include "editor/application/drawing.h"
#include "tests/browser/module/Window.h"
#include "tests/support/Shell.h"

#include <QApplication>
#include <QHeaderView>
#include <QImage>
#include <QPushButton>
#include <QTest>

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

/// Directory "Furniture" with chair, desk and lamp, which are real drawings, and "Electrical" with a switch.
class Dialog : public tests::LoadedModule {
protected:
    Dialog() {
        furniture = AddFolder("Furniture", {});
        for (const char* name : {"chair", "desk", "lamp"})
            WriteDrawing(furniture / (std::string(name) + ".dwg"));
        AddFolder("Electrical", {"switch"});
    }
    static QStringList Items(const QComboBox& box) {
        QStringList items;
        for (int index = 0; index < box.count(); ++index)
            items << box.itemText(index);
        return items;
    }
    std::size_t ModelSize() { return editor::modelSpaceEntities(*host->documents().current()->database()).size(); }
    std::filesystem::path furniture;
};

TEST_F(Dialog, HasTheControlsOfTheTableAndWhatTheyStartWith) {
    Load();
    Browse([](tests::Window& window) {
        ASSERT_TRUE(window.WaitLoaded(3));
        for (const char* caption :
             {"Preferences", "Close", "Schemes", "Help", "Print", "Edit Descrip.", "Insert", "Open", "Xref/A",
              "Explode", "Multiple Insert", "Repeat", "Add", "Delete", "Move Up", "Move Down"}) {
            const auto& button = window.Control(QString(caption).remove(' ').toLatin1());
            EXPECT_EQ(button.text(), caption);
            EXPECT_TRUE(button.isVisible()) << caption;
        }
        for (const char* hidden : {"AmCatalog", "Localize", "curtainList"})
            EXPECT_FALSE(window.Control<QWidget>(hidden).isVisible()) << hidden;
        for (const char* label : {"quickFindLabel", "scaleLabel", "rotationLabel", "itemPropertiesLabel"})
            EXPECT_FALSE(window.Control<QLabel>(label).text().isEmpty()) << label;
        EXPECT_EQ(Items(window.Control<QComboBox>("schemeCombo")).value(0), "<None>");
        EXPECT_EQ(Items(window.Control<QComboBox>("rotationCombo")), QStringList({"0", "180", "270", "90", "Prompt"}));
        const QStringList scales = Items(window.Control<QComboBox>("scaleCombo"));
        EXPECT_EQ(scales.size(), 4) << "the three words and the drawing's number";
        EXPECT_TRUE(scales.contains("1:1") && scales.contains("Drawing") && scales.contains("Prompt"));
        EXPECT_EQ(window.Control<QComboBox>("scaleCombo").currentText(), "1:1");
        EXPECT_EQ(window.Control<QComboBox>("rotationCombo").currentText(), "0.000000");
        EXPECT_EQ(window.Column(window.Directories(), 0), "Furniture Electrical ");
        EXPECT_EQ(window.Column(window.Blocks(), 0), "chair desk lamp ");
        EXPECT_EQ(window.Dialog().minimumSize(), window.Dialog().maximumSize());
        EXPECT_TRUE(window.Control<QPushButton>("Insert").isDefault());
    });
}

TEST_F(Dialog, OverlayXRefCaptionsTheReferenceButton) {
    AddOption("OverlayXRef=1");
    Load();
    Browse([](tests::Window& window) { EXPECT_EQ(window.Control("Xref/A").text(), "XRef/O"); });
}

TEST_F(Dialog, PressingCloseTwiceClosesOnceAndItOpensAgain) {
    Load();
    for (int time = 0; time < 2; ++time)
        Browse([](tests::Window& window) {
            window.Press("Close");
            window.Press("Close");
        });
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Dialog, EscapeInTheQuickFindBoxAndTheCrossCloseItLikeTheButton) {
    Load();
    Browse([](tests::Window& window) {
        window.QuickFind().setFocus();
        QTest::keyClick(&window.QuickFind(), Qt::Key_Escape);
        EXPECT_TRUE(window.Dialog().isVisible()) << "until the worker has stopped";
        const QPointer<QDialog> dialog(&window.Dialog());
        EXPECT_TRUE(window.WaitFor([&] { return dialog == nullptr || !dialog->isVisible(); }));
    });
    Browse([](tests::Window& window) {
        window.Dialog().close();
        const QPointer<QDialog> dialog(&window.Dialog());
        EXPECT_TRUE(window.WaitFor([&] { return dialog == nullptr || !dialog->isVisible(); }));
    });
}

TEST_F(Dialog, EnterAnywhereButInTheQuickFindBoxInserts) {
    Load();
    user.points = {{5, 5, 0}};
    Browse([](tests::Window& window) {
        ASSERT_TRUE(window.WaitLoaded(3));
        window.Click(window.Blocks(), 1);
        window.QuickFind().setFocus();
        QTest::keyClick(&window.QuickFind(), Qt::Key_Return);
        EXPECT_TRUE(window.Dialog().isVisible());
        window.Click(window.Blocks(), 1);
        QTest::keyClick(&window.Blocks(), Qt::Key_Return);
    });
    EXPECT_EQ(ModelSize(), 1U);
    EXPECT_FALSE(editor::findBlock(*host->documents().current()->database(), L"desk").isNull());
}

TEST_F(Dialog, InsertDoubleClickAndReferencePlaceWhenTheWindowIsGone) {
    Load();
    user.points = {{1, 1, 0}, {2, 2, 0}, {3, 3, 0}};
    const auto with = [](auto act) {
        return [act](tests::Window& window) {
            ASSERT_TRUE(window.WaitLoaded(3));
            act(window);
        };
    };
    Browse(with([](tests::Window& window) {
        window.Press("Insert"); // nothing is selected
        window.Click(window.Blocks(), 0);
        window.Press("Insert");
    }));
    EXPECT_EQ(ModelSize(), 1U);
    Browse(with([](tests::Window& window) { window.DoubleClick(window.Blocks(), 1); }));
    EXPECT_EQ(ModelSize(), 2U);
    Browse(with([](tests::Window& window) {
        window.Click(window.Blocks(), 2);
        window.Press("Xref/A");
    }));
    EXPECT_EQ(ModelSize(), 3U);
    host->execute(L"-XREF ?\n");
    EXPECT_TRUE(Said(L"\"lamp\"  Attach"));
}

TEST_F(Dialog, RepeatOpensItAgainAfterThePlacementWithTheBoxStillTicked) {
    Load();
    user.points = {{1, 1, 0}};
    Run({[](tests::Window& window) {
             ASSERT_TRUE(window.WaitLoaded(3));
             window.Press("Repeat");
             window.Click(window.Blocks(), 0);
             window.Press("Insert");
         },
         [this](tests::Window& window) {
             EXPECT_EQ(ModelSize(), 1U) << "placed before it opens again";
             ASSERT_TRUE(window.WaitLoaded(3));
             EXPECT_TRUE(window.Control("Repeat").isChecked());
             EXPECT_EQ(window.Selected(window.Blocks()), 0);
         }});
}

TEST_F(Dialog, ANumberInTheScaleBoxGoesToTheDrawingWhenTheDirectoryChanges) {
    Load();
    const AcDbDatabase* const drawing = host->documents().current()->database();
    Browse([&](tests::Window& window) {
        ASSERT_TRUE(window.WaitLoaded(3));
        window.Set("scaleCombo", "2.5");
        EXPECT_NE(drawing->userr4(), 2.5);
        window.Click(window.Directories(), 1);
        EXPECT_EQ(drawing->userr4(), 2.5) << "at once";
        ASSERT_TRUE(window.WaitLoaded(1));
        window.Set("scaleCombo", "two and a half");
        window.Set("rotationCombo", "askew");
        window.Click(window.Directories(), 0);
        EXPECT_EQ(drawing->userr4(), 0) << "text that is no number";
        ASSERT_TRUE(window.WaitLoaded(3));
        window.Click(window.Directories(), 1);
        EXPECT_EQ(window.Control<QComboBox>("rotationCombo").currentText(), "0.000000");
    });
}

TEST_F(Dialog, EachDirectoryKeepsItsPlacementSettingsAndTheSettingsFileHasThem) {
    Load();
    Browse([](tests::Window& window) {
        ASSERT_TRUE(window.WaitLoaded(3));
        window.Set("scaleCombo", "PROMPT");
        window.Set("rotationCombo", "prompt");
        window.Press("Explode");
        window.Click(window.Directories(), 1);
        ASSERT_TRUE(window.WaitLoaded(1));
        EXPECT_EQ(window.Control<QComboBox>("scaleCombo").currentText(), "1:1");
        EXPECT_FALSE(window.Control("Explode").isChecked());
        window.Set("rotationCombo", "45");
        window.Press("MultipleInsert");
        window.Click(window.Directories(), 0);
        EXPECT_EQ(window.Control<QComboBox>("scaleCombo").currentText(), "Prompt");
        EXPECT_EQ(window.Control<QComboBox>("rotationCombo").currentText(), "Prompt");
        EXPECT_TRUE(window.Control("Explode").isChecked());
        window.Blocks().findChild<QHeaderView*>()->resizeSection(2, 222);
    });
    const std::string settings = Settings();
    const auto second = settings.find("description=Electrical");
    ASSERT_NE(second, std::string::npos) << settings;
    const std::string furnitureKeys = settings.substr(settings.find("description=Furniture"), second);
    EXPECT_THAT(furnitureKeys, HasSubstr("scale=Prompt\nrotation=Prompt\nexplode=Yes\nmultipleinsert=No\n"));
    EXPECT_THAT(settings.substr(second), HasSubstr("rotation=45.000000\nexplode=No\nmultipleinsert=Yes\n"));
    EXPECT_THAT(settings, HasSubstr("column3width=222\n"));
}

TEST_F(Dialog, OpeningAgainComesBackToTheDirectoryAndItsRow) {
    Load();
    Browse([](tests::Window& window) {
        window.Click(window.Directories(), 1);
        ASSERT_TRUE(window.WaitLoaded(1));
        window.Click(window.Blocks(), 0);
    });
    Browse([](tests::Window& window) {
        EXPECT_EQ(window.Selected(window.Directories()), 1);
        ASSERT_TRUE(window.WaitLoaded(1));
        EXPECT_EQ(window.Selected(window.Blocks()), 0);
    });
}

TEST_F(Dialog, AUserWhoIsNotOnTheListKeepsPlacingOnly) {
    folder.write(app / "tessaroadmin.ini", "[Users]\nsomebody else\n");
    WriteDrawing(furniture / "late.dwg");
    Load();
    Browse([](tests::Window& window) {
        const auto expectDisabled = [&](const char* when) {
            for (const char* name :
                 {"Preferences", "schemeCombo", "Schemes", "Add", "Delete", "MoveUp", "MoveDown", "EditDescrip."})
                EXPECT_FALSE(window.IsEnabled(name)) << name << " " << when;
        };
        ASSERT_TRUE(window.WaitLoaded(4));
        expectDisabled("at the start");
        window.Click(window.Blocks(), 3);
        expectDisabled("with a block of a late file type");
        for (const char* name : {"Insert", "Open", "Xref/A", "Print", "Help", "Explode", "scaleCombo", "quickFind"})
            EXPECT_TRUE(window.IsEnabled(name)) << name;
        window.Click(window.Directories(), 1);
        expectDisabled("in another directory");
        ASSERT_TRUE(window.WaitLoaded(1));
        expectDisabled("after the fill");
        {
            const MenuAnswer menu;
            window.RightClick(window.Directories());
            EXPECT_EQ(menu.Texts(), QStringList({"Properties", "-", "Reload Directory"}));
        }
        const MenuAnswer menu;
        window.RightClick(window.Blocks());
        EXPECT_TRUE(menu.Texts().contains("Refresh Directory"));
    });
}

TEST_F(Dialog, AListOfAdministratorsWithoutTheSectionRestrictsEverybodyWithoutAMessage) {
    folder.write(app / "tessaroadmin.ini", "");
    Load();
    Browse([](tests::Window& window) { EXPECT_FALSE(window.IsEnabled("Preferences")); });
}

TEST_F(Dialog, ABackgroundOfPureGreyGetsBlackAndOneStepBrighterWhite) {
    Load();
    const auto foreground = [&] {
        Browse([](tests::Window&) {});
        return Symbol<std::array<std::uint8_t, 3>>("foreColor");
    };
    host->setColours({0xC0C0C0, 0xFFFFFF});
    EXPECT_EQ(foreground(), (std::array<std::uint8_t, 3>{0, 0, 0}));
    host->setColours({0xC0C0C1, 0xFFFFFF});
    EXPECT_EQ(foreground(), (std::array<std::uint8_t, 3>{255, 255, 255}));
}

TEST_F(Dialog, HelpWithoutItsFileMakesTheFoldersAndSaysNothing) {
    Load();
    Browse([](tests::Window& window) {
        window.Press("Help");
        QTest::keyClick(&window.Dialog(), Qt::Key_F1);
        EXPECT_EQ(QApplication::activeModalWidget(), &window.Dialog());
    });
    EXPECT_TRUE(std::filesystem::is_directory(folder.path() / "home/data/Norvane/help"));
}

TEST_F(Dialog, HelpShowsTheGuideThatStandsAtTheModulesFolder) {
    std::filesystem::copy_file(TESSARO_BIN_DIR "tessaro.chm", app.string() + "tessaro.chm");
    Load();
    Browse([](tests::Window& window) {
        QTest::keyClick(&window.Blocks(), Qt::Key_F1);
        auto* const help = window.Dialog().findChild<QWidget*>("helpWindow");
        ASSERT_NE(help, nullptr);
        EXPECT_TRUE(help->isVisible());
    });
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "home/data/Norvane/help/tessaro.chm"));
}

class EmptyCatalogue : public tests::LoadedModule {};

TEST_F(EmptyCatalogue, EveryActionThatNeedsADirectoryReturnsWithoutAWord) {
    Load();
    Browse([](tests::Window& window) {
        EXPECT_EQ(window.Properties(), "No Block Selected");
        for (const char* name :
             {"Insert", "Open", "Xref/A", "Delete", "MoveUp", "MoveDown", "Print", "EditDescrip.", "viewButton"}) {
            window.Press(name);
            EXPECT_EQ(QApplication::activeModalWidget(), &window.Dialog()) << name;
        }
        window.ClickHeading(window.Blocks(), 2);
        window.Type(window.QuickFind(), "x");
        QTest::keyClick(&window.QuickFind(), Qt::Key_Return);
        for (QAbstractItemView* list : {&window.Blocks(), &window.Directories()}) {
            const MenuAnswer menu;
            window.RightClick(*list);
            QCoreApplication::processEvents();
            EXPECT_TRUE(menu.Texts().isEmpty());
        }
        EXPECT_TRUE(window.Dialog().isVisible());
    });
    EXPECT_EQ(OpenDrawings(), 1U);
}

/// The program itself, without a user.
class Program : public tests::LoadedModule {
protected:
    /// The size of the browser's window on a screen of that width.
    QSize WindowOn(int width) {
        folder.write("screen.json",
                     "{ \"synchronousWindowSystemEvents\": false, \"windowFrameMargins\": false, \"screens\": [ { "
                     "\"name\": \"Screen\", \"x\": 0, \"y\": 0, \"width\": " +
                         std::to_string(width) +
                         ", \"height\": 400, \"logicalDpi\": 96, \"logicalBaseDpi\": 96, \"dpr\": 1 } ] }");
        folder.write("script.scr", "TESSARO\n> grab window.png\n> click Close\n");
        const std::string place = folder.path().string();
        const tests::ShellRun program =
            tests::runShell("cd " + tests::quoted(place) +
                            " && QT_QPA_PLATFORM=offscreen:configfile=" + tests::quoted(place + "/screen.json") +
                            " timeout 60 " TESSARO_BIN_DIR "/tessaro-editor --batch --script script.scr");
        EXPECT_EQ(program.status, 0) << program.output;
        return QImage(QString::fromStdString(place) + "/window.png").size();
    }
};

TEST_F(Program, ADialogWiderThanTheScreenLosesExactlyTwentyPixels) {
    const QSize wide = WindowOn(1920);
    ASSERT_GT(wide.width(), 500);
    EXPECT_EQ(WindowOn(wide.width() - 1), wide - QSize(20, 0));
    EXPECT_EQ(WindowOn(wide.width()), wide);
}

} // namespace
