#include "editor/dwg/code_page.h"

#include "editor/dwg/code_page_tables.h"

#include <algorithm>
#include <optional>

namespace dwg {

namespace {

const char16_t* tableOf(std::uint16_t number) {
    using namespace code_page_tables;
    switch (number) {
    case 28:
        return windows1250;
    case 29:
        return windows1251;
    case 32:
        return windows1253;
    case 33:
        return windows1254;
    case 34:
        return windows1255;
    case 35:
        return windows1256;
    case 36:
        return windows1257;
    case 37:
        return windows874;
    case 44:
        return windows1258;
    default:
        return windows1252;
    }
}

std::optional<unsigned> hexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return std::nullopt;
}

constexpr std::string_view escapeHead = "\\U+";
constexpr std::size_t escapeLength = 7;

/// The UTF-16 unit of an escape that the text begins with.
std::optional<unsigned> escapedUnit(std::string_view text) {
    if (text.size() < escapeLength || !text.starts_with(escapeHead))
        return std::nullopt;
    unsigned unit = 0;
    for (const char c : text.substr(escapeHead.size(), 4)) {
        const std::optional<unsigned> digit = hexDigit(c);
        if (!digit)
            return std::nullopt;
        unit = unit << 4 | *digit;
    }
    return unit;
}

void appendEscape(std::string& text, unsigned unit) {
    constexpr char digits[] = "0123456789ABCDEF";
    text += escapeHead;
    for (int shift = 12; shift >= 0; shift -= 4)
        text += digits[unit >> shift & 0xF];
}

bool isHighSurrogate(unsigned unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(unsigned unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

} // namespace

CodePage::CodePage(std::uint16_t number) : upperHalf(tableOf(number)) {}

std::wstring CodePage::decode(std::string_view text) const {
    std::wstring wide;
    wide.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte >= 0x80) {
            wide.push_back(static_cast<wchar_t>(upperHalf[byte - 0x80]));
            continue;
        }
        const std::optional<unsigned> unit = byte == '\\' ? escapedUnit(text.substr(i)) : std::optional<unsigned>{};
        if (!unit) {
            wide.push_back(static_cast<wchar_t>(byte));
            continue;
        }
        i += escapeLength - 1;
        if (isLowSurrogate(*unit) && !wide.empty() && isHighSurrogate(static_cast<unsigned>(wide.back())))
            wide.back() = static_cast<wchar_t>(0x10000 + ((static_cast<unsigned>(wide.back()) - 0xD800) << 10) +
                                               (*unit - 0xDC00));
        else
            wide.push_back(static_cast<wchar_t>(*unit));
    }
    return wide;
}

std::string CodePage::encode(std::wstring_view text) const {
    std::string narrow;
    narrow.reserve(text.size());
    for (const wchar_t wide : text) {
        const auto point = static_cast<unsigned>(wide);
        if (point < 0x80) {
            narrow.push_back(static_cast<char>(point));
            continue;
        }
        const char16_t* const found =
            point > 0xFFFF ? upperHalf + 128 : std::find(upperHalf, upperHalf + 128, static_cast<char16_t>(point));
        if (found != upperHalf + 128) {
            narrow.push_back(static_cast<char>(0x80 + (found - upperHalf)));
        } else if (point > 0xFFFF) {
            appendEscape(narrow, 0xD800 + ((point - 0x10000) >> 10 & 0x3FF));
            appendEscape(narrow, 0xDC00 + ((point - 0x10000) & 0x3FF));
        } else {
            appendEscape(narrow, point);
        }
    }
    return narrow;
}

} // namespace dwg
