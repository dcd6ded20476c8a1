#include "tests/reading/LoaderFixture.h"

#include "tessaro/catalogue/IniStore.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/LoaderThreads.h"

#include <atomic>
#include <thread>

namespace tests {

LoaderTest::LoaderTest() {
    answer = [this](HelperCall& call) {
        Watch(call.path);
        return kHelperFalse;
    };
    iniPath = platform::FromNarrow((folder.path() / "tessaro35.ini").string());
    cachePath = platform::FromNarrow((folder.path() / "tessaro35.cache").string());
    readDirEveryTime = onlyCacheCurrent = delCacheMemoryOnClose = 0;
    window.onSelect = [](Directory* directory) { ShowDirectory(directory); };
}

LoaderTest::~LoaderTest() {
    Release();
    Close();
    EXPECT_EQ(window.callsFromOtherThreads, 0) << "the window belongs to the main thread";
    theBlockDlg = nullptr;
    dialogOpen = false;
    currentDirectory = nullptr;
    for (Directory* directory : directories)
        delete directory;
    directories.clear();
    loader.loadQueue.clear();
    loader.startGate.ResetEvent();
    loader.kickevent.ResetEvent();
    loader.pause = 0;
    loader.quit = false;
    ForgetIniFile(iniPath);
}

void LoaderTest::Watch(const std::wstring& path) {
    const platform::PathParts parts = platform::SplitPath(path);
    const std::wstring parent = platform::SplitPath(parts.folder.substr(0, parts.folder.size() - 1)).name;
    const std::string drawing = platform::ToNarrow(parent + L"/" + parts.name);
    std::unique_lock guard(watchLock);
    examined.push_back(drawing);
    if (drawing != heldDrawing)
        return;
    held = true;
    released.wait(guard, [this] { return heldDrawing.empty(); });
    held = false;
}

void LoaderTest::WriteDrawing(const std::string& name, const std::string& title, const std::string& bytes) {
    folder.write(std::filesystem::path(name) / (title + ".dwg"), bytes);
}

Directory* LoaderTest::AddFolder(const std::string& name, std::initializer_list<const char*> titles) {
    std::filesystem::create_directory(folder.path() / name);
    for (const char* title : titles)
        WriteDrawing(name, title);
    auto* const directory = new Directory;
    directory->path = platform::FromNarrow((folder.path() / name).string());
    directory->description = platform::FromNarrow(name);
    directory->cacheFile = CacheFileName(NextCacheNumber());
    directories.push_back(directory);
    directory->listIndex = window.InsertDirectoryRow(directory->description, directory);
    return directory;
}

void LoaderTest::Open() {
    theBlockDlg = &window;
    StartLoader(waits);
    ValidateDirs();
    dialogOpen = true;
}

void LoaderTest::Close() {
    if (!loaderThreads.open)
        return;
    if (!loaderThreads.closing)
        StopLoader();
    WaitForLastClose();
}

bool LoaderTest::ServeUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    std::atomic<bool> done{false};
    std::thread ticker([&] {
        while (!done) {
            platform::WakeMainThread();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    bool met = false;
    platform::ServeMainThreadUntil([&] {
        met = met || condition();
        return met || std::chrono::steady_clock::now() > end;
    });
    done = true;
    ticker.join();
    return met;
}

void LoaderTest::ServeFor(std::chrono::milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    ServeUntil([&] { return std::chrono::steady_clock::now() > end; });
}

bool LoaderTest::AllLoaded() const {
    for (const Directory* directory : directories)
        if (!directory->loaded)
            return false;
    return true;
}

bool LoaderTest::ServeUntilAllLoaded() {
    return ServeUntil([this] { return AllLoaded(); });
}

bool LoaderTest::ServeUntilIdle() {
    return ServeUntil([] {
        const std::lock_guard queue(loader.cs);
        return loader.pause == 0 && loader.loadQueue.empty();
    });
}

std::vector<std::string> LoaderTest::Examined() const {
    const std::lock_guard guard(watchLock);
    return examined;
}

void LoaderTest::HoldAt(const std::string& drawing) {
    const std::lock_guard guard(watchLock);
    heldDrawing = drawing;
}

bool LoaderTest::ServeUntilHeld() {
    return ServeUntil([this] {
        const std::lock_guard guard(watchLock);
        return held;
    });
}

void LoaderTest::Release() {
    const std::lock_guard guard(watchLock);
    heldDrawing.clear();
    released.notify_all();
}

Block* LoaderTest::BlockOf(const Directory& directory, const std::wstring& name) {
    for (Block* block : directory.blocks)
        if (block->name == name)
            return block;
    return nullptr;
}

std::vector<std::wstring> LoaderTest::Names(const Directory& directory) {
    std::vector<std::wstring> names;
    for (const Block* block : directory.blocks)
        names.push_back(block->name);
    return names;
}

RecorderWindow::DirectoryRow& LoaderTest::RowOf(const Directory& directory) {
    return window.directoryRows.at(static_cast<std::size_t>(directory.listIndex));
}

} // namespace tests
