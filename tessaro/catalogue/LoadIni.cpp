#include "tessaro/catalogue/DirectorySection.h"
#include "tessaro/catalogue/IniStore.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/catalogue/OptionsSection.h"
#include "tessaro/catalogue/SchemeSection.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/catalogue/SettingsSearch.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/Log.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"

#include <algorithm>
#include <optional>
#include <unordered_set>

namespace {

void FillDialog(BrowserWindow& window) {
    window.AddScheme(L"<None>");
    for (const auto& [name, scheme] : schemes)
        window.AddScheme(name);
    const Directory* const current = currentDirectory;
    int selected = 0;
    for (Directory* directory : directories) {
        directory->listIndex = window.InsertDirectoryRow(directory->description, directory);
        window.SetDirectoryCell(directory->listIndex, 1,
                                platform::Format(L"%ld", static_cast<long>(directory->blocks.size())));
        if (directory == current) {
            selected = directory->listIndex;
            // The notification of the selection makes it current anew.
            currentDirectory = nullptr;
        }
    }
    window.SelectDirectoryRow(selected);
}

/// A name that is listed twice gives the same scheme twice.
void LoadSchemes() {
    Log(L"Load the MapSchemes\n");
    std::unordered_set<std::wstring> read;
    for (const std::wstring& name : ReadSchemeNames(iniPath))
        if (read.insert(name).second)
            SetScheme(name, ReadSchemeSection(name, iniPath).release());
}

void DeleteUnlisted(const std::vector<std::wstring>& paths) {
    std::unordered_set<std::wstring> listed;
    for (const std::wstring& path : paths)
        listed.insert(platform::ToLower(path));
    for (auto at = directories.begin(); at != directories.end();) {
        Directory* const directory = *at;
        if (listed.contains(platform::ToLower(directory->path))) {
            ++at;
            continue;
        }
        at = directories.erase(at);
        platform::RemoveFile(directory->cacheFile);
        delete directory;
    }
}

void DeleteDirectories() {
    for (const Directory* directory : directories)
        delete directory;
    directories.clear();
}

/// The cache was written after the settings file, which was not touched since.
bool CacheSpeaksForSettings(const std::optional<platform::FileStatus>& before, platform::Time stamp) {
    const auto now = platform::GetFileStatus(iniPath);
    return before && now && now->created != -1 && !now->readOnly && before->modified == stamp;
}

} // namespace

void UpdateDirectories(const std::vector<std::wstring>& paths) {
    DeleteUnlisted(paths);
    std::unordered_map<std::wstring, Directory*> byPath;
    for (Directory* directory : directories)
        byPath.emplace(directory->path, directory);
    CacheNumbers numbers;
    for (const std::wstring& path : paths) {
        Directory*& directory = byPath[path];
        const bool added = directory == nullptr;
        if (added) {
            directory = new Directory;
            directory->path = path;
            directories.push_back(directory);
            directory->cacheFile = CacheFileName(numbers.Next());
        }
        ReadDirectoryDescription(*directory, iniPath);
        if (added)
            ReadDirectorySection(*directory, iniPath);
    }
}

void LoadIni() {
    Log(L"LoadIni\n");
    if (!directories.empty()) {
        if (BrowserWindow* const window = theBlockDlg)
            FillDialog(*window);
        Log(L"LoadIni return\n");
        return;
    }
    if (iniPath.empty())
        FindSettings();
    const auto before = platform::GetFileStatus(iniPath);
    dirColumnWidths = {80, 40, 20};
    Log(L"Load the Inifile\n");
    ReadIniFile(iniPath);
    ReadOptions(iniPath);
    LoadSchemes();
    const MainCacheReading cache = ReadMainCache();
    if (cache.failed)
        DeleteDirectories();
    if (cache.opened && CacheSpeaksForSettings(before, cache.stamp)) {
        Log(L"LoadIni return\n");
        return;
    }
    ReadColumnWidths(iniPath);
    Log(L"Load Directories\n");
    UpdateDirectories(ReadPaths(iniPath));
    Log(L"LoadIni return\n");
}
