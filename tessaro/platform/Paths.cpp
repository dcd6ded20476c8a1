#include "tessaro/platform/Paths.h"

#include "tessaro/platform/NativePath.h"
#include "tessaro/platform/Text.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace platform {
namespace {

std::optional<FileStatus> StatusOf(int folder, const char* path, bool& regular) {
    struct statx status;
    if (statx(folder, path, 0, STATX_BASIC_STATS | STATX_BTIME, &status) != 0)
        return std::nullopt;
    regular = S_ISREG(status.stx_mode);
    FileStatus result;
    result.modified = status.stx_mtime.tv_sec;
    result.created = (status.stx_mask & STATX_BTIME) != 0 ? status.stx_btime.tv_sec : result.modified;
    result.size = status.stx_size;
    result.readOnly = (status.stx_mode & 0222) == 0;
    result.folder = S_ISDIR(status.stx_mode);
    return result;
}

std::optional<FileStatus> StatusOf(const std::string& path) {
    bool regular;
    return StatusOf(AT_FDCWD, path.c_str(), regular);
}

bool HasExtension(std::wstring_view name, std::wstring_view extension) {
    return name.size() > extension.size() && name[name.size() - extension.size() - 1] == L'.' &&
           EqualNoCase(name.substr(name.size() - extension.size()), extension);
}

/// Where nothing but the listing tells what it is.
bool MayBeFile(const dirent& entry) {
    return entry.d_type == DT_REG || entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN;
}

} // namespace

bool IsSeparator(wchar_t c) {
    return c == L'/' || c == L'\\';
}

std::wstring Join(std::wstring_view folder, std::wstring_view name) {
    std::wstring path(folder);
    if (!path.empty() && !IsSeparator(path.back()))
        path += kSeparator;
    while (!path.empty() && !name.empty() && IsSeparator(name.front()))
        name.remove_prefix(1);
    path += name;
    return path;
}

PathParts SplitPath(std::wstring_view path) {
    const std::wstring_view title = TitleOf(path);
    const auto start = static_cast<std::size_t>(title.data() - path.data());
    return {
        {}, std::wstring(path.substr(0, start)), std::wstring(title), std::wstring(path.substr(start + title.size()))};
}

std::wstring_view TitleOf(std::wstring_view path) {
    const std::size_t cut = path.find_last_of(L"/\\");
    const std::wstring_view name = path.substr(cut == std::wstring_view::npos ? 0 : cut + 1);
    return name.substr(0, name.rfind(L'.'));
}

std::optional<std::wstring> FindPath(std::wstring_view path) {
    const auto found = FindNative(path);
    if (!found)
        return std::nullopt;
    return FromNarrow(*found);
}

std::optional<FileStatus> GetFileStatus(std::wstring_view path) {
    const auto found = FindNative(path);
    if (!found)
        return std::nullopt;
    return StatusOf(*found);
}

bool FileExists(std::wstring_view path) {
    return FindNative(path).has_value();
}

bool FileExistsAsSpelled(std::wstring_view path) {
    const std::string exact = NativeAsSpelled(path);
    return exact.find('\0') == std::string::npos && StatusOf(exact).has_value();
}

bool FolderExists(std::wstring_view path) {
    const auto status = GetFileStatus(path);
    return status && status->folder;
}

std::vector<FoundFile> ListFiles(std::wstring_view folder, std::wstring_view extension) {
    const auto native = FindNative(folder);
    DIR* const listing = native ? opendir(native->c_str()) : nullptr;
    if (listing == nullptr)
        return {};
    struct Sorted {
        std::wstring key;
        FoundFile file;
    };
    std::vector<Sorted> found;
    errno = 0;
    while (const dirent* entry = readdir(listing)) {
        std::wstring name = FromNarrow(entry->d_name);
        bool regular = false;
        if (HasExtension(name, extension)) {
            const auto status = StatusOf(dirfd(listing), entry->d_name, regular);
            if (status ? regular : errno != ENOENT && MayBeFile(*entry))
                found.push_back({ToLower(name), {std::move(name), status.value_or(FileStatus{}), status.has_value()}});
        }
        errno = 0;
    }
    const bool broken = errno != 0;
    closedir(listing);
    if (broken)
        return {};
    std::sort(found.begin(), found.end(), [](const Sorted& a, const Sorted& b) {
        return a.key != b.key ? a.key < b.key : a.file.name < b.file.name;
    });
    std::vector<FoundFile> files;
    files.reserve(found.size());
    for (Sorted& entry : found)
        files.push_back(std::move(entry.file));
    return files;
}

} // namespace platform
