#include "tessaro/catalogue/OptionsSection.h"

#include "tessaro/catalogue/IniStore.h"
#include "tessaro/host/Log.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"

namespace {

constexpr const wchar_t* kSection = L"Tessaro Options";

constexpr std::array<int, 6> kDefaultWidths = {140, 35, 150, 60, 105, 105};

std::wstring ColumnKey(std::size_t column) {
    return platform::Format(L"Column%dWidth", static_cast<int>(column) + 1);
}

} // namespace

void ReadOptions(const std::wstring& file) {
    std::wstring cacheFile;
    if (GetIniString(kSection, L"CacheFile", nullptr, cacheFile, file) != 0)
        cachePath = cacheFile;
    Log(L"Cachefile location: %s\n", cachePath.c_str());
    blockInsert = GetIniInt(kSection, L"BlockInsert", 0, file);
    readDirEveryTime = GetIniInt(kSection, L"ReadDirEveryTime", 0, file);
    overlayXRef = GetIniInt(kSection, L"OverlayXRef", 0, file);
    demandLoadCache = GetIniInt(kSection, L"DemandLoadCache", 0, file);
    onlyCacheCurrent = GetIniInt(kSection, L"OnlyCacheCurrent", 0, file);
    delCacheMemoryOnClose = GetIniInt(kSection, L"DelCacheMemoryOnClose", 0, file);
    backupIni = GetIniInt(kSection, L"BackupIni", 0, file);
    printScale = GetIniInt(kSection, L"PrintScale", printScale, file);
    printType = GetIniInt(kSection, L"PrintType", printType, file);
}

void ReadColumnWidths(const std::wstring& file) {
    for (std::size_t i = 0; i < columnWidths.size(); ++i)
        columnWidths[i] = GetIniInt(kSection, ColumnKey(i), kDefaultWidths[i], file);
}

OptionValues CurrentOptions() {
    return {.columnWidths = columnWidths,
            .cachePath = cachePath,
            .blockInsert = blockInsert,
            .readDirEveryTime = readDirEveryTime,
            .overlayXRef = overlayXRef,
            .demandLoadCache = demandLoadCache,
            .onlyCacheCurrent = onlyCacheCurrent,
            .delCacheMemoryOnClose = delCacheMemoryOnClose,
            .backupIni = backupIni,
            .printScale = printScale,
            .printType = printType};
}

void WriteOptions(const OptionValues& options, const std::wstring& file) {
    for (std::size_t i = 0; i < options.columnWidths.size(); ++i)
        SetIniInt(kSection, ColumnKey(i), options.columnWidths[i], file);
    SetIniString(kSection, L"CacheFile", options.cachePath, file);
    SetIniInt(kSection, L"BlockInsert", options.blockInsert, file);
    SetIniInt(kSection, L"ReadDirEveryTime", options.readDirEveryTime, file);
    SetIniInt(kSection, L"OverlayXRef", options.overlayXRef, file);
    SetIniInt(kSection, L"DemandLoadCache", options.demandLoadCache, file);
    SetIniInt(kSection, L"OnlyCacheCurrent", options.onlyCacheCurrent, file);
    SetIniInt(kSection, L"DelCacheMemoryOnClose", options.delCacheMemoryOnClose, file);
    SetIniInt(kSection, L"BackupIni", options.backupIni, file);
    SetIniInt(kSection, L"PrintScale", options.printScale, file);
    SetIniInt(kSection, L"PrintType", options.printType, file);
}
