#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace editor {

constexpr wchar_t pathSeparator = L'/';

/// Both slashes part folders.
bool isFullPath(std::wstring_view path);
bool hasFolder(std::wstring_view path);
/// The folder with its separator; empty where the path has none.
std::wstring folderOf(std::wstring_view path);
std::wstring fileNameOf(std::wstring_view path);
/// The file's name without folder and without ".dwg".
std::wstring drawingTitle(std::wstring_view path);
std::wstring withExtension(std::wstring_view path, std::wstring_view extension);
std::wstring joined(std::wstring_view folder, std::wstring_view name);
/// A path from the current folder on, without "." and "..".
std::wstring fullPath(std::wstring_view path);

/// The regular file of that full path, under the spelling it has on the disk: exactly, else ignoring case in every
/// component.
std::optional<std::wstring> existingFile(std::wstring_view path);
/// Whether both name the same file.
bool sameFile(std::wstring_view one, std::wstring_view other);

} // namespace editor
