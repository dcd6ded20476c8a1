#include "tessaro/platform/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace platform {
namespace {

/// One conversion: %[flags][width][.precision][size]letter
struct Conversion {
    bool left = false, plus = false, blank = false, zeros = false, alternate = false;
    std::size_t width = 0;
    bool hasPrecision = false;
    std::size_t precision = 0;
    enum class Size { Int, Char, Short, Long, LongLong } size = Size::Int;
    wchar_t letter = 0;
};

/// The arguments of a call, handed on by reference.
struct Arguments {
    std::va_list list;
};

std::size_t ReadCount(const wchar_t*& at) {
    std::size_t value = 0;
    for (; *at >= L'0' && *at <= L'9'; ++at)
        value = std::min(value * 10 + static_cast<std::size_t>(*at - L'0'), kFormatLimit);
    return value;
}

Conversion ReadConversion(const wchar_t*& at, Arguments& arguments) {
    Conversion c;
    for (bool flags = true; flags;) {
        switch (*at) {
        case L'-':
            c.left = true;
            break;
        case L'+':
            c.plus = true;
            break;
        case L' ':
            c.blank = true;
            break;
        case L'0':
            c.zeros = true;
            break;
        case L'#':
            c.alternate = true;
            break;
        default:
            flags = false;
            continue;
        }
        ++at;
    }
    if (*at == L'*') {
        ++at;
        const std::int64_t width = va_arg(arguments.list, int);
        c.left = c.left || width < 0;
        c.width = std::min(static_cast<std::size_t>(width < 0 ? -width : width), kFormatLimit);
    } else {
        c.width = ReadCount(at);
    }
    if (*at == L'.') {
        ++at;
        c.hasPrecision = true;
        if (*at == L'*') {
            ++at;
            const int precision = va_arg(arguments.list, int);
            c.hasPrecision = precision >= 0;
            c.precision = precision < 0 ? 0 : std::min(static_cast<std::size_t>(precision), kFormatLimit);
        } else {
            c.precision = ReadCount(at);
        }
    }
    for (;; ++at) {
        if (*at == L'l')
            c.size = c.size == Conversion::Size::Long ? Conversion::Size::LongLong : Conversion::Size::Long;
        else if (*at == L'h')
            c.size = c.size == Conversion::Size::Short ? Conversion::Size::Char : Conversion::Size::Short;
        else if (*at == L'z')
            c.size = Conversion::Size::Long;
        else
            break;
    }
    c.letter = *at;
    if (*at != 0)
        ++at;
    return c;
}

/// Prefix (sign, "0x") and body to the width; zeros go between the two.
void Pad(std::wstring& out, const Conversion& c, std::wstring_view prefix, std::wstring_view body, bool zeros) {
    const std::size_t length = prefix.size() + body.size();
    const std::size_t fill = c.width > length ? c.width - length : 0;
    if (!c.left && !zeros)
        out.append(fill, L' ');
    out.append(prefix);
    if (!c.left && zeros)
        out.append(fill, L'0');
    out.append(body);
    if (c.left)
        out.append(fill, L' ');
}

std::wstring_view SignOf(const Conversion& c, bool negative) {
    return negative ? L"-" : c.plus ? L"+" : c.blank ? L" " : L"";
}

void PutInteger(std::wstring& out, const Conversion& c, std::wstring_view prefix, std::uint64_t magnitude,
                unsigned base, bool capitals) {
    std::wstring digits;
    for (; magnitude != 0; magnitude /= base)
        digits += (capitals ? L"0123456789ABCDEF" : L"0123456789abcdef")[magnitude % base];
    const std::size_t least = c.hasPrecision ? c.precision : 1;
    if (digits.size() < least)
        digits.append(least - digits.size(), L'0');
    std::reverse(digits.begin(), digits.end());
    Pad(out, c, prefix, digits, c.zeros && !c.hasPrecision);
}

void PutSigned(std::wstring& out, const Conversion& c, Arguments& arguments) {
    using Size = Conversion::Size;
    std::int64_t value;
    if (c.size == Size::LongLong)
        value = va_arg(arguments.list, long long);
    else if (c.size == Size::Long)
        value = va_arg(arguments.list, long);
    else
        value = va_arg(arguments.list, int);
    if (c.size == Size::Short)
        value = static_cast<short>(value);
    else if (c.size == Size::Char)
        value = static_cast<signed char>(value);
    const std::uint64_t magnitude =
        value < 0 ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
    PutInteger(out, c, SignOf(c, value < 0), magnitude, 10, false);
}

void PutUnsigned(std::wstring& out, const Conversion& c, Arguments& arguments) {
    using Size = Conversion::Size;
    std::uint64_t value;
    if (c.size == Size::LongLong)
        value = va_arg(arguments.list, unsigned long long);
    else if (c.size == Size::Long)
        value = va_arg(arguments.list, unsigned long);
    else
        value = va_arg(arguments.list, unsigned);
    if (c.size == Size::Short)
        value = static_cast<unsigned short>(value);
    else if (c.size == Size::Char)
        value = static_cast<unsigned char>(value);
    const bool hex = c.letter != L'u', capitals = c.letter == L'X';
    const std::wstring_view prefix = hex && c.alternate && value != 0 ? (capitals ? L"0X" : L"0x") : L"";
    PutInteger(out, c, prefix, value, hex ? 16 : 10, capitals);
}

void PutReal(std::wstring& out, const Conversion& c, double value) {
    const std::wstring_view sign = SignOf(c, std::signbit(value));
    const bool capitals = c.letter == L'E' || c.letter == L'G';
    if (!std::isfinite(value)) {
        const std::wstring word = std::isnan(value) ? L"nan" : L"inf";
        Pad(out, c, sign, capitals ? ToUpper(word) : word, false);
        return;
    }
    const auto style = c.letter == L'f'                       ? std::chars_format::fixed
                       : c.letter == L'e' || c.letter == L'E' ? std::chars_format::scientific
                                                              : std::chars_format::general;
    // No double has more than 1,100 digits on either side of its point.
    const std::size_t precision = c.hasPrecision ? std::min<std::size_t>(c.precision, 1100) : 6;
    char digits[2400];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, std::fabs(value), style, static_cast<int>(precision));
    std::wstring body(digits, end.ptr);
    if (c.letter == L'f' && c.precision > precision)
        body.append(c.precision - precision, L'0');
    Pad(out, c, sign, capitals ? ToUpper(body) : body, c.zeros);
}

