#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/browser/QtText.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"

#include "editor/sdk/editor.h"

#include <algorithm>
#include <mutex>

namespace {

bool Matches(const Block& block, const std::wstring& pattern) {
    static std::mutex matching; // for these two calls only
    const std::lock_guard lock(matching);
    return acutWcMatch(platform::ToLower(block.name).c_str(), pattern.c_str()) == RTNORM ||
           acutWcMatch(platform::ToLower(block.description).c_str(), pattern.c_str()) == RTNORM;
}

/// Position of the first match in `blocks`, in stored order.
std::list<Block*>::const_iterator FindMatch(const Directory& directory, const std::wstring& pattern) {
    return std::find_if(directory.blocks.begin(), directory.blocks.end(),
                        [&](const Block* block) { return Matches(*block, pattern); });
}

std::wstring Pattern(const QString& text) {
    return L"*" + platform::ToLower(FromQt(text)) + L"*";
}

/// First matching row from `first` on, or -1.
int FindRow(const ListModel& rows, int first, const std::wstring& pattern) {
    for (int row = first; row < rows.RowCount(); ++row) {
        const auto* const block = static_cast<const Block*>(rows.Data(row));
        if (block != nullptr && Matches(*block, pattern))
            return row;
    }
    return -1;
}

} // namespace

bool BlockDlg::QuickFind(bool searchCurrent) {
    const Directory* const directory = currentDirectory;
    if (directory == nullptr || !directory->loaded)
        return false;
    const std::wstring pattern = Pattern(controls->quickFind->text());
    if (searchCurrent) {
        const int row = FindRow(controls->blockList->Rows(), 0, pattern);
        if (row >= 0) {
            SelectBlockRow(row);
            return true;
        }
    }
    return FindInOtherDirectories(pattern);
}

/// Behind the current directory the match's position becomes the directory's selected row, which the fill brings back;
/// from the head up to the current one its row is looked up at once. The two halves differ, and stay so.
bool BlockDlg::FindInOtherDirectories(const std::wstring& pattern) {
    const auto current = std::find(directories.begin(), directories.end(), currentDirectory.load());
    if (current == directories.end())
        return false;
    for (auto place = std::next(current); place != directories.end(); ++place) {
        Directory& directory = **place;
        if (!directory.loaded)
            continue;
        const auto match = FindMatch(directory, pattern);
        if (match == directory.blocks.end())
            continue;
        const auto position = std::distance(directory.blocks.cbegin(), match);
        ShowFoundDirectory(&directory);
        directory.selectedIndex = static_cast<std::int32_t>(position);
        return true;
    }
    for (auto place = directories.begin(); place != current; ++place) {
        Directory& directory = **place;
        if (!directory.loaded)
            continue;
        const auto match = FindMatch(directory, pattern);
        if (match == directory.blocks.end())
            continue;
        ShowFoundDirectory(&directory);
        SelectBlockRow(FindBlockRow(*match));
        return true;
    }
    return false;
}

void BlockDlg::ShowFoundDirectory(Directory* directory) {
    StoreDlgState();
    currentDirectory = directory;
    FillBlockControls(true);
    QueueFirst(directory);
    SelectDirectoryRow(directory->listIndex);
}

void BlockDlg::QuickFindNext() {
    const Directory* const directory = currentDirectory;
    if (directory == nullptr || !directory->loaded)
        return;
    const int row = FindRow(controls->blockList->Rows(), SelectedBlockRow() + 1, Pattern(controls->quickFind->text()));
    if (row >= 0) {
        SelectBlockRow(row);
        return;
    }
    if (!QuickFind(false))
        QuickFind(true);
}
