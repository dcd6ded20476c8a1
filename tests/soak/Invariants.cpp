#include "tests/soak/Invariants.h"

#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/IniStore.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/reading/LoaderThreads.h"

#include <algorithm>
#include <mutex>
#include <unordered_map>

namespace {

bool IsInCatalogue(const Directory* directory) {
    return std::ranges::find(directories, directory) != directories.end();
}

std::string BrokenQueue() {
    const std::unique_lock queue(loader.cs, std::try_to_lock);
    if (!queue.owns_lock())
        return {};
    return std::ranges::all_of(loader.loadQueue, IsInCatalogue) ? "" : "the queue holds a directory that is gone";
}

} // namespace

std::string BrokenInDialog(const BlockDlg& dialog) {
    // A delete takes row and record in turn.
    if (loaderThreads.deletes != 0)
        return {};
    const int rows = dialog.DirectoryRowCount();
    if (rows != static_cast<int>(directories.size()))
        return std::to_string(rows) + " rows for " + std::to_string(directories.size()) + " directories";
    for (int row = 0; row < rows; ++row) {
        const Directory* const directory = dialog.DirectoryAt(row);
        if (!IsInCatalogue(directory))
            return "row " + std::to_string(row) + " is of a directory that is gone";
        if (directory->listIndex != row)
            return "the directory of row " + std::to_string(row) + " says " + std::to_string(directory->listIndex);
    }
    const Directory* const current = currentDirectory;
    if (current != nullptr && !IsInCatalogue(current))
        return "the current directory is gone";
    return BrokenQueue();
}

std::string BrokenAtRest(BlockDlg& dialog) {
    const ListModel& rows = dialog.Controls().blockList->Rows();
    const Directory* const current = currentDirectory;
    // A folder without drawings shows nothing of what it had.
    if (rows.RowCount() == 0 && (current == nullptr || !current->loaded))
        return {};
    if (current == nullptr)
        return "the block list shows rows of no directory";
    std::unordered_map<const void*, const Block*> missing;
    for (const Block* block : current->blocks)
        missing.emplace(block, block);
    for (int row = 0; row < rows.RowCount(); ++row) {
        const auto found = missing.find(rows.Data(row));
        if (found == missing.end())
            return "row " + std::to_string(row) + " of the block list is of no block of the current directory";
        if (rows.Text(row, 0) != found->second->name)
            return "row " + std::to_string(row) + " of the block list has another name than its block";
        missing.erase(found);
    }
    if (!missing.empty())
        return std::to_string(missing.size()) + " blocks of the current directory have no row";
    return dialog.Controls().curtainList->isHidden() ? "" : "the curtain is left before the block list";
}

std::string BrokenWhenIdle(bool sameCatalogue) {
    if (theBlockDlg != nullptr || dialogOpen)
        return "a dialog is still known";
    if (loader.quit || loaderThreads.deletes != 0)
        return "a thread of the loader is left";
    if (placement.placementActive || placement.explodePending || placement.multiplePending || placement.relaunchPending)
        return "a placement is left";
    if (!ReadIniFile(iniPath))
        return "the settings can't be read";
    const int named = GetIniInt(L"Paths", L"NumPaths", -1, iniPath), known = static_cast<int>(directories.size());
    if (named < known || (sameCatalogue && named != known))
        return "the settings name " + std::to_string(named) + " directories of " + std::to_string(known);
    return {};
}
