#include "tessaro/catalogue/Settings.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"

namespace {

/// "path12_35" gives 12.
int CacheNumberOf(const std::wstring& cacheFile) {
    constexpr std::size_t prefix = 4;
    const std::wstring title = platform::SplitPath(cacheFile).name;
    return title.size() > prefix ? platform::ToInt(title.substr(prefix)) : 0;
}

} // namespace

CacheNumbers::CacheNumbers() {
    for (const Directory* directory : directories) {
        // The one that a number is sought for.
        if (directory->cacheFile.empty()) {
            hidden = directory != directories.back();
            break;
        }
        taken.insert(CacheNumberOf(directory->cacheFile));
    }
}

int CacheNumbers::Next() {
    while (taken.contains(next))
        ++next;
    return hidden ? next : next++;
}

int NextCacheNumber() {
    return CacheNumbers().Next();
}

std::wstring CacheFileName(int number) {
    const platform::PathParts parts = platform::SplitPath(cachePath);
    return platform::Format(L"%s%spath%d_35.cache", parts.drive.c_str(), parts.folder.c_str(), number);
}
