#include "tessaro/browser/SmallDialogs.h"

#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/browser/DirProps.h"
#include "tessaro/browser/EditDesc.h"
#include "tessaro/browser/Prefs.h"
#include "tessaro/catalogue/CacheOptions.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/placement/OwnBlock.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/UserInterface.h"
#include "tessaro/reading/WriteDescription.h"

namespace {

constexpr int kDescriptionCell = 2;

/// The row that shows the block of that name; the worker may have replaced rows and blocks while a dialog was open.
int RowOf(const ListModel& rows, const std::wstring& name) {
    for (int row = 0; row < rows.RowCount(); ++row)
        if (rows.Data(row) != nullptr && static_cast<const Block*>(rows.Data(row))->name == name)
            return row;
    return -1;
}

/// The selection's handlers see the row anew.
void SelectAgain(MyList& list, int row) {
    list.clearSelection();
    list.SelectRow(row);
}

} // namespace

void EditPreferences(BlockDlg& dlg) {
    Prefs prefs(&dlg);
    prefs.cacheFileText = cachePath;
    prefs.blockInsert = blockInsert;
    prefs.readEveryTime = readDirEveryTime;
    prefs.overlay = overlayXRef;
    prefs.useCompression = useCompression != 0;
    prefs.backup = backupIni != 0;
    const CacheOptions before = GetCacheOptions();
    prefs.demandLoad = before.demandLoad;
    prefs.onlyCurrent = before.onlyCurrent;
    prefs.delOnClose = before.delOnClose;
    if (prefs.exec() != QDialog::Accepted)
        return;
    if (prefs.cacheFileText != cachePath)
        MoveCacheFiles(prefs.cacheFileText);
    blockInsert = prefs.blockInsert;
    SetCacheOptions({prefs.demandLoad, prefs.onlyCurrent, prefs.delOnClose});
    readDirEveryTime = prefs.readEveryTime;
    overlayXRef = prefs.overlay;
    useCompression = prefs.useCompression ? 1 : 0;
    backupIni = prefs.backup ? 1 : 0;
    SetCaption(*dlg.Controls().xref, overlayXRef != 0 ? L"XRef/O" : L"XRef/A");
}

void EditDescription(BlockDlg& dlg) {
    MyList& list = *dlg.Controls().blockList;
    const auto* const selected = static_cast<const Block*>(list.Rows().Data(dlg.SelectedBlockRow()));
    const Directory* const directory = currentDirectory;
    // Between a click on another directory and the worker's first step there, the rows are still those of the one
    // before, and their names would lead to other drawings.
    if (!IsBlockOf(directory, selected))
        return;
    const std::wstring name = selected->name;
    const auto status = platform::GetFileStatus(platform::Join(directory->path, name + L".dwg"));
    if (!status) {
        platform::MessageBox(L"File no longer exists.");
        return;
    }
    if (status->readOnly) {
        platform::MessageBox(L"This file is read only.\nThe description cannot be changed.");
        return;
    }
    EditDesc edit(&dlg);
    edit.description = selected->description;
    if (edit.exec() != QDialog::Accepted)
        return;
    const int row = RowOf(list.Rows(), name);
    bool written = false;
    if (row >= 0) {
        const platform::WaitCursor wait;
        auto* const block = static_cast<Block*>(list.Rows().Data(row));
        block->description = edit.description;
        list.Rows().SetText(row, kDescriptionCell, block->description);
        SelectAgain(list, row);
        written = WriteDescription(*block);
    }
    if (!written)
        platform::MessageBox(L"Could not write to file.\nDescription not saved.");
    dlg.setFocus();
}

void EditDirectory(BlockDlg& dlg) {
    if (currentDirectory == nullptr)
        return;
    DirProps properties(dlg);
    properties.exec();
}
