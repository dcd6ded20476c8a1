// What the messages leave in the module's state; here the module's code is part of the test's process.
#include "editor/sdk/rx.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/host/entry/Exports.h"
#include "tessaro/host/entry/Lifecycle.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace {

/// Sees each message box.
class BoxWatcher : public platform::UserInterface {
public:
    explicit BoxWatcher(std::function<void(const std::wstring&)> called) : seen(std::move(called)) {
        platform::SetUserInterface(this);
    }
    ~BoxWatcher() override { platform::SetUserInterface(nullptr); }
    BoxWatcher(const BoxWatcher&) = delete;
    BoxWatcher& operator=(const BoxWatcher&) = delete;

    platform::MessageAnswer MessageBox(const std::wstring& text, const std::wstring&, platform::MessageButtons,
                                       platform::MessageIcon) override {
        seen(text);
        return platform::MessageAnswer::Ok;
    }
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override { return {}; }
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return {}; }
    void ShowHelp(const std::wstring&) override {}

private:
    const std::function<void(const std::wstring&)> seen;
};

} // namespace

TEST(ModuleMessages, ALaterDrawingEmptiesTheBlocksAskedAboutAndLoadsNothing) {
    firstDrawing = false;
    askedBlocks = {L"CHAIR", L"DESK"};
    EXPECT_EQ(acrxEntryPoint(AcRx::kLoadDwgMsg, nullptr), 0);
    EXPECT_TRUE(askedBlocks.empty());
    EXPECT_TRUE(iniPath.empty()) << "no settings were sought";
    EXPECT_TRUE(browseFolder.empty()) << "nor was the module set up";
    EXPECT_FALSE(setupEvent.Wait(std::chrono::milliseconds(0)));
    firstDrawing = true;
}

TEST(ModuleMessages, InitialisationInAHostThatOffersNoServicesAnswersWithOk) {
    EXPECT_EQ(acrxSysRegistry(), nullptr);
    EXPECT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, nullptr), 0);
    EXPECT_EQ(versionText, L"3.9.10");
}

TEST(ModuleMessages, WithoutAFileOfItsNameTheModulesFolderIsTheExecutables) {
    SetModuleInfo();
    EXPECT_EQ(moduleHandle, nullptr);
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(moduleFolder, platform::FromNarrow(executable.parent_path().string()));
}

TEST(ModuleMessages, QuittingWritesTheMainCacheThenTheFileOfEachChangedDirectoryAndFreesAll) {
    const tests::TemporaryFolder folder;
    const auto name = [&](const char* file) { return platform::FromNarrow((folder.path() / file).string()); };
    iniPath = name("tessaro35.ini");
    cachePath = name("tessaro35.cache");
    for (const char* file : {"path1_35.cache", "path2_35.cache"}) {
        directories.push_back(new Directory);
        directories.back()->path = name(file);
        directories.back()->cacheFile = name(file);
    }
    directories.back()->dirty = true;
    currentDirectory = directories.front();
    EXPECT_EQ(acrxEntryPoint(AcRx::kQuitMsg, nullptr), 0);
    EXPECT_TRUE(directories.empty());
    EXPECT_EQ(currentDirectory, nullptr);
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "tessaro35.ini"));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "tessaro35.cache"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "path1_35.cache"));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "path2_35.cache"));
    closed = false;
    iniPath.clear();
    cachePath.clear();
    loader.quit = false;
    loader.pause = 0;
}

TEST(ModuleMessages, QuittingSavesTheSettingsFirstThenTheCacheFilesInDisplayOrder) {
    const tests::TemporaryFolder folder;
    const auto name = [&](const char* file) { return platform::FromNarrow((folder.path() / file).string()); };
    iniPath = name("tessaro35.ini");
    cachePath = name("tessaro35.cache");
    // Files that can't be written are told of, each at its turn.
    for (const char* file : {"none/path2_35.cache", "none/path1_35.cache"}) {
        directories.push_back(new Directory);
        directories.back()->cacheFile = name(file);
        directories.back()->dirty = true;
    }
    std::vector<std::size_t> told;
    const BoxWatcher boxes([&](const std::wstring& text) {
        if (!text.starts_with(L"The cache file could not be written to:\n"))
            return;
        EXPECT_TRUE(std::filesystem::exists(folder.path() / "tessaro35.ini"));
        EXPECT_TRUE(std::filesystem::exists(folder.path() / "tessaro35.cache"));
        told.push_back(text.find(L"path2_35") != std::wstring::npos ? 2 : 1);
    });
    EXPECT_EQ(acrxEntryPoint(AcRx::kQuitMsg, nullptr), 0);
    EXPECT_EQ(told, (std::vector<std::size_t>{2, 1}));
    EXPECT_TRUE(directories.empty());
    closed = false;
    iniPath.clear();
    cachePath.clear();
    loader.quit = false;
    loader.pause = 0;
}
