#include "tessaro/reading/DirectoryScan.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/ShownImages.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/reading/BlockRows.h"
#include "tessaro/reading/DirectoryUsers.h"
#include "tessaro/reading/HopBudget.h"

#include <memory>
#include <utility>

namespace {

BlockStatus StatusOf(const platform::FileStatus& file) {
    return {file.size, file.created, file.modified};
}

std::unique_ptr<Block> MakeBlock(const platform::FoundFile& file) {
    auto block = std::make_unique<Block>();
    block->name = platform::TitleOf(file.name);
    block->status = StatusOf(file.status);
    block->created = block->status.m_ctime;
    block->modified = block->status.m_mtime;
    return block;
}

} // namespace

bool DirectoryScan::Read() {
    platform::CallOnMainThread([this] { Begin(); });
    if (kind == Kind::none || (kind == Kind::rescan && isInternal)) {
        kind = Kind::none;
        return true;
    }
    if (isInternal) {
        ReadInternalBlocks(found);
        return true;
    }
    files = platform::ListFiles(path, L"dwg");
    if (files.empty())
        return false;
    if (kind == Kind::first)
        for (const auto& file : files)
            found.push_back(MakeBlock(file));
    taken.resize(files.size());
    return true;
}

void DirectoryScan::Begin() {
    if (directory.blocks.empty())
        kind = Kind::first;
    else if (!directory.loaded)
        kind = Kind::rescan;
    isInternal = directory.isInternal;
    path = directory.path;
    if (kind != Kind::none)
        SetDirectoryCell(directory, dirStateColumn, L"D");
}

void DirectoryScan::Prepare() {
    if (kind != Kind::rescan)
        return;
    if (compared) {
        for (std::size_t index = 0; index < files.size(); ++index)
            if (!taken[index])
                found.push_back(MakeBlock(files[index]));
    } else if (titlesNeeded && !titlesMade) {
        for (std::size_t index = next; index < files.size(); ++index)
            titles.emplace(platform::TitleOf(files[index].name), index);
        titlesMade = true;
    }
}

bool DirectoryScan::Apply(const HopBudget& budget) {
    if (kind == Kind::none)
        return true;
    if (kind == Kind::first) {
        ApplyFirst();
        return true;
    }
    if (!compared) {
        compared = Compare(budget);
        return compared && takenCount == files.size();
    }
    AddFound();
    return true;
}

void DirectoryScan::ApplyFirst() {
    AddFound();
    directory.dirty = true;
    BrowserWindow* const window = theBlockDlg;
    const bool shown = window != nullptr && IsShown(directory);
    if (!shown)
        ReleaseImages(directory);
    directory.ResetImageLists(true);
    if (shown)
        AttachImages(*window, &directory);
}

void DirectoryScan::AddFound() {
    for (auto& block : found) {
        directory.blocks.push_back(block.get());
        static_cast<void>(block.release());
    }
    directory.dirty = true;
}

/// Takes the first file of that name that no Block has; without one, gives what stands behind the last.
std::size_t DirectoryScan::TakeFile(const std::wstring& name) {
    std::size_t index = files.size();
    if (!titlesNeeded) {
        index = next++;
    } else if (const auto title = titles.find(name); title != titles.end()) {
        index = title->second;
        titles.erase(title);
    }
    if (index < files.size()) {
        taken[index] = true;
        ++takenCount;
    }
    return index;
}

/// False where there is more to compare.
bool DirectoryScan::Compare(const HopBudget& budget) {
    if (!placed)
        place = directory.blocks.begin();
    placed = true;
    while (place != directory.blocks.end()) {
        Block* const block = *place;
        if (!titlesNeeded && (next == files.size() || platform::TitleOf(files[next].name) != block->name)) {
            titlesNeeded = true;
            return false;
        }
        const std::size_t index = TakeFile(block->name);
        if (index < files.size()) {
            if (files[index].statusKnown)
                block->status = StatusOf(files[index].status);
            ++place;
        } else {
            ReleaseBlockRows(directory);
            place = directory.blocks.erase(place);
            delete block;
            directory.dirty = true;
        }
        if (budget.Spent())
            return place == directory.blocks.end();
    }
    return true;
}
