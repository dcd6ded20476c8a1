#include "bench/browser/Catalogue.h"

#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"

#include <cstdint>

std::wstring BlockName(int number) {
    const auto mixed = static_cast<std::uint32_t>(number) * 2654435761U;
    return platform::Format(L"%08x-block-%d", mixed, number);
}

Catalogue::Catalogue() {
    host.documents().create();
    moduleFolder = LocalPath = platform::FromNarrow(TESSARO_BIN_DIR);
    versionText = L"3.9.10";
    iniPath = (place.path() / "tessaro35.ini").wstring();
    cachePath = (place.path() / "tessaro35.cache").wstring();
    columnWidths = {140, 35, 150, 60, 105, 105};
    dirColumnWidths = {80, 40, 20};
    setupEvent.SetEvent();
}

Catalogue::~Catalogue() {
    WaitForLastClose();
    currentDirectory = nullptr;
    for (const Directory* directory : directories)
        delete directory;
    directories.clear();
}

Directory* Catalogue::Add(int blocks, bool files) {
    auto* const directory = new Directory;
    const auto folder = place.path() / ("library" + std::to_string(number));
    directory->path = folder.wstring();
    directory->description = L"Library " + std::to_wstring(number);
    directory->cacheFile = (place.path() / ("path" + std::to_string(number) + "_35.cache")).wstring();
    directory->loaded = directory->imagesLoaded = true;
    for (int each = 0; each < blocks; ++each) {
        auto* const block = new Block;
        block->name = files ? platform::Format(L"block-%06d", each) : BlockName(number * 1000 + each);
        block->description = L"Description " + BlockName(each * 7 + 3);
        block->fileType = each % 8 + 14;
        block->status = {static_cast<std::uint64_t>(each) * 7919 % 100'000, each * 31 % 9973, each * 37 % 9967};
        block->created = block->modified = 1'600'000'000 + each;
        block->checked = block->cached = true;
        directory->blocks.push_back(block);
        if (files)
            place.write(folder / (platform::ToNarrow(block->name) + ".dwg"), "AC1015" + std::string(200, '\0'));
    }
    directories.push_back(directory);
    ++number;
    return directory;
}
