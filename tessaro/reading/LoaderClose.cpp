#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/catalogue/ShownImages.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Memory.h"
#include "tessaro/reading/DirectoryUsers.h"
#include "tessaro/reading/Loader.h"
#include "tessaro/reading/LoaderThreads.h"

#include <exception>
#include <functional>
#include <mutex>
#include <vector>

namespace {

constexpr int kCloseCommand = 248;
constexpr int kReportView = 3;

void StoreAndClear() {
    BrowserWindow* const window = theBlockDlg;
    if (window != nullptr)
        window->StoreDlgState();
    dialogOpen = false;
    if (window == nullptr)
        return;
    EmptyBlockRows(*window);
    AttachImages(*window, nullptr);
    window->SetView(kReportView); // column widths can be read in report view only
    columnWidths = window->BlockColumnWidths();
    dirColumnWidths = window->DirectoryColumnWidths();
}

/// A step whose failure keeps none of the others back.
void Step(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::exception& exception) {
        LogException(L"FinishClose", exception.what());
    }
}

/// What StoreDlgState would do on the main thread, which goes on answering meanwhile.
void SaveCurrentPictures() {
    Directory* const current = currentDirectory;
    if (!BeginReadingIfListed(current))
        return;
    const ReadingScope reading;
    SaveIfDirty(*current);
}

void FreeAllImages() {
    std::vector<Directory*> all;
    platform::CallOnMainThread([&] {
        if (delCacheMemoryOnClose != 0)
            all.assign(directories.begin(), directories.end());
    });
    for (Directory* directory : all) {
        if (!BeginReadingIfListed(directory))
            continue;
        const ReadingScope reading;
        SaveAndFreeImages(*directory);
    }
    if (!all.empty())
        platform::ReturnFreedMemory();
}

} // namespace

void FinishClose() {
    Step(SaveCurrentPictures);
    platform::CallOnMainThread(StoreAndClear);
    Step([] { SaveIni(false); });
    platform::CallOnMainThread([] {
        // In one call, so that the window is not destroyed while the pointer still names it.
        if (BrowserWindow* const window = theBlockDlg.exchange(nullptr))
            window->PostCommand(kCloseCommand);
    });
    Step(FreeAllImages);
}

void StopLoader() {
    {
        const std::lock_guard queue(loader.cs);
        loader.quit = true;
        ++loader.pause;
        loader.kickevent.SetEvent();
        loaderThreads.closing = loaderThreads.open.load();
    }
    StartThread(L"FinishClose", [] {
        loader.quitdone.Wait();
        FinishClose();
        {
            const std::lock_guard queue(loader.cs);
            loader.quit = false;
            loaderThreads.open = false;
            loaderThreads.closing = false;
        }
        platform::WakeMainThread();
    });
}

void WaitForLastClose() {
    platform::ServeMainThreadUntil([] { return !loaderThreads.closing && loaderThreads.deletes == 0; });
}
