#include "tests/catalogue/HostRecorder.h"

#include "editor/sdk/editor.h"

#include "tessaro/platform/Text.h"
#include "tests/catalogue/Told.h"

#include <cstdarg>
#include <cwchar>

namespace catalogue_tests {

std::optional<std::wstring> SupportPath::found;
std::wstring SupportPath::asked;

} // namespace catalogue_tests

using catalogue_tests::SupportPath;
using catalogue_tests::Told;

int acedFindFile(const wchar_t* name, wchar_t* result, std::size_t size) {
    SupportPath::asked = name;
    if (!SupportPath::found)
        return RTERROR;
    std::wcsncpy(result, SupportPath::found->c_str(), size - 1);
    result[size - 1] = L'\0';
    return RTNORM;
}

int acutPrintf(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    Told::Print(platform::FormatV(format, arguments));
    va_end(arguments);
    return RTNORM;
}
