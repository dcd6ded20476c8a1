#pragma once

#include "tessaro/platform/Event.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <list>
#include <mutex>
#include <string>
#include <vector>

struct Block;
class Directory;
class BrowserWindow;

/// Module state: file-scope objects that live from the module's mapping to the end of the process. Unless a comment
/// says otherwise they belong to the main thread.

extern void* moduleHandle;        ///< null where the module's file has another name than its own
extern std::wstring versionText;  ///< "3.9.10"
extern std::wstring moduleFolder; ///< no trailing separator
extern std::wstring LocalPath;    ///< the same folder once more, read by the bridge
extern bool firstDrawing;
extern bool closed;
extern std::wstring browseFolder;

/// What the system says of itself, filled once by Setup.
struct OsVersion {
    std::wstring system, release, machine;
};
extern OsVersion osVersion;

extern platform::Event& setupEvent; ///< manual-reset; SetupDlg waits for it
extern std::vector<std::wstring> askedBlocks;

extern std::atomic<BrowserWindow*> theBlockDlg;  ///< the open window or null; any thread may test it
extern std::atomic<bool> dialogOpen;             ///< read by the worker
extern std::atomic<Directory*> currentDirectory; ///< read by the worker
extern std::list<Directory*> directories;        ///< the catalogue in display order; owned

/// What the loader's threads share. Made once and never destroyed, so that a blocked thread does not hang the exit.
struct LoaderState {
    std::recursive_mutex cs;         ///< guards loadQueue and nothing else
    std::list<Directory*> loadQueue; ///< owns nothing; the head is next
    platform::Event kickevent{platform::Event::Kind::AutoReset};
    platform::Event startGate{platform::Event::Kind::ManualReset};
    platform::Event quitdone{platform::Event::Kind::AutoReset};
    std::atomic<std::int32_t> pause{0};
    std::atomic<bool> quit{false};
};
extern LoaderState& loader;

/// Settings of the ini file; what each means stands at its key in the settings page.
extern std::wstring iniPath;
extern std::wstring cachePath;
extern std::array<int, 6> columnWidths;
extern std::array<int, 3> dirColumnWidths;
extern int blockInsert;
extern int readDirEveryTime;
extern int overlayXRef;
extern int demandLoadCache;
extern int onlyCacheCurrent;
extern int delCacheMemoryOnClose;
extern int backupIni;
extern int printScale;
extern int printType;
extern int useCompression;

/// A colour of three bytes.
struct Rgb {
    std::uint8_t red = 0, green = 0, blue = 0, reserved = 0; ///< four bytes, so that it is read and written whole
    bool operator==(const Rgb&) const = default;
};
/// The host's model-space background and its contrast colour; written when the dialog opens, read by the worker.
extern std::atomic<Rgb> backColor;
extern std::atomic<Rgb> foreColor;

extern std::wstring pendingOpenPath;
