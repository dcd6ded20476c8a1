#include "tessaro/catalogue/IniStore.h"

#include "tessaro/catalogue/FileName.h"
#include "tessaro/catalogue/IniMaps.h"
#include "tessaro/platform/File.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/SafeFile.h"
#include "tessaro/platform/Text.h"

#include <algorithm>
#include <cwchar>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace {

/// A file beyond this is no settings file and counts as one that can't be read.
constexpr std::uint64_t kMostBytes = 64 << 20;
constexpr int kBackups = 9;
constexpr int kWriteAttempts = 50;
constexpr std::chrono::milliseconds kWritePause{100};

/// Images by lower-cased path. Never destroyed, as an image does not own its sections and the finisher may still write.
auto& iniFiles = *new std::unordered_map<std::wstring, std::unique_ptr<CStringToObMap>>;

void EmptyImage(CStringToObMap& image) {
    for (const auto& [name, section] : image)
        delete section;
    image.RemoveAll();
}

CStringToObMap* FindImage(const std::wstring& file) {
    const auto found = iniFiles.find(platform::ToLower(file));
    return found == iniFiles.end() ? nullptr : found->second.get();
}

CStringToObMap& ImageOf(const std::wstring& file) {
    if (CStringToObMap* const image = FindImage(file))
        return *image;
    return *iniFiles.emplace(platform::ToLower(file), std::make_unique<CStringToObMap>()).first->second;
}

/// A new section, in the place of one of that name. Out of memory the image stays as it was.
CStringToStringMap* AddSection(CStringToObMap& image, const std::wstring& name) {
    auto made = std::make_unique<CStringToStringMap>();
    CStringToStringMap* const old = image.Lookup(name);
    image.SetAt(name, made.get());
    delete old;
    return made.release();
}

const CStringToStringMap* FindSection(const std::wstring& section, const std::wstring& file) {
    const CStringToObMap* const image = FindImage(file);
    return image == nullptr ? nullptr : image->Lookup(platform::ToLower(section));
}

const std::wstring* FindValue(const std::wstring& section, const std::wstring& key, const std::wstring& file) {
    const CStringToStringMap* const found = FindSection(section, file);
    return found == nullptr ? nullptr : found->Lookup(platform::ToLower(key));
}

std::optional<std::string> ReadBytes(const std::wstring& path) {
    try {
        platform::File file;
        if (!file.Open(path, platform::File::modeRead) || file.Length() > kMostBytes)
            return std::nullopt;
        std::string bytes(file.Length(), '\0');
        bytes.resize(file.Read(bytes.data(), bytes.size()));
        return bytes;
    } catch (const platform::FileException&) {
        return std::nullopt;
    }
}

/// A line feed ends a line; a carriage return in front of it goes with the white space. Each line is decoded by itself,
/// so that one that was added on another machine does not spoil the rest.
class Lines {
public:
    explicit Lines(std::string_view text) : rest(text) {
        constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
        if (rest.starts_with(byteOrderMark))
            rest.remove_prefix(byteOrderMark.size());
    }
    std::optional<std::wstring> Next() {
        if (rest.empty())
            return std::nullopt;
        const std::size_t end = rest.find('\n');
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        return platform::Trim(platform::FromNarrow(line));
    }

private:
    std::string_view rest;
};

std::wstring SectionName(std::wstring_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(L'['), line.size()));
    line = line.substr(0, line.find_last_not_of(L']') + 1);
    return platform::ToLower(line);
}

void SetLine(CStringToStringMap& section, const std::wstring& line) {
    const std::size_t equals = line.find(L'=');
    if (equals == std::wstring::npos)
        section.SetAt(line, {});
    else
        section.SetAt(platform::ToLower(line.substr(0, equals)), line.substr(equals + 1));
}

void ShiftBackups(const std::wstring& file, bool replaces) {
    const CFileName name(file);
    const std::wstring folder = name.GetDriveDir(), title = name.GetTitle();
    const auto backup = [&](int number) {
        return platform::Format(L"%s%s.bk%d", folder.c_str(), title.c_str(), number);
    };
    platform::RemoveFile(backup(kBackups));
    for (int number = kBackups; number >= 2; --number)
        platform::MoveFile(backup(number - 1), backup(number));
    // The new file's name change ends the old one's life under its own name, so that it is there until then.
    if (replaces)
        platform::BackupFile(file, backup(1));
    else
        platform::MoveFile(file, backup(1));
}

