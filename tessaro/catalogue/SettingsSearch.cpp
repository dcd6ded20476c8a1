#include "tessaro/catalogue/SettingsSearch.h"

#include "editor/sdk/editor.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/Log.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"

#include <array>

namespace {

constexpr const wchar_t* kIniName = L"tessaro35.ini";
constexpr const wchar_t* kCacheName = L"tessaro35.cache";

std::wstring Located() {
    std::array<wchar_t, 512> found{};
    if (acedFindFile(kIniName, found.data(), found.size()) != RTERROR)
        return found.data();
    const std::wstring beside = platform::Join(moduleFolder, kIniName);
    return platform::FileExists(beside) ? beside : platform::Join(UserFolder(), kIniName);
}

} // namespace

void FindSettings() {
    const std::wstring located = Located();
    Log(L"Ini located at %s\n", located.c_str());
    const std::wstring folder = platform::SplitPath(located).driveAndFolder();
    iniPath = folder + kIniName;
    cachePath = folder + kCacheName;
}

std::wstring UserFolder() {
    std::wstring folder = platform::Join(platform::DocumentsFolder(), L"Tessaro");
    if (!platform::FileExists(folder))
        platform::CreateFolder(folder);
    return folder;
}
