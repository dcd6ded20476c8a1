#include "tessaro/host/entry/Lifecycle.h"

#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/Log.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/host/entry/Border.h"
#include "tessaro/host/entry/Registry.h"
#include "tessaro/placement/CmdLineReactor.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"

#include <sys/utsname.h>

namespace {

OsVersion ReadOsVersion() {
    utsname names{};
    if (uname(&names) != 0)
        return {};
    return {platform::FromNarrow(names.sysname), platform::FromNarrow(names.release),
            platform::FromNarrow(names.machine)};
}

void Setup() {
    osVersion = ReadOsVersion();
    browseFolder = platform::CurrentFolder();
    if (AcEditor* const editor = Editor())
        editor->addReactor(&cmdLineReactor);
    setupEvent.SetEvent();
}

void FreeDirectories() {
    currentDirectory = nullptr;
    while (!directories.empty()) {
        Directory* const directory = directories.front();
        directories.pop_front();
        SaveAndFreeImages(*directory);
        delete directory;
    }
}

void CloseAll() {
    if (AcEditor* const editor = Editor())
        editor->removeReactor(&cmdLineReactor);
    StopLoader();
    // With a dialog open its worker still reads the records that are about to go.
    WaitForLastClose();
    EndAtBorder(L"SaveIni", [] { SaveIni(true); });
    FreeDirectories();
}

} // namespace

void OnLoadDrawing() {
    if (firstDrawing) {
        firstDrawing = false;
        Log(L"LoadIni\n");
        EndAtBorder(L"LoadIni", LoadIni);
        Log(L"Setup\n");
        Setup();
    }
    Log(L"ResetDrawing\n");
    askedBlocks.clear();
}

void OnUnloadDrawing() {
    RequeueCurrentDirectory();
}

void OnQuit() {
    if (!closed) {
        closed = true;
        Log(L"CloseAll\n");
        CloseAll();
    }
    Log(L"removeGroup\n");
    if (AcEdCommandStack* const commands = CommandStack())
        commands->removeGroup(kCommandGroup);
    Log(L"Done\n");
}
