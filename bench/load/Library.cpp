#include "bench/load/Library.h"

#include "tessaro/catalogue/IniStore.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int kUsualCount = 100'000, kPerFolder = 200;

/// A library that was made to its end has this beside it.
fs::path Mark(const fs::path& library) {
    return library.string() + ".whole";
}

void Make(const fs::path& library, int count) {
    fs::remove_all(library);
    const double start = Seconds();
    const std::string command = std::string("'" TESSARO_BIN_DIR "/make-library' --count ") + std::to_string(count) +
                                " --folders " + std::to_string(std::max(1, count / kPerFolder)) + " '" +
                                library.string() + "' > /dev/null";
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("no library");
    std::ofstream(Mark(library)) << count << '\n';
    std::printf("make-library of %d drawings: %.1f s\n", count, Seconds() - start);
    std::fflush(stdout);
}

} // namespace

int DrawingCount() {
    const char* const wanted = std::getenv("TESSARO_LOAD_COUNT");
    const int count = wanted == nullptr ? 0 : std::atoi(wanted);
    return count > 0 ? count : kUsualCount;
}

const std::vector<fs::path>& LibraryFolders() {
    static const std::vector<fs::path> folders = [] {
        const fs::path library =
            fs::path(TESSARO_BIN_DIR).parent_path() / ("load-library-" + std::to_string(DrawingCount()));
        if (!fs::exists(Mark(library)))
            Make(library, DrawingCount());
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(fs::canonical(library)))
            found.push_back(entry.path());
        std::sort(found.begin(), found.end());
        return found;
    }();
    return folders;
}

LargeCatalogue::LargeCatalogue(std::size_t folders) {
    platform::SetMainThread();
    host.documents().create();
    moduleFolder = LocalPath = platform::FromNarrow(TESSARO_BIN_DIR);
    versionText = L"3.9.10";
    iniPath = platform::FromNarrow((place.path() / "tessaro35.ini").native());
    cachePath = platform::FromNarrow((place.path() / "tessaro35.cache").native());
    columnWidths = {140, 35, 150, 60, 105, 105};
    dirColumnWidths = {80, 40, 20};
    setupEvent.SetEvent();
    loader.pause = 0; // A close leaves it raised for the next worker; the passes over the library have none.
    for (std::size_t folder = 0; folder < std::min(folders, LibraryFolders().size()); ++folder) {
        auto* const directory = new Directory;
        directory->path = platform::FromNarrow(LibraryFolders()[folder].native());
        directory->description = platform::FromNarrow(LibraryFolders()[folder].filename().native());
        directory->cacheFile = CacheFileName(static_cast<int>(folder) + 1);
        directories.push_back(directory);
    }
}

LargeCatalogue::~LargeCatalogue() {
    WaitForLastClose();
    Forget();
}

void LargeCatalogue::Forget() {
    currentDirectory = nullptr;
    for (const Directory* directory : directories)
        delete directory;
    directories.clear();
    DeleteSchemes();
    ForgetIniFile(iniPath);
}

void OnWorker(const std::function<void()>& work) {
    std::atomic<bool> done{false};
    std::exception_ptr thrown;
    std::thread worker([&] {
        try {
            work();
        } catch (...) {
            thrown = std::current_exception();
        }
        done = true;
        platform::WakeMainThread();
    });
    platform::ServeMainThreadUntil([&] { return done.load(); });
    worker.join();
    if (thrown)
        std::rethrow_exception(thrown);
}

double Seconds() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double MegabytesInMemory() {
    std::ifstream in("/proc/self/statm");
    double pages = 0;
    in >> pages >> pages;
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}
