#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace editor {

/// The lines of a paragraph text without its formatting codes (\P line end, \~ blank, \f...; \H...; \S...; braces),
/// broken at blanks where a line is longer than `charactersPerLine` (0: unlimited).
std::vector<std::wstring> linesOfParagraph(std::wstring_view text, std::size_t charactersPerLine = 0);

/// A line of text with its control codes (%%d %%p %%c %%nnn) put into characters and those for under- and overlining
/// left out.
std::wstring plainText(std::wstring_view text);

} // namespace editor
