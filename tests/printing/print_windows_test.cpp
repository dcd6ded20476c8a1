#include "tessaro/browser/printing/PrintDialog.h"
#include "tessaro/browser/printing/PrintProgress.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QPrinter>
#include <QProgressBar>

namespace {

class PrintDialogTest : public testing::Test {
protected:
    QWidget owner;
    QPrinter printer{QPrinter::HighResolution};
};

TEST_F(PrintDialogTest, offersNoChoiceOfPagesAndTheFileInsteadOfAPrinter) {
    const PrintDialog dialog(printer, &owner);
    EXPECT_FALSE(dialog.testOption(QAbstractPrintDialog::PrintPageRange));
    EXPECT_FALSE(dialog.testOption(QAbstractPrintDialog::PrintSelection));
    EXPECT_FALSE(dialog.testOption(QAbstractPrintDialog::PrintCurrentPage));
    EXPECT_TRUE(dialog.testOption(QAbstractPrintDialog::PrintToFile));
}

TEST_F(PrintDialogTest, theResolutionOfAPdfIsTheOneThatIsChosen) {
    for (const int dots : {300, 600, 1200}) {
        PrintDialog dialog(printer, &owner);
        auto* const resolution = dialog.findChild<QComboBox*>(QStringLiteral("pdfResolution"));
        ASSERT_NE(resolution, nullptr);
        ASSERT_GE(resolution->findData(dots), 0);
        resolution->setCurrentIndex(resolution->findData(dots));
        dialog.done(QDialog::Accepted);
        ASSERT_EQ(printer.outputFormat(), QPrinter::PdfFormat) << "this machine has no printer";
        EXPECT_EQ(printer.resolution(), dots);
    }
}

TEST_F(PrintDialogTest, aCancelChangesNoResolution) {
    printer.setResolution(123);
    PrintDialog dialog(printer, &owner);
    dialog.done(QDialog::Rejected);
    EXPECT_EQ(printer.resolution(), 123);
}

TEST(PrintProgressTest, ShowsInTheMiddleOfItsOwnerAboveAllAndIsNotModal) {
    QWidget owner;
    owner.setGeometry(100, 100, 600, 400);
    owner.show();
    PrintProgress progress(&owner, 10);
    EXPECT_EQ(progress.windowTitle(), QStringLiteral("Print Progress"));
    EXPECT_TRUE(progress.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_FALSE(progress.isModal());
    EXPECT_TRUE(progress.isVisible());
    const QPoint distance = progress.frameGeometry().center() - owner.frameGeometry().center();
    EXPECT_LE(distance.manhattanLength(), 4);

    const auto* const bar = progress.findChild<QProgressBar*>();
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->maximum(), 10);
    progress.SetPosition(7);
    EXPECT_EQ(bar->value(), 7);
    progress.SetPosition(70000);
    EXPECT_EQ(bar->value(), 10) << "no further than its range";
}

TEST(PrintProgressTest, AnEmptyRangeStandsStill) {
    QWidget owner;
    const PrintProgress progress(&owner, 0);
    EXPECT_EQ(progress.findChild<QProgressBar*>()->maximum(), 1) << "0 would show a bar of unknown length";
}

} // namespace
