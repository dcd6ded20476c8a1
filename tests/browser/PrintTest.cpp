// "Print" through the real dialogs, into files.
#include "tests/browser/PrintFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <QProgressBar>
#include <QTimer>

namespace {

using testing::HasSubstr;

using Print = PrintBrowser;

TEST_F(Print, BothLayoutsBecomeFilesAtBothResolutions) {
    AddFolder(L"Parts", {"alpha", "beta", "gamma"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        for (const int type : {0, 1}) {
            for (const int dots : {300, 600}) {
                printType = type;
                const auto file = folder.path() / ("sheet" + std::to_string(type * 1000 + dots) + ".pdf");
                EXPECT_EQ(PrintTo(dlg, file, dots), QStringLiteral("Done Printing"));
                EXPECT_THAT(tests::readFile(file), HasSubstr("%PDF"));
            }
        }
    });
}

TEST_F(Print, WithoutADirectoryNothingHappens) {
    Run([&](BlockDlg& dlg) {
        ASSERT_EQ(currentDirectory, nullptr);
        dlg.Controls().print->click();
        EXPECT_EQ(QApplication::activeModalWidget(), &dlg);
    });
}

TEST_F(Print, ADirectoryThatIsStillLoadingIsNotPrinted) {
    AddFolder(L"Parts", {"alpha"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        currentDirectory.load()->loaded = false;
        const MessageAnswer answer(QStringLiteral("OK"));
        dlg.Controls().print->click();
        EXPECT_EQ(answer.Text(), QStringLiteral("The directory is not done loading. Please try again later."));
        currentDirectory.load()->loaded = true;
    });
}

TEST_F(Print, ACancelEndsSilently) {
    AddFolder(L"Parts", {"alpha"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        Answer([](QWidget& window) {
            auto* const dialog = qobject_cast<QPrintDialog*>(&window);
            if (dialog != nullptr)
                dialog->reject();
            return dialog != nullptr;
        });
        dlg.Controls().print->click();
        EXPECT_EQ(QApplication::activeModalWidget(), &dlg) << "no message";
    });
}

TEST_F(Print, DonePrintingComesAlsoAfterAFailedStart) {
    AddFolder(L"Parts", {"alpha"});
    const auto file = folder.path() / "gone" / "sheet.pdf";
    std::filesystem::create_directory(file.parent_path());
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        QStringList said;
        Answer([&](QWidget& window) {
            if (auto* const dialog = qobject_cast<QPrintDialog*>(&window)) {
                dialog->findChild<QLineEdit*>(QStringLiteral("filename"))
                    ->setText(QString::fromStdString(file.string()));
                dialog->accept();
                std::filesystem::remove(file.parent_path()); // Between the dialog's own check and the start.
                return false;
            }
            auto* const box = qobject_cast<QMessageBox*>(&window);
            if (box == nullptr)
                return false;
            said << box->text();
            box->accept();
            return said.size() == 2;
        });
        dlg.Controls().print->click();
        EXPECT_EQ(said, (QStringList{QStringLiteral("StartDoc failed: 2"), QStringLiteral("Done Printing")}));
    });
}

TEST_F(Print, AnyScaleAndTypeEndsInAFile) {
    AddFolder(L"Parts", {"alpha", "beta"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        int number = 0;
        for (const auto& [scale, type] :
             {std::pair{0, 0}, {1, 1}, {-4, 0}, {-4, 1}, {1000, 0}, {1000, 1}, {4, 2}, {2147483647, 1}}) {
            printScale = scale;
            printType = type;
            const auto file = folder.path() / ("sheet" + std::to_string(++number) + ".pdf");
            EXPECT_EQ(PrintTo(dlg, file, 300), QStringLiteral("Done Printing"));
            EXPECT_THAT(tests::readFile(file), HasSubstr("%%EOF")) << scale << ' ' << type;
        }
    });
}

TEST_F(Print, TextsOf10000CharactersAreCutOff) {
    AddFolder(L"Parts", {"alpha"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(Show(dlg));
        Block& block = *currentDirectory.load()->blocks.front();
        const std::wstring name = block.name;
        block.name = std::wstring(5000, L'n') + L' ' + std::wstring(4999, L'x');
        block.description = std::wstring(10000, L'd');
        for (const int type : {0, 1}) {
            printType = type;
            const auto file = folder.path() / ("long" + std::to_string(type) + ".pdf");
            EXPECT_EQ(PrintTo(dlg, file, 300), QStringLiteral("Done Printing"));
            EXPECT_THAT(tests::readFile(file), HasSubstr("%%EOF"));
        }
        block.name = name;
    });
}

} // namespace
