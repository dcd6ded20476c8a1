#pragma once

#include <cstdarg>
#include <string>

namespace editor {

/// printf's language with wide text: "%s" and "%ls" take wide text, "%hs" and "%S" narrow text (UTF-8), "%c" a wide
/// character; a null pointer prints as "(null)". Numbers keep the decimal point whatever the locale. A conversion that
/// isn't known is printed as it stands; "%n" writes nothing.
std::wstring formatWide(const wchar_t* format, va_list arguments);

/// A number as short as it can be written and read back, without an exponent for common sizes.
std::wstring numberText(double value);
/// A number with this many decimals.
std::wstring numberText(double value, int decimals);

} // namespace editor
