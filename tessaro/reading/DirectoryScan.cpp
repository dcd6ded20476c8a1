#include "tessaro/reading/DirectoryScan.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/ShownImages.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/reading/BlockRows.h"
#include "tessaro/reading/DirectoryUsers.h"
#include "tessaro/reading/HopBudget.h"
#include "tessaro/reading/InternalBlocks.h"

#include <list>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

/// What the main thread says of a Directory at the start of its scan.
struct ScanOrder {
    bool first = false, rescan = false, internal = false;
    std::wstring path;
};

ScanOrder BeginScan(const Directory& directory) {
    ScanOrder order;
    platform::CallOnMainThread([&] {
        order.first = directory.blocks.empty();
        order.rescan = !order.first && !directory.loaded;
        order.internal = directory.isInternal;
        order.path = directory.path;
        if (order.first || order.rescan)
            SetDirectoryCell(directory, dirStateColumn, L"D");
    });
    return order;
}

BlockStatus StatusOf(const platform::FileStatus& file) {
    return {file.size, file.created, file.modified};
}

std::unique_ptr<Block> MakeBlock(std::wstring name, const platform::FileStatus& file) {
    auto block = std::make_unique<Block>();
    block->name = std::move(name);
    block->status = StatusOf(file);
    block->created = block->status.m_ctime;
    block->modified = block->status.m_mtime;
    return block;
}

std::wstring Title(const platform::FoundFile& file) {
    return platform::SplitPath(file.name).name;
}

void ApplyFirstScan(Directory& directory, NewBlocks& found) {
    for (auto& block : found)
        directory.blocks.push_back(block.release());
    directory.dirty = true;
    BrowserWindow* const window = theBlockDlg;
    const bool shown = window != nullptr && IsShown(directory);
    if (!shown)
        ReleaseImages(directory);
    directory.ResetImageLists(true);
    if (shown)
        AttachImages(*window, &directory);
}

bool FirstScan(Directory& directory, const ScanOrder& order) {
    NewBlocks found;
    if (order.internal) {
        ReadInternalBlocks(found);
    } else {
        const auto files = platform::ListFiles(order.path, L"dwg");
        if (files.empty())
            return false;
        for (const auto& file : files)
            found.push_back(MakeBlock(Title(file), file.status));
    }
    platform::CallOnMainThread([&] { ApplyFirstScan(directory, found); });
    return true;
}

/// The comparison of Blocks and files, in calls on the main thread that each do a part.
class Rescan {
public:
    Rescan(Directory& compared, const std::vector<platform::FoundFile>& found)
        : directory(compared), files(found), taken(found.size()) {
        for (std::size_t index = 0; index < files.size(); ++index)
            titles.emplace(Title(files[index]), index);
    }

    void Run() {
        platform::CallOnMainThread([this] { place = directory.blocks.begin(); });
        for (bool more = true; more;)
            platform::CallOnMainThread([&] { more = CompareSome(); });
        AddNew();
    }

private:
    bool CompareSome() {
        const HopBudget budget;
        while (place != directory.blocks.end()) {
            Block* const block = *place;
            const auto title = titles.find(block->name);
            if (title != titles.end()) {
                if (const platform::FoundFile& file = files[title->second]; file.statusKnown)
                    block->status = StatusOf(file.status);
                taken[title->second] = true;
                titles.erase(title);
                ++place;
            } else {
                ReleaseBlockRows(directory);
                place = directory.blocks.erase(place);
                delete block;
                directory.dirty = true;
            }
            if (budget.Spent())
                return true;
        }
        return false;
    }

    void AddNew() {
        NewBlocks added;
        for (std::size_t index = 0; index < files.size(); ++index)
            if (!taken[index])
                added.push_back(MakeBlock(Title(files[index]), files[index].status));
        if (added.empty())
            return;
        platform::CallOnMainThread([&] {
            for (auto& block : added)
                directory.blocks.push_back(block.release());
            directory.dirty = true;
        });
    }

    Directory& directory;
    const std::vector<platform::FoundFile>& files;
    std::unordered_multimap<std::wstring, std::size_t> titles; ///< places in `files` that no Block has taken
    std::vector<bool> taken;
    std::list<Block*>::iterator place; ///< only the worker changes the list
};

} // namespace

bool ScanDirectory(Directory& directory) {
    const ScanOrder order = BeginScan(directory);
    if (order.first)
        return FirstScan(directory, order);
    if (!order.rescan || order.internal)
        return true;
    const auto files = platform::ListFiles(order.path, L"dwg");
    if (files.empty())
        return false;
    Rescan(directory, files).Run();
    return true;
}
