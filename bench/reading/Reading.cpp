#include "bench/reading/Reading.h"

#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"

#include <algorithm>

Reading::Reading() {
    platform::SetMainThread();
    LocalPath = platform::FromNarrow(TESSARO_BIN_DIR);
    theBlockDlg = &window;
    dialogOpen = true;
    currentDirectory = nullptr;
}

Reading::~Reading() {
    theBlockDlg = nullptr;
    dialogOpen = false;
    currentDirectory = nullptr;
    for (const Directory* directory : directories)
        delete directory;
    directories.clear();
}

Directory* Reading::Add(const std::filesystem::path& folder) {
    auto* const directory = new Directory;
    directory->path = platform::FromNarrow(folder.native());
    directory->cacheFile = directory->path + L".cache";
    directory->listIndex = window.InsertDirectoryRow(directory->path, directory);
    directories.push_back(directory);
    return directory;
}

void Reading::ReadAll(bool shown) {
    for (Directory* directory : directories) {
        currentDirectory = shown ? directory : nullptr;
        LoadDir(directory);
        for (auto& row : window.directoryRows)
            row.states.clear();
    }
    currentDirectory = nullptr;
}

void Reading::Invalidate() {
    for (Directory* directory : directories) {
        directory->loaded = false;
        for (Block* block : directory->blocks)
            block->checked = false;
    }
}

void Reading::Empty() {
    for (Directory* directory : directories) {
        for (const Block* block : directory->blocks)
            delete block;
        directory->blocks.clear();
        directory->loaded = false;
        directory->ResetImageLists(true);
    }
}

std::vector<std::filesystem::path> Drawings() {
    std::filesystem::path folder = tests::sharedFolder("drawings");
    if (folder.empty())
        folder = std::filesystem::path(TESSARO_SOURCE_DIR) / "fuzz" / "seeds" / "dwg";
    std::vector<std::filesystem::path> drawings;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".dwg")
            drawings.push_back(entry.path());
    std::sort(drawings.begin(), drawings.end());
    return drawings;
}
