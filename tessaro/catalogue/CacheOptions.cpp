#include "tessaro/catalogue/CacheOptions.h"

#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Memory.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"

CacheOptions GetCacheOptions() {
    return {demandLoadCache != 0, onlyCacheCurrent != 0, delCacheMemoryOnClose != 0};
}

void SetCacheOptions(const CacheOptions& options) {
    demandLoadCache = options.demandLoad ? 1 : 0;
    onlyCacheCurrent = options.onlyCurrent ? 1 : 0;
    if (options.onlyCurrent) {
        for (Directory* directory : directories)
            if (directory != currentDirectory && directory->imagesLoaded)
                SaveAndFreeImages(*directory);
        platform::ReturnFreedMemory();
    }
    delCacheMemoryOnClose = options.delOnClose ? 1 : 0;
}

void MoveCacheFiles(const std::wstring& newPath) {
    const platform::PathParts parts = platform::SplitPath(newPath);
    int number = 0;
    for (Directory* directory : directories) {
        const std::wstring moved =
            platform::Format(L"%s%spath%d_35.cache", parts.drive.c_str(), parts.folder.c_str(), ++number);
        platform::MoveFile(directory->cacheFile, moved);
        directory->cacheFile = moved;
    }
    platform::MoveFile(cachePath, newPath);
    cachePath = newPath;
}
