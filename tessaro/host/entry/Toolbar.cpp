#include "tessaro/host/entry/Toolbar.h"

#include "tessaro/host/Log.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/host/entry/DllBase.h"
#include "tessaro/host/entry/Registry.h"
#include "tessaro/host/entry/Ribbon.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Resources.h"
#include "tessaro/platform/SharedLibrary.h"

namespace {

using AddToToolbar = dll::stdcall::dll6<int, std::wstring, std::wstring, void*, unsigned int, int, unsigned long>;
using RemoveFromToolbar = dll::stdcall::dll1<int, std::wstring>;

constexpr const wchar_t* kToolbarModule = L"norvanetoolbar-24-64.arx";
constexpr const wchar_t* kCommand = L"tessaro\n";
constexpr const wchar_t* kTitle = L"Tessaro";
constexpr unsigned int kPictureResource = 112;

/// The host's edition without toolbars.
bool IsEditionWithoutToolbars() {
    return platform::GetModuleHandle(L"aclt.exe") != nullptr;
}

bool AddButton() {
    const AddToToolbar add(false, kToolbarModule, L"AddToToolbar");
    if (!add.IsValid())
        return false;
    Log(L"AddToToolbar\n");
    add(kCommand, kTitle, moduleHandle, kPictureResource, 0, 0);
    return true;
}

void LoadToolbarModule(const std::wstring& file) {
    Log(L"LoadToolbarModule\n");
    if (AcRxDynamicLinker* const linker = DynamicLinker())
        linker->loadModule(file.c_str(), false, true);
    Log(L"connect to toolbar\n");
    if (!AddButton())
        Log(L"Could not load toolbar.\n");
}

} // namespace

int NorvaneSetupToolbar() {
    Log(L"SetupToolbar\n");
    if (SetupRibbon(moduleFolder, kCommand, kTitle, platform::FindResource(moduleHandle, kPictureResource)))
        return 1;
    if (IsEditionWithoutToolbars())
        return 0;
    if (AddButton())
        return 1;
    const std::wstring file = platform::Join(moduleFolder, kToolbarModule);
    if (platform::FileExists(file))
        LoadToolbarModule(file);
    else
        Log(L"Toolbar not found.\n");
    return 1;
}

void RemoveToolbar() {
    Log(L"removetoolbar\n");
    if (IsEditionWithoutToolbars())
        return;
    const RemoveFromToolbar remove(false, kToolbarModule, L"RemoveFromToolbar");
    if (!remove.IsValid())
        return;
    Log(L"removefromtoolbar\n");
    remove(kCommand);
}
