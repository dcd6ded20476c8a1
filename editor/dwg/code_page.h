#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace dwg {

/// Narrow text of drawings before 2007. Text in memory is wide everywhere in this room (one 32-bit unit a character);
/// the code page of the file is known here alone.
///
/// Characters that the code page lacks are stored as "\U+XXXX" (UTF-16 units in hexadecimal, a pair beyond the first
/// plane) and such escapes are read back, so wide text survives. The single-byte Windows code pages are known: 874 and
/// 1250 to 1258; text of any other code page is taken byte by byte as Windows-1252, which loses nothing in a round
/// trip.
class CodePage {
public:
    static constexpr std::uint16_t windows1252 = 30;

    /// `number` as the file header counts code pages: 28 is Windows-1250, 30 Windows-1252, 37 Windows-874 ...
    explicit CodePage(std::uint16_t number = windows1252);

    std::wstring decode(std::string_view text) const;
    std::string encode(std::wstring_view text) const;

private:
    /// The characters of the bytes from 0x80 on.
    const char16_t* upperHalf;
};

} // namespace dwg
