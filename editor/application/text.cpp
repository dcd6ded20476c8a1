#include "editor/application/text.h"

#include <array>
#include <cstdint>
#include <locale.h>
#include <optional>
#include <wctype.h>

namespace editor {

namespace {

constexpr wchar_t replacement = 0xFFFD;

// The C library's own table of all characters; the process's locale has no part in it.
locale_t characterTable() {
    static const locale_t table = [] {
        const locale_t whole = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return whole != nullptr ? whole : newlocale(LC_CTYPE_MASK, "C", nullptr);
    }();
    return table;
}

std::optional<std::wstring> decodeUtf8(std::string_view bytes) {
    std::wstring text;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto lead = static_cast<std::uint8_t>(bytes[at]);
        const std::size_t length = lead < 0x80                   ? 1
                                   : lead >= 0xC2 && lead < 0xE0 ? 2
                                   : lead >= 0xE0 && lead < 0xF0 ? 3
                                   : lead >= 0xF0 && lead < 0xF5 ? 4
                                                                 : 0;
        if (length == 0 || length > bytes.size() - at)
            return std::nullopt;
        std::uint32_t code = length == 1 ? lead : lead & (0x7Fu >> length);
        for (std::size_t next = 1; next < length; ++next) {
            const auto byte = static_cast<std::uint8_t>(bytes[at + next]);
            if ((byte & 0xC0) != 0x80)
                return std::nullopt;
            code = code << 6 | (byte & 0x3Fu);
        }
        constexpr std::array<std::uint32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
        if (code < smallest[length] || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000))
            return std::nullopt;
        text += static_cast<wchar_t>(code);
        at += length;
    }
    return text;
}

std::wstring decodeWindows1252(std::string_view bytes) {
    constexpr std::array<std::uint16_t, 32> upper = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                                     0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    std::wstring text;
    for (const char byte : bytes) {
        const auto code = static_cast<std::uint8_t>(byte);
        text += static_cast<wchar_t>(code >= 0x80 && code < 0xA0 ? upper[code - 0x80u] : code);
    }
    return text;
}

} // namespace

std::wstring fromUtf8(std::string_view bytes) {
    return decodeUtf8(bytes).value_or(std::wstring(1, replacement));
}

std::wstring fromNarrow(std::string_view bytes) {
    auto text = decodeUtf8(bytes);
    return text ? *text : decodeWindows1252(bytes);
}

std::string toUtf8(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t character : text) {
        auto code = static_cast<std::uint32_t>(character);
        if (code > 0x10FFFF || (code >= 0xD800 && code < 0xE000))
            code = replacement;
        const auto tail = [&bytes, code](int shift) { bytes += static_cast<char>(0x80 | (code >> shift & 0x3F)); };
        if (code < 0x80) {
            bytes += static_cast<char>(code);
        } else if (code < 0x800) {
            bytes += static_cast<char>(0xC0 | code >> 6);
            tail(0);
        } else if (code < 0x10000) {
            bytes += static_cast<char>(0xE0 | code >> 12);
            tail(6);
            tail(0);
        } else {
            bytes += static_cast<char>(0xF0 | code >> 18);
            tail(12);
            tail(6);
            tail(0);
        }
    }
    return bytes;
}

bool isLetter(wchar_t character) {
    return iswalpha_l(static_cast<wint_t>(character), characterTable()) != 0;
}

bool isDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

std::wstring upperCased(std::wstring_view text) {
    std::wstring upper(text);
    for (wchar_t& character : upper)
        character = static_cast<wchar_t>(towupper_l(static_cast<wint_t>(character), characterTable()));
    return upper;
}

bool equalIgnoringCase(std::wstring_view one, std::wstring_view other) {
    return one.size() == other.size() && upperCased(one) == upperCased(other);
}

bool endsWithIgnoringCase(std::wstring_view text, std::wstring_view tail) {
    return text.size() >= tail.size() && equalIgnoringCase(text.substr(text.size() - tail.size()), tail);
}

std::wstring trimmed(std::wstring_view text) {
    constexpr std::wstring_view blanks = L" \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::wstring_view::npos)
        return {};
    return std::wstring(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

} // namespace editor
