#include "tessaro/reading/DirectoryUsers.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/ShownImages.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace {

struct Users {
    std::mutex lock;
    const Directory* reading = nullptr; ///< by the worker; guarded by `lock`
    const Directory* saving = nullptr;  ///< by the one that reads; guarded by `lock`
    std::vector<Directory*> retired;    ///< owned; guarded by `lock`

    // Main thread.
    const Directory* rows = nullptr;    ///< whose Blocks the block list holds
    std::vector<const Directory*> held; ///< as often as they are
};

// Never destroyed: the worker may still be there at the end of the process.
Users& users = *new Users;

void FreeUnused() {
    std::vector<Directory*> unused;
    {
        const std::lock_guard guard(users.lock);
        const auto used = std::partition(users.retired.begin(), users.retired.end(), [](const Directory* directory) {
            return directory == users.reading || directory == users.rows;
        });
        unused.assign(used, users.retired.end());
        users.retired.erase(used, users.retired.end());
    }
    for (Directory* directory : unused) {
        ReleaseImages(*directory);
        delete directory;
    }
}

} // namespace

void BeginReading(Directory* directory) {
    const std::lock_guard guard(users.lock);
    users.reading = directory;
}

bool BeginReadingIfListed(Directory* directory) {
    bool listed = false;
    platform::CallOnMainThread([&] {
        listed = BeginSaving(directory);
        if (listed)
            BeginReading(directory);
    });
    return listed;
}

bool BeginSaving(const Directory* directory) {
    if (std::find(directories.begin(), directories.end(), directory) == directories.end())
        return false;
    const std::lock_guard guard(users.lock);
    users.saving = directory;
    return true;
}

void EndSaving() {
    const std::lock_guard guard(users.lock);
    users.saving = nullptr;
}

bool MayBeSaved(const Directory* directory) {
    const std::lock_guard guard(users.lock);
    return users.saving == directory;
}

void EndReading() {
    {
        const std::lock_guard guard(users.lock);
        users.reading = nullptr;
        users.saving = nullptr;
        if (users.retired.empty())
            return;
    }
    platform::CallOnMainThread(FreeUnused);
}

HeldDirectory::HeldDirectory(const Directory* directory) : held(directory) {
    users.held.push_back(held);
}

HeldDirectory::~HeldDirectory() {
    users.held.erase(std::ranges::find(users.held, held));
}

bool IsHeld(const Directory* directory) {
    return std::ranges::find(users.held, directory) != users.held.end();
}

void EmptyBlockRows(BrowserWindow& window) {
    window.EmptyBlockList();
    users.rows = nullptr;
    FreeUnused();
}

void TakeBlockRows(const Directory& directory) {
    users.rows = &directory;
}

void ReleaseBlockRows(const Directory& directory) {
    if (users.rows != &directory)
        return;
    if (BrowserWindow* window = theBlockDlg)
        window->EmptyBlockList();
    users.rows = nullptr;
}

void RetireDirectory(Directory* directory) {
    {
        const std::lock_guard queue(loader.cs);
        loader.loadQueue.remove(directory);
        const std::lock_guard guard(users.lock);
        users.retired.push_back(directory);
        if (users.reading == directory && loader.pause < 1) {
            ++loader.pause;
            loader.kickevent.SetEvent();
        }
    }
    FreeUnused();
}
