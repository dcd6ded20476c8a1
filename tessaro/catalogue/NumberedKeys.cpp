#include "tessaro/catalogue/NumberedKeys.h"

#include "tessaro/catalogue/IniStore.h"
#include "tessaro/platform/Text.h"

#include <map>

namespace {

/// Characters that are read of a value.
constexpr int kValueLimit = 8191;

/// The number of a key as it is written ("path12"); 0 for another key.
int NumberOf(const std::wstring& key, const std::wstring& prefix) {
    if (!key.starts_with(prefix))
        return 0;
    const int number = platform::ToInt(key.substr(prefix.size()));
    return number > 0 && key == platform::Format(L"%s%d", prefix.c_str(), number) ? number : 0;
}

std::wstring ReadValue(const std::wstring& section, const std::wstring& key, const std::wstring& file) {
    std::vector<wchar_t> buffer(kValueLimit + 1);
    GetIniStringBuffer(section, key, nullptr, buffer.data(), kValueLimit, file);
    return buffer.data();
}

} // namespace

std::vector<std::wstring> ReadNumberedKeys(const std::wstring& section, const std::wstring& prefix, int count,
                                           const std::wstring& file) {
    const std::wstring lowerPrefix = platform::ToLower(prefix);
    std::map<int, std::wstring> keys;
    for (const std::wstring& key : GetIniKeys(section, file))
        if (const int number = NumberOf(key, lowerPrefix); number > 0 && number <= count)
            keys.emplace(number, key);

    std::vector<std::wstring> values;
    int last = 0;
    bool gap = false;
    for (const auto& [number, key] : keys) {
        if (number - 1 != last && !gap) {
            values.emplace_back();
            gap = true;
        }
        values.push_back(ReadValue(section, key, file));
        last = number;
    }
    if (last < count && !gap)
        values.emplace_back();
    return values;
}
