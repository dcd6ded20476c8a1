#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Memory.h"
#include "tessaro/reading/DirectoryUsers.h"
#include "tessaro/reading/Loader.h"

#include <algorithm>
#include <memory>

namespace {

void StoreWindow() {
    if (BrowserWindow* const window = theBlockDlg)
        window->StoreDlgState();
}

std::unique_ptr<Directory> EmptyCopy(const Directory& original) {
    auto copy = std::make_unique<Directory>();
    copy->scaleMode = original.scaleMode;
    copy->rotationMode = original.rotationMode;
    copy->sortStyle = original.sortStyle;
    copy->rotationAngle = original.rotationAngle;
    copy->explode = original.explode;
    copy->multipleInsert = original.multipleInsert;
    copy->repeat = original.repeat;
    copy->useCache = original.useCache;
    copy->showInsPts = original.showInsPts;
    copy->path = original.path;
    copy->description = original.description;
    copy->topIndex = original.topIndex;
    copy->selectedIndex = original.selectedIndex;
    copy->viewMode = original.viewMode;
    copy->listIndex = original.listIndex;
    copy->useLargeImages = original.useLargeImages;
    copy->cacheFile = original.cacheFile;
    copy->schemeName = original.schemeName;
    return copy;
}

} // namespace

void ShowDirectory(Directory* directory) {
    if (directory == currentDirectory)
        return;
    StoreWindow();
    Directory* const old = currentDirectory.exchange(directory);
    if (BrowserWindow* const window = theBlockDlg)
        window->FillBlockControls(true);
    if (onlyCacheCurrent != 0 && old != nullptr) {
        SaveAndFreeImages(*old);
        platform::ReturnFreedMemory();
    }
    QueueFirst(directory);
}

void AddDirectory(const std::wstring& path) {
    StoreWindow();
    auto* const directory = new Directory;
    directory->path = path;
    directory->description = L"New Directory";
    directory->cacheFile = CacheFileName(NextCacheNumber());
    directories.push_back(directory);
    BrowserWindow* const window = theBlockDlg;
    if (window == nullptr)
        return;
    const int row = window->InsertDirectoryRow(directory->description, directory);
    directory->listIndex = row;
    window->SelectDirectoryRow(row);
}

void ReloadDirectory(Directory* directory) {
    StoreWindow();
    const auto place = std::find(directories.begin(), directories.end(), directory);
    if (place == directories.end())
        return;
    Directory* const copy = EmptyCopy(*directory).release();
    *place = copy;
    BrowserWindow* const window = theBlockDlg;
    if (window != nullptr && window->DirectoryAt(copy->listIndex) == directory)
        window->SetDirectoryAt(copy->listIndex, copy);
    ShowDirectory(copy);
    RetireDirectory(directory);
}
