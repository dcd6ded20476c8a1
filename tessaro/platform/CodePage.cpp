#include "tessaro/platform/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace platform {
namespace {

/// Windows-1252 from 0x80 to 0x9F; the five codes without a character stand for themselves.
constexpr std::array<wchar_t, 32> kWindows1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                  0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                  0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                  0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr std::uint32_t kLastCharacter = 0x10FFFF;

bool IsSurrogate(std::uint32_t code) {
    return code >= 0xD800 && code <= 0xDFFF;
}

/// Length of the sequence that this byte begins; 0 for a byte that begins none.
std::size_t SequenceLength(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

/// The character at the front; nothing where the bytes are no UTF-8 (too long a form and surrogates included).
std::optional<std::uint32_t> TakeCharacter(std::string_view& bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    const std::size_t length = SequenceLength(lead);
    if (length == 0 || length > bytes.size())
        return std::nullopt;
    std::uint32_t code = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(bytes[i]);
        if ((next & 0xC0) != 0x80)
            return std::nullopt;
        code = (code << 6) | (next & 0x3F);
    }
    constexpr std::array<std::uint32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    if (code < smallest[length] || code > kLastCharacter || IsSurrogate(code))
        return std::nullopt;
    bytes.remove_prefix(length);
    return code;
}

std::optional<std::wstring> FromUtf8(std::string_view bytes) {
    // Most texts are plain.
    const auto plain = std::find_if(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) != 0; });
    std::wstring text(bytes.begin(), plain);
    text.reserve(bytes.size());
    bytes.remove_prefix(text.size());
    while (!bytes.empty()) {
        const auto code = TakeCharacter(bytes);
        if (!code)
            return std::nullopt;
        text += static_cast<wchar_t>(*code);
    }
    return text;
}

std::wstring FromWindows1252(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        text += code >= 0x80 && code <= 0x9F ? kWindows1252[code - 0x80] : static_cast<wchar_t>(code);
    }
    return text;
}

} // namespace

std::wstring FromNarrow(std::string_view bytes) {
    if (auto text = FromUtf8(bytes))
        return *std::move(text);
    return FromWindows1252(bytes);
}

std::string ToNarrow(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    const auto tail = [&](std::uint32_t code, int shift) {
        bytes += static_cast<char>(0x80 | ((code >> shift) & 0x3F));
    };
    for (const wchar_t c : text) {
        const auto code = static_cast<std::uint32_t>(c);
        if (code < 0x80) {
            bytes += static_cast<char>(code);
        } else if (code < 0x800) {
            bytes += static_cast<char>(0xC0 | (code >> 6));
            tail(code, 0);
        } else if (code > kLastCharacter || IsSurrogate(code)) {
            bytes += '?';
        } else if (code < 0x10000) {
            bytes += static_cast<char>(0xE0 | (code >> 12));
            tail(code, 6);
            tail(code, 0);
        } else {
            bytes += static_cast<char>(0xF0 | (code >> 18));
            tail(code, 12);
            tail(code, 6);
            tail(code, 0);
        }
    }
    return bytes;
}

std::u16string ToUtf16(std::wstring_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (const wchar_t c : text) {
        const auto code = static_cast<std::uint32_t>(c);
        if (code > kLastCharacter) {
            units += u'\uFFFD';
        } else if (code >= 0x10000) {
            units += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
            units += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
        } else {
            units += static_cast<char16_t>(code);
        }
    }
    return units;
}

std::wstring FromUtf16(std::u16string_view units) {
    std::wstring text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        const std::uint32_t unit = units[i];
        const bool pair = unit >= 0xD800 && unit <= 0xDBFF && i + 1 < units.size() && units[i + 1] >= 0xDC00 &&
                          units[i + 1] <= 0xDFFF;
        if (pair)
            text += static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (units[++i] - 0xDC00u));
        else
            text += static_cast<wchar_t>(unit);
    }
    return text;
}

} // namespace platform
