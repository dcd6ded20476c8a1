#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

/// The first of the spellings that exists, taken as it is: no folder is listed, so that the look-up costs one system
/// call a spelling for each of thousands of drawings.
std::optional<std::wstring> FindSpelling(std::initializer_list<std::wstring> paths);

/// "x.DWK" beside "x.dwg": the drawing is open in its host.
std::optional<std::wstring> FindLockFile(std::wstring_view drawing);
/// "x.bmp" beside "x.dwg".
std::optional<std::wstring> FindBitmapFile(std::wstring_view drawing);
/// "VEXLIB/x.lsa" below the drawing's folder.
std::optional<std::wstring> FindDescriptionFile(std::wstring_view drawing);

/// The first line of a narrow text file, without its line end; nothing where the file can't be opened or read.
std::optional<std::wstring> ReadFirstLine(std::wstring_view file);
