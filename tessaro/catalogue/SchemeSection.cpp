#include "tessaro/catalogue/SchemeSection.h"

#include "tessaro/catalogue/IniStore.h"
#include "tessaro/catalogue/NumberedKeys.h"
#include "tessaro/platform/Text.h"

#include <array>
#include <span>
#include <string_view>

namespace {

constexpr const wchar_t* kSchemes = L"Schemes";
constexpr std::wstring_view kVariable = L"Var:";
constexpr int kSpecific = 2;

constexpr std::array<const wchar_t*, 4> kTypeWords = {L"Layer", L"Linetype", L"Color", L"Block"};
constexpr std::array<const wchar_t*, 3> kUnknownWords = {L"Ignore", L"Ask", L"Specific"};

std::wstring Text(const std::wstring& section, const wchar_t* key, const std::wstring& file) {
    std::wstring text;
    GetIniString(section, key, nullptr, text, file);
    return text;
}

void SetByWord(int& field, std::span<const wchar_t* const> words, const std::wstring& word) {
    for (std::size_t i = 0; i < words.size(); ++i)
        if (platform::EqualNoCase(word, words[i]))
            field = static_cast<int>(i);
}

void PutWord(const std::wstring& section, const wchar_t* key, std::span<const wchar_t* const> words, int number,
             const std::wstring& file) {
    if (number >= 0 && static_cast<std::size_t>(number) < words.size())
        SetIniString(section, key, words[static_cast<std::size_t>(number)], file);
}

/// Cuts the prefix in any case; true where it was there.
bool CutVariable(std::wstring& text) {
    if (!platform::EqualNoCase(std::wstring_view(text).substr(0, kVariable.size()), kVariable))
        return false;
    text.erase(0, kVariable.size());
    return true;
}

/// from,to. Without a comma, which nothing guards against, all is the to text. The from text is noted as a variable as
/// it stands and mapped in upper case, so that the note of one in lower case is not found again.
void ReadMap(MapScheme& scheme, const std::wstring& value) {
    const std::size_t comma = value.find(L',');
    const std::wstring from = comma == std::wstring::npos ? L"" : value.substr(0, comma);
    std::wstring to = comma == std::wstring::npos ? value : value.substr(comma + 1);
    if (CutVariable(to))
        scheme.variableMaps.SetAt(from, 1);
    scheme.maps.SetAt(platform::ToUpper(from), to);
}

void WriteScheme(const std::wstring& name, const MapScheme& scheme, const std::wstring& file) {
    PutWord(name, L"Type", kTypeWords, scheme.schemeType, file);
    SetIniString(name, L"DefaultToByLayer", scheme.defaultToByLayer ? L"Yes" : L"No", file);
    PutWord(name, L"UnknownType", kUnknownWords, scheme.unknownMode, file);
    if (scheme.unknownMode == kSpecific)
        SetIniString(name, L"UnknownVal",
                     scheme.unknownIsVariable ? std::wstring(kVariable) + scheme.unknownValue : scheme.unknownValue,
                     file);
    SetIniInt(name, L"NumMaps", static_cast<int>(scheme.maps.size()), file);
    int number = 0;
    for (const auto& [from, to] : scheme.maps) {
        const bool variable = scheme.variableMaps.Lookup(from) != nullptr;
        SetIniString(name, platform::Format(L"Map%d", ++number),
                     from + L"," + (variable ? std::wstring(kVariable) : std::wstring()) + to, file);
    }
}

} // namespace

std::vector<std::wstring> ReadSchemeNames(const std::wstring& file) {
    return ReadNumberedKeys(kSchemes, L"Scheme", GetIniInt(kSchemes, L"NumSchemes", 0, file), file);
}

std::unique_ptr<MapScheme> ReadSchemeSection(const std::wstring& name, const std::wstring& file) {
    auto scheme = std::make_unique<MapScheme>();
    SetByWord(scheme->schemeType, kTypeWords, Text(name, L"Type", file));
    scheme->defaultToByLayer = platform::EqualNoCase(Text(name, L"DefaultToByLayer", file), L"Yes");
    SetByWord(scheme->unknownMode, kUnknownWords, Text(name, L"UnknownType", file));
    if (scheme->unknownMode == kSpecific) {
        scheme->unknownValue = Text(name, L"UnknownVal", file);
        scheme->unknownIsVariable = CutVariable(scheme->unknownValue);
    }
    for (const std::wstring& value : ReadNumberedKeys(name, L"Map", GetIniInt(name, L"NumMaps", 0, file), file))
        ReadMap(*scheme, value);
    return scheme;
}

void WriteSchemes(const std::vector<NamedScheme>& list, const std::wstring& file) {
    SetIniInt(kSchemes, L"NumSchemes", static_cast<int>(list.size()), file);
    int number = 0;
    for (const auto& [name, scheme] : list) {
        SetIniString(kSchemes, platform::Format(L"Scheme%d", ++number), name, file);
        WriteScheme(name, scheme, file);
    }
}
