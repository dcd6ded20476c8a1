#pragma once

#include <cstdint>

namespace platform {

/// One character for one, after the Unicode character database and no locale; others map to themselves.
wchar_t LowerCharacter(wchar_t c);
wchar_t UpperCharacter(wchar_t c);

} // namespace platform
