#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Paths as the system takes them, for this room only. A name on disk need not be valid UTF-8, so what a look-up finds
/// is handed on as bytes.
namespace platform {

/// The existing file or folder: exactly first, then ignoring case on every component; of several spellings the first in
/// byte order. Nothing for an empty path or one with a NUL.
std::optional<std::string> FindNative(std::wstring_view path);
/// The same or, where nothing is there, the name as given in the existing folder.
std::optional<std::string> NativeForCreation(std::wstring_view path);
/// The path with the system's separators, as given.
std::string NativeAsSpelled(std::wstring_view path);

/// Folder ("." where the path has none) and last name; separators at the end are left out.
struct NativeParts {
    std::string folder, name;
};
NativeParts SplitNative(const std::string& path);

} // namespace platform