/// Opens the new file beside the old one and writes the text.
enum class Written { yes, notOpened, failed };
Written WriteBeside(platform::SafeFile& out, const std::wstring& file, const std::string& bytes) {
    if (!out.Open(file, platform::File::shareExclusive))
        return Written::notOpened;
    try {
        out.Write(bytes.data(), bytes.size());
    } catch (const platform::FileException&) {
        return Written::failed;
    }
    return Written::yes;
}

bool Replace(platform::SafeFile& out) {
    try {
        out.Commit(platform::SafeFile::Flush::yes);
    } catch (const platform::FileException&) {
        return false;
    }
    return true;
}

/// Line feeds as they stand on disk.
std::string TextOf(const CStringToObMap& image) {
    std::wstring text;
    for (const auto& [name, section] : image) {
        text += L"[" + name + L"]\n";
        for (const auto& [key, value] : *section)
            text += value.empty() ? key + L"\n" : key + L"=" + value + L"\n";
    }
    std::string bytes;
    for (const char c : platform::ToNarrow(text)) {
        if (c == '\n')
            bytes += '\r';
        bytes += c;
    }
    return bytes;
}

} // namespace

bool ReadIniFile(const std::wstring& file) {
    CStringToObMap& image = ImageOf(file);
    EmptyImage(image);
    const auto bytes = ReadBytes(file);
    if (!bytes)
        return false;
    Lines lines(*bytes);
    CStringToStringMap* section = nullptr;
    while (const auto line = lines.Next()) {
        if (line->starts_with(L';'))
            continue;
        if (line->starts_with(L'[')) {
            section = AddSection(image, SectionName(*line));
        } else if (section != nullptr) {
            SetLine(*section, *line);
        }
    }
    return true;
}

int GetIniInt(const std::wstring& section, const std::wstring& key, int defaultValue, const std::wstring& file) {
    const std::wstring* const value = FindValue(section, key, file);
    return value == nullptr ? defaultValue : platform::ToInt(*value);
}

int GetIniString(const std::wstring& section, const std::wstring& key, const wchar_t* defaultValue, std::wstring& out,
                 const std::wstring& file) {
    if (const std::wstring* const value = FindValue(section, key, file))
        out = *value;
    else
        out = defaultValue == nullptr ? L"" : defaultValue;
    return static_cast<int>(out.size());
}

int GetIniStringBuffer(const std::wstring& section, const std::wstring& key, const wchar_t* defaultValue,
                       wchar_t* buffer, int size, const std::wstring& file) {
    std::wstring value;
    const int count = std::max(0, std::min(GetIniString(section, key, defaultValue, value, file) + 1, size));
    std::wcsncpy(buffer, value.c_str(), static_cast<std::size_t>(count));
    return count;
}

std::vector<std::wstring> GetIniKeys(const std::wstring& section, const std::wstring& file) {
    std::vector<std::wstring> keys;
    if (const CStringToStringMap* const found = FindSection(section, file))
        for (const auto& [key, value] : *found)
            keys.push_back(key);
    return keys;
}

int SetIniString(const std::wstring& section, const std::wstring& key, const std::wstring& value,
                 const std::wstring& file) {
    CStringToObMap& image = ImageOf(file);
    const std::wstring name = platform::ToLower(section);
    CStringToStringMap* found = image.Lookup(name);
    if (found == nullptr)
        found = AddSection(image, name);
    found->SetAt(platform::ToLower(key), value);
    return 1;
}

int SetIniInt(const std::wstring& section, const std::wstring& key, int value, const std::wstring& file) {
    return SetIniString(section, key, platform::Format(L"%ld", static_cast<long>(value)), file);
}

bool ForgetIniFile(const std::wstring& file) {
    const auto found = iniFiles.find(platform::ToLower(file));
    if (found == iniFiles.end())
        return false;
    EmptyImage(*found->second);
    iniFiles.erase(found);
    return true;
}

bool WriteIniFile(const std::wstring& file, bool backup, const platform::Sleeper& sleep) {
    const CStringToObMap* const image = FindImage(file);
    if (image == nullptr)
        return false;
    const std::string bytes = TextOf(*image);
    platform::SafeFile out;
    auto written = Written::notOpened;
    if (backup) {
        // An attempt ahead of those that count: the new text is there before the old file gives up its name.
        written = WriteBeside(out, file, bytes);
        ShiftBackups(file, out.IsBeside());
    }
    for (int attempt = 0; written == Written::notOpened; ++attempt) {
        if (attempt == kWriteAttempts)
            return false;
        written = WriteBeside(out, file, bytes);
        if (written == Written::notOpened)
            sleep(kWritePause);
    }
    return written == Written::yes && Replace(out);
}
