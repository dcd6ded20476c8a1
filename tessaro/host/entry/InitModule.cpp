#include "editor/sdk/editor.h"
#include "tessaro/host/Log.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/host/entry/Commands.h"
#include "tessaro/host/entry/Lifecycle.h"
#include "tessaro/host/entry/Registry.h"
#include "tessaro/host/entry/Toolbar.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/SharedLibrary.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/Time.h"

namespace {

constexpr const wchar_t* kModuleFile = L"tessaro24-64.arx";
constexpr const wchar_t* kInterfaceModule = L"acISMui.arx";

std::wstring FolderOf(void* module) {
    std::wstring folder = platform::SplitPath(platform::GetModuleFileName(module)).driveAndFolder();
    if (!folder.empty() && platform::IsSeparator(folder.back()))
        folder.pop_back();
    return folder;
}

void AddCommands() {
    Log(L"Add Commands\n");
    AcEdCommandStack* const commands = CommandStack();
    if (commands == nullptr)
        return;
    commands->addCommand(kCommandGroup, L"TESSARO", L"TESSARO", ACRX_CMD_MODAL, TessaroCommand, nullptr, -1,
                         moduleHandle);
    commands->addCommand(kCommandGroup, L"NORVANETESSAROOPEN", L"NORVANETESSAROOPEN", ACRX_CMD_SESSION, OpenCommand,
                         nullptr, -1, moduleHandle);
}

void InitModule() {
    platform::SetMainThread();
    SetModuleInfo();
    const std::wstring time = platform::FormatTime(platform::CurrentTime(), L"%x %X");
    Log(L"____________________________________________ Time=%s Ver=%s\n", time.c_str(), versionText.c_str());
    LocalPath = FolderOf(moduleHandle);
    AddCommands();
    const std::wstring date = platform::FromNarrow(__DATE__), clock = platform::FromNarrow(__TIME__);
    acutPrintf(L"%s Loaded! (%s, %s)\n", versionText.c_str(), date.c_str(), clock.c_str());
    acutPrintf(L"Use the command 'tessaro' to launch Tessaro.\n");
    NorvaneSetupToolbar();
}

} // namespace

void SetModuleInfo() {
    moduleHandle = platform::GetModuleHandle(kModuleFile);
    versionText = L"3.9.10";
    moduleFolder = FolderOf(moduleHandle);
}

void OnInitApp(void* pkt) {
    AcRxDynamicLinker* const linker = DynamicLinker();
    if (linker != nullptr)
        linker->registerAppMDIAware(pkt);
    InitModule();
    if (linker != nullptr && platform::GetModuleHandle(kInterfaceModule) == nullptr)
        linker->loadModule(kInterfaceModule, false, true);
}
