#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/reading/DirectoryUsers.h"
#include "tessaro/reading/Loader.h"
#include "tessaro/reading/LoaderThreads.h"

#include <algorithm>
#include <mutex>
#include <thread>

namespace {

enum class Taken { yes, later, gone };

/// Takes the Directory out of the queue, of both lists of the window and of the catalogue, and its cache file with it,
/// since the next Directory may get its name. Not while that file is being written or a dialog works on the Directory,
/// nor where it has left the catalogue by another way.
Taken TakeOut(Directory* directory, int row) {
    const auto place = std::find(directories.begin(), directories.end(), directory);
    if (place == directories.end())
        return Taken::gone;
    if (MayBeSaved(directory) || IsHeld(directory))
        return Taken::later;
    const std::lock_guard queue(loader.cs);
    loader.loadQueue.remove(directory);
    if (BrowserWindow* const window = theBlockDlg) {
        // The user may have moved rows since; the item data tells the row.
        for (int other = 0; other < window->DirectoryRowCount(); ++other)
            if (window->DirectoryAt(other) == directory)
                row = other;
        if (window->DirectoryAt(row) == directory)
            window->DeleteDirectoryRow(row);
        EmptyBlockRows(*window);
        for (int next = row; next < window->DirectoryRowCount(); ++next)
            if (Directory* const follower = window->DirectoryAt(next))
                follower->listIndex = next;
    }
    if (currentDirectory == directory)
        currentDirectory = nullptr;
    directories.erase(place);
    if (!directory->cacheFile.empty())
        platform::RemoveFile(directory->cacheFile);
    RetireDirectory(directory);
    return Taken::yes;
}

struct DeleteScope {
    DeleteScope() = default;
    ~DeleteScope() {
        --loaderThreads.deletes;
        platform::WakeMainThread();
    }
    DeleteScope(const DeleteScope&) = delete;
    DeleteScope& operator=(const DeleteScope&) = delete;
};

} // namespace

void StartDeleteDirectory(int row, LoaderWaits waits) {
    // Read here and not by the thread, so that a close that overtakes it takes no effect away.
    BrowserWindow* const window = theBlockDlg;
    Directory* const directory = window != nullptr ? window->DirectoryAt(row) : nullptr;
    if (directory == nullptr)
        return;
    ++loaderThreads.deletes;
    StartThread(L"DeleteDirectory", [directory, row, waits] {
        const DeleteScope scope;
        DeleteDirectory(directory, row, waits);
    });
}

void DeleteDirectory(Directory* directory, int row, LoaderWaits waits) {
    // With no worker nobody lowers `pause` any more, and nobody reads.
    while (loader.pause != 0 && loaderThreads.workerRuns)
        std::this_thread::sleep_for(waits.deletePoll);

    auto taken = Taken::later;
    for (;;) {
        platform::CallOnMainThread([&] { taken = TakeOut(directory, row); });
        if (taken != Taken::later)
            return;
        std::this_thread::sleep_for(waits.deletePoll);
    }
}
