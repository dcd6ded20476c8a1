#pragma once

#include <string>
#include <string_view>

/// Text of the application room. Case and letters never follow the process's locale.
namespace editor {

std::wstring fromUtf8(std::string_view bytes);
/// Bytes that are no valid UTF-8 are read as Windows-1252.
std::wstring fromNarrow(std::string_view bytes);
std::string toUtf8(std::wstring_view text);

bool isLetter(wchar_t character);
bool isDigit(wchar_t character);
std::wstring upperCased(std::wstring_view text);
bool equalIgnoringCase(std::wstring_view one, std::wstring_view other);
bool endsWithIgnoringCase(std::wstring_view text, std::wstring_view tail);
/// Without blanks, tabs and line ends at both ends.
std::wstring trimmed(std::wstring_view text);

} // namespace editor