void PutText(std::wstring& out, const Conversion& c, Arguments& arguments) {
    const std::size_t most = c.hasPrecision ? c.precision : kFormatLimit;
    if (c.letter == L'S' || c.size == Conversion::Size::Short) {
        const char* text = va_arg(arguments.list, const char*);
        Pad(out, c, L"", text == nullptr ? std::wstring() : FromNarrow({text, strnlen(text, most)}), false);
    } else {
        const wchar_t* text = va_arg(arguments.list, const wchar_t*);
        Pad(out, c, L"", text == nullptr ? std::wstring_view() : std::wstring_view(text, wcsnlen(text, most)), false);
    }
}

/// Carries one conversion out; false for a letter that is not known.
bool Put(std::wstring& out, const Conversion& c, Arguments& arguments) {
    switch (c.letter) {
    case L'd':
    case L'i':
        PutSigned(out, c, arguments);
        return true;
    case L'u':
    case L'x':
    case L'X':
        PutUnsigned(out, c, arguments);
        return true;
    case L'f':
    case L'e':
    case L'E':
    case L'g':
    case L'G':
        PutReal(out, c, va_arg(arguments.list, double));
        return true;
    case L's':
    case L'S':
        PutText(out, c, arguments);
        return true;
    case L'c':
        Pad(out, c, L"", std::wstring(1, static_cast<wchar_t>(va_arg(arguments.list, int))), false);
        return true;
    case L'%':
        out += L'%';
        return true;
    default:
        return false;
    }
}

} // namespace

std::wstring FormatV(const wchar_t* format, std::va_list list) {
    Arguments arguments;
    va_copy(arguments.list, list);
    std::wstring out;
    for (const wchar_t* at = format; *at != 0 && out.size() < kFormatLimit;) {
        if (*at != L'%') {
            out += *at++;
            continue;
        }
        const wchar_t* const start = at++;
        if (!Put(out, ReadConversion(at, arguments), arguments))
            out.append(start, at);
    }
    va_end(arguments.list);
    if (out.size() > kFormatLimit)
        out.resize(kFormatLimit);
    return out;
}

std::wstring Format(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::wstring result = FormatV(format, arguments);
    va_end(arguments);
    return result;
}

} // namespace platform
