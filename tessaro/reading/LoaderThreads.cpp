#include "tessaro/reading/LoaderThreads.h"

#include "tessaro/host/Log.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"

#include <exception>
#include <thread>
#include <utility>

// Never destroyed: a thread may still wait when the process ends.
LoaderThreads& loaderThreads = *new LoaderThreads;

namespace {

LoaderWaits usualWaits;

} // namespace

LoaderWaits UsualLoaderWaits() {
    return usualWaits;
}

void SetUsualLoaderWaits(LoaderWaits waits) {
    usualWaits = waits;
}

void LogException(const wchar_t* where, const char* what) {
    Log(L"%s: exception %s\n", where, platform::FromNarrow(what).c_str());
}

void StartThread(const wchar_t* name, std::function<void()> body) {
    std::thread([name, work = std::move(body)] {
        try {
            work();
        } catch (const std::exception& exception) {
            LogException(name, exception.what());
        } catch (...) {
            LogException(name, "of unknown type");
        }
    }).detach();
}
