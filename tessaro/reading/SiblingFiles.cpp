#include "tessaro/reading/SiblingFiles.h"

#include "tessaro/platform/File.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"

#include <algorithm>

namespace {

/// What is read of a line, however long it is.
constexpr std::size_t kLongestLine = 65536;
constexpr std::size_t kExtensionLength = 3;
constexpr char kEndOfText = 0x1a;

std::wstring WithoutExtension(std::wstring_view drawing) {
    return std::wstring(drawing.substr(0, drawing.size() - kExtensionLength));
}

} // namespace

std::optional<std::wstring> FindSpelling(std::initializer_list<std::wstring> paths) {
    for (const std::wstring& path : paths) {
        if (platform::FileExistsAsSpelled(path))
            return path;
    }
    return std::nullopt;
}

std::optional<std::wstring> FindLockFile(std::wstring_view drawing) {
    const std::wstring stem = WithoutExtension(drawing);
    return FindSpelling({stem + L"DWK", stem + L"dwk"});
}

std::optional<std::wstring> FindBitmapFile(std::wstring_view drawing) {
    const std::wstring stem = WithoutExtension(drawing);
    return FindSpelling({stem + L"bmp", stem + L"BMP"});
}

std::optional<std::wstring> FindDescriptionFile(std::wstring_view drawing) {
    const platform::PathParts parts = platform::SplitPath(drawing);
    for (const wchar_t* const name : {L"VEXLIB", L"vexlib"}) {
        const std::wstring folder = parts.driveAndFolder() + name;
        // Few folders have it, and each of their drawings asks.
        if (!platform::FileExistsAsSpelled(folder))
            continue;
        const std::wstring stem = folder + platform::kSeparator + parts.name;
        if (const auto file = FindSpelling({stem + L".lsa", stem + L".LSA"}))
            return file;
    }
    return std::nullopt;
}

std::optional<std::wstring> ReadFirstLine(std::wstring_view path) {
    std::string line(kLongestLine, '\0');
    try {
        platform::File file;
        if (!file.Open(path, platform::File::modeRead))
            return std::nullopt;
        line.resize(file.Read(line.data(), line.size()));
    } catch (const platform::FileException&) {
        return std::nullopt;
    }
    line.resize(std::min(line.find('\n'), line.size()));
    if (line.ends_with('\r'))
        line.pop_back();
    line.resize(std::min(line.find(kEndOfText), line.size()));
    line.resize(std::min(line.find('\0'), line.size()));
    return platform::FromNarrow(line);
}
