#include "tessaro/reading/Loader.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/Log.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/reading/DirectoryUsers.h"
#include "tessaro/reading/LoaderThreads.h"

#include <algorithm>
#include <exception>
#include <mutex>

namespace {

constexpr int kInterrupted = 1;
constexpr int kQuit = 2;

/// LoadDir on the head of the queue, which then loses its head, whichever Directory that is by now.
void ReadHead() {
    Log(L"LoopLoadDir: cs.Lock1\n");
    std::unique_lock queue(loader.cs);
    if (!loader.loadQueue.empty()) {
        Directory* const head = loader.loadQueue.front();
        BeginReading(head);
        Log(L"LoopLoadDir: cs.Unlock1\n");
        queue.unlock();
        {
            const ReadingScope reading;
            Log(L"LoopLoadDir: LoadDir\n");
            LoadDir(head);
        }
        Log(L"LoopLoadDir: cs.Lock2\n");
        queue.lock();
        if (!loader.loadQueue.empty())
            loader.loadQueue.pop_front();
    }
    Log(L"LoopLoadDir: cs.Unlock2\n");
}

void WaitForKick(const LoaderWaits& waits) {
    Log(L"LoopLoadDir: kickevent.Lock\n");
    loader.kickevent.Wait(waits.kick);
}

/// One turn of the loop; false where the worker is to end.
bool Turn(const LoaderWaits& waits) {
    try {
        Log(L"LoopLoadDir: check pause\n");
        if (loader.pause < 1) {
            ReadHead();
            WaitForKick(waits);
            return true;
        }
        if (loader.quit)
            return false;
        Log(L"LoopLoadDir: Decrement pause\n");
        --loader.pause;
        WaitForKick(waits);
        return true;
    } catch (int interrupt) {
        if (interrupt == kQuit) {
            Log(L"LoopLoadDir: e==2\n");
            return false;
        }
        Log(L"LoopLoadDir: e==1, Decrement pause\n");
        --loader.pause;
        WaitForKick(waits);
        return true;
    }
}

} // namespace

int LoopLoadDir(LoaderWaits waits) {
    loader.startGate.Wait();
    try {
        while (Turn(waits)) {
        }
    } catch (const std::exception& exception) {
        LogException(L"LoopLoadDir", exception.what());
    } catch (...) {
        LogException(L"LoopLoadDir", "of unknown type");
    }
    Log(L"LoopLoadDir: quitdone\n");
    loader.quitdone.SetEvent();
    return 0;
}

void StartLoader(LoaderWaits waits) {
    loaderThreads.open = true;
    loaderThreads.workerRuns = true;
    StartThread(L"LoopLoadDir", [waits] {
        LoopLoadDir(waits);
        loaderThreads.workerRuns = false;
    });
}

void ValidateDirs() {
    Log(L"ValidateDirs: cs.Lock\n");
    {
        const std::lock_guard queue(loader.cs);
        loader.loadQueue.clear();
        CheckedMark::ClearAll();
        for (auto place = directories.rbegin(); place != directories.rend(); ++place) {
            Directory& directory = **place;
            if (directory.isInternal) {
                directory.loaded = false;
                ReleaseBlockRows(directory);
                for (Block* block : directory.blocks)
                    delete block;
                directory.blocks.clear();
            }
            if (readDirEveryTime != 0)
                directory.loaded = false;
            if (&directory != currentDirectory)
                loader.loadQueue.push_front(&directory);
        }
        if (Directory* const current = currentDirectory)
            loader.loadQueue.push_front(current);
        Log(L"ValidateDirs: kickevent.SetEvent\n");
        loader.kickevent.SetEvent();
        Log(L"ValidateDirs: cs.Unlock\n");
    }
    loader.startGate.SetEvent();
}

void QueueFirst(Directory* directory) {
    const std::lock_guard queue(loader.cs);
    const auto present = std::find(loader.loadQueue.begin(), loader.loadQueue.end(), directory);
    if (present != loader.loadQueue.end())
        loader.loadQueue.erase(present);
    loader.loadQueue.push_front(directory);
    ++loader.pause;
    loader.kickevent.SetEvent();
}

void RequeueCurrentDirectory() {
    Directory* const current = currentDirectory;
    if (!dialogOpen || current == nullptr)
        return;
    current->loaded = false;
    const std::lock_guard queue(loader.cs);
    loader.loadQueue.push_front(current);
    loader.kickevent.SetEvent();
}

void CheckPause() {
    if (loader.pause >= 1)
        throw loader.quit ? kQuit : kInterrupted;
}
