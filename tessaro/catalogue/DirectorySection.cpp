#include "tessaro/catalogue/DirectorySection.h"

#include "tessaro/catalogue/IniStore.h"
#include "tessaro/catalogue/NumberedKeys.h"
#include "tessaro/platform/Text.h"

#include <array>
#include <span>

namespace {

constexpr const wchar_t* kPaths = L"Paths";

constexpr std::array<const wchar_t*, 4> kScaleWords = {L"1-to-1", L"Drawing", L"Prompt", L"User"};
constexpr std::array<const wchar_t*, 14> kSortWords = {
    L"None",    L"Name",    L"Type",    L"Description",    L"Size",    L"Modified",    L"Created",
    L"RevNone", L"RevName", L"RevType", L"RevDescription", L"RevSize", L"RevModified", L"RevCreated"};
/// Words that are read besides those that are written.
constexpr std::pair<const wchar_t*, int> kShortSortWords[] = {{L"Desc", 3}, {L"Date", 6}};

using Words = std::span<const wchar_t* const>;

/// Sets the field to the number of the word, in any case; leaves it at another word.
bool SetByWord(std::int32_t& field, Words words, const std::wstring& word) {
    for (std::size_t i = 0; i < words.size(); ++i)
        if (platform::EqualNoCase(word, words[i])) {
            field = static_cast<std::int32_t>(i);
            return true;
        }
    return false;
}

/// The keys of one Directory's section.
class Section {
public:
    Section(const std::wstring& path, const std::wstring& iniFile) : name(path), file(iniFile) {}

    std::wstring Text(const wchar_t* key) const {
        std::wstring text;
        GetIniString(name, key, nullptr, text, file);
        return text;
    }
    int Number(const wchar_t* key, int defaultValue) const { return GetIniInt(name, key, defaultValue, file); }
    void ReadFlag(const wchar_t* key, bool& flag) const {
        const std::wstring word = Text(key);
        if (platform::EqualNoCase(word, L"Yes"))
            flag = true;
        else if (platform::EqualNoCase(word, L"No"))
            flag = false;
    }

    void Put(const wchar_t* key, const std::wstring& text) const { SetIniString(name, key, text, file); }
    void PutFlag(const wchar_t* key, bool flag) const { Put(key, flag ? L"Yes" : L"No"); }
    /// A number that has no word writes no key.
    void PutWord(const wchar_t* key, Words words, std::int32_t number) const {
        if (number >= 0 && static_cast<std::size_t>(number) < words.size())
            Put(key, words[static_cast<std::size_t>(number)]);
    }

private:
    const std::wstring& name;
    const std::wstring& file;
};

void ReadRotation(DirectorySettings& settings, const std::wstring& text) {
    if (text.empty())
        return;
    settings.rotationMode = platform::EqualNoCase(text, L"Prompt") ? 1 : 0;
    if (settings.rotationMode == 0)
        settings.rotationAngle = platform::ToReal(text);
}

void ReadSortStyle(DirectorySettings& settings, const std::wstring& word) {
    if (SetByWord(settings.sortStyle, kSortWords, word))
        return;
    for (const auto& [shortWord, code] : kShortSortWords)
        if (platform::EqualNoCase(word, shortWord))
            settings.sortStyle = code;
}

} // namespace

std::vector<std::wstring> ReadPaths(const std::wstring& file) {
    return ReadNumberedKeys(kPaths, L"Path", GetIniInt(kPaths, L"NumPaths", 0, file), file);
}

void WritePaths(const std::vector<DirectorySettings>& settings, const std::wstring& file) {
    SetIniInt(kPaths, L"NumPaths", static_cast<int>(settings.size()), file);
    int number = 0;
    for (const DirectorySettings& one : settings)
        SetIniString(kPaths, platform::Format(L"Path%d", ++number), one.path, file);
}

void ReadDirectoryDescription(DirectorySettings& settings, const std::wstring& file) {
    settings.description = Section(settings.path, file).Text(L"Description");
}

void ReadDirectorySection(DirectorySettings& settings, const std::wstring& file) {
    const Section section(settings.path, file);
    SetByWord(settings.scaleMode, kScaleWords, section.Text(L"Scale"));
    ReadRotation(settings, section.Text(L"Rotation"));
    section.ReadFlag(L"Explode", settings.explode);
    section.ReadFlag(L"MultipleInsert", settings.multipleInsert);
    section.ReadFlag(L"Repeat", settings.repeat);
    section.ReadFlag(L"ShowInsertionPoints", settings.showInsPts);
    section.ReadFlag(L"UseLargeImages", settings.useLargeImages);
    settings.viewMode = section.Number(L"View", 3);
    ReadSortStyle(settings, section.Text(L"SortStyle"));
    settings.schemeName = section.Text(L"CurrentScheme");
}

void WriteDirectorySection(const DirectorySettings& settings, const std::wstring& file) {
    const Section section(settings.path, file);
    section.Put(L"Description", settings.description);
    section.PutWord(L"Scale", kScaleWords, settings.scaleMode);
    section.Put(L"Rotation", settings.rotationMode == 1 ? L"Prompt" : platform::Format(L"%f", settings.rotationAngle));
    section.PutFlag(L"Explode", settings.explode);
    section.PutFlag(L"MultipleInsert", settings.multipleInsert);
    section.PutFlag(L"Repeat", settings.repeat);
    section.PutFlag(L"ShowInsertionPoints", settings.showInsPts);
    section.PutFlag(L"UseLargeImages", settings.useLargeImages);
    SetIniInt(settings.path, L"View", settings.viewMode, file);
    section.PutWord(L"SortStyle", kSortWords, settings.sortStyle);
    section.Put(L"CurrentScheme", settings.schemeName);
}
