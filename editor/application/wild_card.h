#pragma once

#include <string_view>

namespace editor {

/// Whether the whole text matches the pattern; case counts. The pattern is alternatives separated by commas, each of
///
///     #  a digit          @  a letter      .  a character that is neither
///     *  any characters   ?  one character
///     [..]  one of these, ranges by a hyphen      [~..]  one that isn't among them
///     ~  at the start of an alternative: what the rest of it doesn't match
///     `  the next character as it stands
///
/// A bracket without its end stands for itself, as does every other character; a hyphen at the start or the end of a
/// class belongs to the class. The time grows with the product of both lengths at worst.
bool matchesWildCard(std::wstring_view text, std::wstring_view pattern);

} // namespace editor
