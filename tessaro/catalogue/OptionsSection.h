#pragma once

#include <array>
#include <string>

/// The section "Tessaro Options". Reading sets module state; writing works on values, as the closing of the dialog
/// writes on a thread of its own.

struct OptionValues {
    std::array<int, 6> columnWidths{};
    std::wstring cachePath;
    int blockInsert = 0;
    int readDirEveryTime = 0;
    int overlayXRef = 0;
    int demandLoadCache = 0;
    int onlyCacheCurrent = 0;
    int delCacheMemoryOnClose = 0;
    int backupIni = 0;
    int printScale = 0;
    int printType = 0;
};

/// All keys but the column widths; a CacheFile that is empty leaves `cachePath`.
void ReadOptions(const std::wstring& file);
void ReadColumnWidths(const std::wstring& file);

/// A copy of module state. Main thread.
OptionValues CurrentOptions();
void WriteOptions(const OptionValues& options, const std::wstring& file);
