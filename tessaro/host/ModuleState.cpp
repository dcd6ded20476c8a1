#include "tessaro/host/ModuleState.h"

void* moduleHandle = nullptr;
std::wstring versionText;
std::wstring moduleFolder;
std::wstring LocalPath;
bool firstDrawing = true;
bool closed = false;
std::wstring browseFolder;
OsVersion osVersion;

// Never destroyed: threads may still wait for them when the process ends.
platform::Event& setupEvent = *new platform::Event(platform::Event::Kind::ManualReset);
LoaderState& loader = *new LoaderState;

std::vector<std::wstring> askedBlocks;

std::atomic<BrowserWindow*> theBlockDlg{nullptr};
std::atomic<bool> dialogOpen{false};
std::atomic<Directory*> currentDirectory{nullptr};
std::list<Directory*> directories;

std::wstring iniPath;
std::wstring cachePath;
std::array<int, 6> columnWidths{};
std::array<int, 3> dirColumnWidths{};
int blockInsert = 0;
int readDirEveryTime = 0;
int overlayXRef = 0;
int demandLoadCache = 0;
int onlyCacheCurrent = 0;
int delCacheMemoryOnClose = 0;
int backupIni = 0;
int printScale = 4;
int printType = 0;
int useCompression = 1;

std::atomic<Rgb> backColor{Rgb{}};
std::atomic<Rgb> foreColor{Rgb{}};

std::wstring pendingOpenPath;
