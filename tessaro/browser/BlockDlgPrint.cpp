// The catalogue sheet of the current directory.
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/browser/painting/PrintCatalogue.h"
#include "tessaro/browser/printing/PrintDialog.h"
#include "tessaro/browser/printing/PrintProgress.h"
#include "tessaro/browser/printing/QtPrinterContext.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/UserInterface.h"
#include "tessaro/reading/DirectoryUsers.h"

#include <QPrinter>

#include <unordered_set>

namespace {

/// The block list as it is printed.
class ListToPrint : public PrintWindow {
public:
    ListToPrint(QWidget& dialog, const ListModel& listRows, const ImageList* listPictures)
        : owner(dialog), rows(listRows), pictures(listPictures) {}

    int RowCount() const override { return rows.RowCount(); }
    PrintRow Row(int row) const override { return {static_cast<Block*>(rows.Data(row)), rows.Image(row)}; }
    const ImageList* Pictures() const override { return pictures; }
    void OpenProgress(int range) override { progress = std::make_unique<PrintProgress>(&owner, range); }
    void SetProgress(int position) override { progress->SetPosition(position); }
    void CloseProgress() override { progress.reset(); }

private:
    QWidget& owner;
    const ListModel& rows;
    const ImageList* pictures;
    std::unique_ptr<PrintProgress> progress;
};

/// Not so between a click on another directory and the end of the worker's fill: the names of rows that are still those
/// of the directory before would lead to other drawings, and reserved rows have no block yet.
bool ShowsOnly(const ListModel& rows, const Directory& directory) {
    const std::unordered_set<const void*> blocks(directory.blocks.begin(), directory.blocks.end());
    for (int row = 0; row < rows.RowCount(); ++row)
        if (!blocks.contains(rows.Data(row)))
            return false;
    return true;
}

} // namespace

void BlockDlg::OnPrint() {
    const Directory* const directory = currentDirectory;
    if (directory == nullptr)
        return;
    const HeldDirectory held(directory);
    const auto refuse = [] { platform::MessageBox(L"The directory is not done loading. Please try again later."); };
    if (!directory->loaded || !ShowsOnly(controls->blockList->Rows(), *directory)) {
        refuse();
        return;
    }
    {
        QPrinter printer(QPrinter::HighResolution);
        printer.setDocName(QStringLiteral("Tessaro Print")); // The name that a file is offered under.
        PrintDialog dialog(printer, this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        // The worker may have begun to fill the list anew.
        if (!ShowsOnly(controls->blockList->Rows(), *directory)) {
            refuse();
            return;
        }
        ListToPrint window(*this, controls->blockList->Rows(), directory->largeImages.get());
        QtPrinterContext dc(printer);
        PrintCatalogue(dc, window);
    }
    platform::MessageBox(L"Done Printing");
}
