#include "editor/application/search_path.h"

#include "editor/application/text.h"

#include <algorithm>
#include <filesystem>

namespace editor {

namespace {

namespace fs = std::filesystem;

fs::path native(std::wstring_view path) {
    std::wstring text(path);
    std::replace(text.begin(), text.end(), L'\\', pathSeparator);
    return toUtf8(text);
}

std::wstring wide(const fs::path& path) {
    return fromNarrow(path.native());
}

// The entry of a folder by name, ignoring case; empty where there is none.
fs::path entryIgnoringCase(const fs::path& folder, const std::wstring& name) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (equalIgnoringCase(wide(entry->path().filename()), name))
            return entry->path();
    }
    return {};
}

} // namespace

bool isFullPath(std::wstring_view path) {
    return !path.empty() && (path[0] == L'/' || path[0] == L'\\');
}

bool hasFolder(std::wstring_view path) {
    return path.find_first_of(L"/\\") != std::wstring_view::npos;
}

std::wstring folderOf(std::wstring_view path) {
    const auto slash = path.find_last_of(L"/\\");
    return slash == std::wstring_view::npos ? std::wstring() : std::wstring(path.substr(0, slash + 1));
}

std::wstring fileNameOf(std::wstring_view path) {
    const auto slash = path.find_last_of(L"/\\");
    return std::wstring(slash == std::wstring_view::npos ? path : path.substr(slash + 1));
}

std::wstring drawingTitle(std::wstring_view path) {
    std::wstring title = fileNameOf(path);
    if (endsWithIgnoringCase(title, L".dwg"))
        title.resize(title.size() - 4);
    return title;
}

std::wstring withExtension(std::wstring_view path, std::wstring_view extension) {
    return endsWithIgnoringCase(path, extension) ? std::wstring(path) : std::wstring(path).append(extension);
}

std::wstring joined(std::wstring_view folder, std::wstring_view name) {
    std::wstring path(folder);
    if (!path.empty() && path.back() != L'/' && path.back() != L'\\')
        path += pathSeparator;
    return path.append(name);
}

std::wstring fullPath(std::wstring_view path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(native(path), error);
    return error ? std::wstring(path) : wide(absolute.lexically_normal());
}

std::optional<std::wstring> existingFile(std::wstring_view path) {
    const fs::path exact = native(path);
    std::error_code error;
    if (fs::is_regular_file(exact, error))
        return wide(exact);
    fs::path walked = exact.root_path();
    for (const fs::path& component : exact.relative_path()) {
        const fs::path next = walked / component;
        walked = fs::exists(next, error) ? next : entryIgnoringCase(walked, wide(component));
        if (walked.empty())
            return std::nullopt;
    }
    return fs::is_regular_file(walked, error) ? std::optional(wide(walked)) : std::nullopt;
}

bool sameFile(std::wstring_view one, std::wstring_view other) {
    std::error_code error;
    return one == other || (fs::equivalent(native(one), native(other), error) && !error);
}

} // namespace editor
