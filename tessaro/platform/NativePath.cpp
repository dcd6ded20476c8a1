#include "tessaro/platform/NativePath.h"

#include "tessaro/platform/Text.h"

#include <algorithm>
#include <dirent.h>
#include <sys/stat.h>

namespace platform {
namespace {

/// The entry of the folder whose name is that text in another case, or in bytes that are no UTF-8.
std::optional<std::string> FindEntry(const std::string& folder, const std::wstring& name) {
    DIR* const listing = opendir(folder.empty() ? "." : folder.c_str());
    if (listing == nullptr)
        return std::nullopt;
    const std::wstring lower = ToLower(name);
    std::optional<std::string> found;
    while (const dirent* entry = readdir(listing)) {
        const std::string_view bytes = entry->d_name;
        if ((!found || bytes < *found) && ToLower(FromNarrow(bytes)) == lower)
            found = bytes;
    }
    closedir(listing);
    return found;
}

bool Exists(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0;
}

/// Component by component, each exactly first.
std::optional<std::string> Walk(const std::string& path) {
    std::string reached = path.front() == '/' ? "/" : "";
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find('/', at), path.size());
        const std::string name = path.substr(at, end - at);
        at = end + 1;
        if (name.empty() || name == ".")
            continue;
        const std::string exact = reached + name;
        struct stat status;
        if (lstat(exact.c_str(), &status) == 0) {
            reached = exact;
        } else if (const auto entry = FindEntry(reached, FromNarrow(name))) {
            reached += *entry;
        } else {
            return std::nullopt;
        }
        reached += '/';
    }
    if (reached.size() > 1)
        reached.pop_back();
    if (!Exists(reached))
        return std::nullopt;
    return reached;
}

} // namespace

std::string NativeAsSpelled(std::wstring_view path) {
    std::string bytes = ToNarrow(path);
    std::replace(bytes.begin(), bytes.end(), '\\', '/');
    return bytes;
}

std::optional<std::string> FindNative(std::wstring_view path) {
    const std::string exact = NativeAsSpelled(path);
    if (exact.empty() || exact.find('\0') != std::string::npos)
        return std::nullopt;
    if (Exists(exact))
        return exact;
    return Walk(exact);
}

std::optional<std::string> NativeForCreation(std::wstring_view path) {
    if (auto found = FindNative(path))
        return found;
    const std::string exact = NativeAsSpelled(path);
    if (exact.empty() || exact.find('\0') != std::string::npos)
        return std::nullopt;
    const NativeParts parts = SplitNative(exact);
    if (parts.name.empty())
        return std::nullopt;
    const std::optional<std::string> folder = Exists(parts.folder) ? parts.folder : Walk(parts.folder);
    if (!folder)
        return std::nullopt;
    return folder->back() == '/' ? *folder + parts.name : *folder + '/' + parts.name;
}

NativeParts SplitNative(const std::string& path) {
    std::size_t end = path.size();
    while (end > 1 && path[end - 1] == '/')
        --end;
    const std::size_t cut = path.rfind('/', end - 1);
    if (cut == std::string::npos)
        return {".", path.substr(0, end)};
    return {cut == 0 ? "/" : path.substr(0, cut), path.substr(cut + 1, end - cut - 1)};
}

} // namespace platform
