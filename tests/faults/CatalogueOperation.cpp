#include "tests/faults/CatalogueOperation.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/IniStore.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/catalogue/Raster.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"

#include <algorithm>

namespace faults {
namespace {

constexpr int kBlocks = 3;

Picture Coloured(int width, int height, int version) {
    Picture picture(width, height);
    const auto& colour = kStandardColours[static_cast<std::size_t>(version % 16)];
    FillRectangle(picture, 0, 0, width, height, {colour[0], colour[1], colour[2], 0});
    return picture;
}

} // namespace

CatalogueOperation::CatalogueOperation() {
    iniPath = Wide("tessaro35.ini");
    cachePath = Wide("tessaro35.cache");
    Forget();
}

CatalogueOperation::~CatalogueOperation() {
    Forget();
    currentDirectory = nullptr;
    theBlockDlg = nullptr;
    dialogOpen = false;
}

void CatalogueOperation::Forget() const {
    for (const Directory* directory : directories)
        delete directory;
    directories.clear();
    DeleteSchemes();
    ForgetIniFile(iniPath);
}

Directory* CatalogueOperation::Add(const std::string& name, int version) const {
    auto* const directory = new Directory;
    directory->path = Wide(name);
    directory->description = std::to_wstring(version);
    directory->cacheFile = Wide("path" + std::to_string(directories.size() + 1) + "_35.cache");
    for (int block = 1; block <= kBlocks; ++block) {
        directory->LargeForWrite().Add(Coloured(kLargeWidth, kLargeHeight, version));
        directory->SmallForWrite().Add(Coloured(kSmallWidth, kSmallHeight, version));
        directory->blocks.push_back(new Block);
        directory->blocks.back()->name = L"block" + std::to_wstring(block);
        directory->blocks.back()->description = std::to_wstring(version);
        directory->blocks.back()->imageIndex = block;
    }
    directory->imagesLoaded = true;
    directories.push_back(directory);
    return directory;
}

void CatalogueOperation::Fill(int version) const {
    Add("doors", version);
    Add("windows", version);
    SetScheme(L"Scheme " + std::to_wstring(version), new MapScheme);
}

int CatalogueOperation::PicturesOf(const Directory& directory) {
    if (directory.largeImages->Count() != kBlocks + 1 || directory.smallImages->Count() != kBlocks + 1)
        return -1;
    for (int version = 0; version < 16; ++version) {
        bool whole = true;
        for (int slot = 1; slot <= kBlocks; ++slot)
            whole = whole && directory.largeImages->Draw(slot) == Coloured(kLargeWidth, kLargeHeight, version) &&
                    directory.smallImages->Draw(slot) == Coloured(kSmallWidth, kSmallHeight, version);
        if (whole)
            return version;
    }
    return -1;
}

int CatalogueOperation::CachedVersion() const {
    Forget();
    const int before = demandLoadCache;
    demandLoadCache = 1;
    const MainCacheReading reading = ReadMainCache();
    demandLoadCache = before;
    if (!reading.opened || reading.failed || directories.size() != 2)
        return -1;
    const std::wstring version = directories.front()->description;
    const bool whole = std::ranges::all_of(directories, [&](const Directory* directory) {
        return directory->description == version && directory->blocks.size() == kBlocks &&
               std::ranges::all_of(directory->blocks,
                                   [&](const Block* block) { return block->description == version; });
    });
    return whole ? std::stoi(version) : -1;
}

} // namespace faults
