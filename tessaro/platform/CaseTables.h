#pragma once

#include <cstdint>

namespace platform {

/// One character for one, after the Unicode character database and no locale; others map to themselves.
wchar_t LowerOfTable(wchar_t c);
wchar_t UpperOfTable(wchar_t c);

inline wchar_t LowerCharacter(wchar_t c) {
    if (c < 0x80)
        return c >= L'A' && c <= L'Z' ? c + (L'a' - L'A') : c;
    return LowerOfTable(c);
}

inline wchar_t UpperCharacter(wchar_t c) {
    if (c < 0x80)
        return c >= L'a' && c <= L'z' ? c - (L'a' - L'A') : c;
    return UpperOfTable(c);
}

} // namespace platform
