#pragma once

#include <string>
#include <string_view>

namespace editor {

/// Whether two names of a drawing are the same: letters are compared without regard to case, whatever the process's
/// locale.
bool sameName(std::wstring_view one, std::wstring_view other);

/// Whether a symbol table record may be given this name: not empty, at most 255 characters, none of < > / \ " : ; ? * |
/// , = ` and no control character.
bool isValidRecordName(std::wstring_view name);

} // namespace editor
