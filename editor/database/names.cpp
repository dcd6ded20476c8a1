#include "editor/database/names.h"

#include <algorithm>
#include <clocale>
#include <cwctype>
#include <locale.h>

namespace editor {

namespace {

constexpr std::size_t longestName = 255;

wchar_t upper(wchar_t character) {
    if (character < 0x80)
        return character >= L'a' && character <= L'z' ? static_cast<wchar_t>(character - L'a' + L'A') : character;
    static const locale_t characters = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return characters == nullptr ? character
                                 : static_cast<wchar_t>(towupper_l(static_cast<wint_t>(character), characters));
}

} // namespace

bool sameName(std::wstring_view one, std::wstring_view other) {
    return one.size() == other.size() &&
           std::equal(one.begin(), one.end(), other.begin(), [](wchar_t a, wchar_t b) { return upper(a) == upper(b); });
}

bool isValidRecordName(std::wstring_view name) {
    constexpr std::wstring_view refused = L"<>/\\\":;?*|,=`";
    return !name.empty() && name.size() <= longestName &&
           std::none_of(name.begin(), name.end(), [&](wchar_t character) {
               return character < L' ' || refused.find(character) != std::wstring_view::npos;
           });
}

} // namespace editor
