#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

/// Text is wide in the module (one unit a code point). Casing, code pages and numbers are our own and follow no locale.
/// All functions may be called from any thread.
namespace platform {

/// The C library's format family with "%s" as wide text (a null is empty), bounded: the result has at most
/// `kFormatLimit` characters, what is beyond is cut. Knows %s %S(narrow) %c %d %i %u %x %X %ld %lu %lld %llu %lx %f %g
/// %e %% with flags, width, precision and '*'; another letter stands as it is. Decimal separator is always a point.
/// "%ld" takes a 64-bit argument: cast an int that goes there.
std::wstring Format(const wchar_t* format, ...);
std::wstring FormatV(const wchar_t* format, std::va_list arguments);
constexpr std::size_t kFormatLimit = 1'000'000;

std::wstring ToUpper(std::wstring_view text);
std::wstring ToLower(std::wstring_view text);
/// Less than, equal to or greater than 0, comparing lower-cased characters.
int CompareNoCase(std::wstring_view a, std::wstring_view b);
inline bool EqualNoCase(std::wstring_view a, std::wstring_view b) {
    return CompareNoCase(a, b) == 0;
}
/// White space off both ends.
std::wstring Trim(std::wstring_view text);

/// System code page: UTF-8; text that is no valid UTF-8 is read as Windows-1252. A NUL is a character like others; what
/// is no character (a lone surrogate) becomes a question mark.
std::wstring FromNarrow(std::string_view bytes);
std::string ToNarrow(std::wstring_view text);

/// UTF-16 with surrogate pairs; a lone surrogate becomes the unit of its value and back.
std::u16string ToUtf16(std::wstring_view text);
std::wstring FromUtf16(std::u16string_view text);

/// Leading white space, a sign and digits, up to the first other character; 0 without digits; clamped to 32 bits.
int ToInt(std::wstring_view text);
/// The same for a real number with an optional exponent.
double ToReal(std::wstring_view text);

} // namespace platform
