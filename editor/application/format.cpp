#include "editor/application/format.h"

#include "editor/application/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <locale.h>

namespace editor {

namespace {

// Longer fields make no sense on a command line and would let a format text ask for any amount of memory.
constexpr int widestField = 4096;

class NumbersOfC {
public:
    NumbersOfC() : previous(uselocale(table())) {}
    ~NumbersOfC() { uselocale(previous); }
    NumbersOfC(const NumbersOfC&) = delete;
    NumbersOfC& operator=(const NumbersOfC&) = delete;

private:
    static locale_t table() {
        static const locale_t own = newlocale(LC_ALL_MASK, "C", nullptr);
        return own;
    }
    locale_t previous;
};

struct Field {
    std::string flags;
    int width = 0;
    int precision = -1;
    std::string length;

    bool leftAligned() const { return flags.find('-') != std::string::npos; }

    std::wstring padded(std::wstring text) const {
        if (static_cast<std::size_t>(width) > text.size()) {
            const std::size_t missing = static_cast<std::size_t>(width) - text.size();
            text.insert(leftAligned() ? text.size() : 0, missing, L' ');
        }
        return text;
    }

    std::wstring cut(std::wstring_view text) const {
        return padded(std::wstring(precision < 0 ? text : text.substr(0, static_cast<std::size_t>(precision))));
    }

    template <class Value> std::wstring number(const std::string& conversion, Value value) const {
        std::string format = "%" + flags + (width > 0 ? std::to_string(width) : "");
        if (precision >= 0)
            format += "." + std::to_string(precision);
        format += conversion;
        const NumbersOfC numbers;
        const int size = std::snprintf(nullptr, 0, format.c_str(), value);
        if (size < 0)
            return {};
        std::string text(static_cast<std::size_t>(size) + 1, '\0');
        std::snprintf(text.data(), text.size(), format.c_str(), value);
        text.pop_back();
        return {text.begin(), text.end()};
    }
};

class Formatter {
public:
    Formatter(const wchar_t* formatText, va_list given) : format(formatText) { va_copy(arguments, given); }
    ~Formatter() { va_end(arguments); }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    std::wstring run() {
        std::wstring text;
        while (*format != 0) {
            if (*format != L'%')
                text += *format++;
            else
                text += conversion();
        }
        return text;
    }

private:
    std::wstring conversion() {
        const wchar_t* const start = format++;
        Field field;
        while (*format == L'-' || *format == L'+' || *format == L' ' || *format == L'#' || *format == L'0')
            field.flags += static_cast<char>(*format++);
        field.width = count();
        if (field.width < 0) {
            field.flags += '-';
            field.width = std::min(-field.width, widestField);
        }
        if (*format == L'.') {
            ++format;
            field.precision = std::max(-1, count());
        }
        while (*format == L'h' || *format == L'l' || *format == L'j' || *format == L'z' || *format == L't' ||
               *format == L'L')
            field.length += static_cast<char>(*format++);
        if (*format == 0)
            return {start, format};
        return converted(start, field, *format++);
    }

    std::wstring converted(const wchar_t* start, const Field& field, wchar_t kind) {
        switch (kind) {
        case L'%':
            return L"%";
        case L's':
            return field.length == "h" ? narrowText(field) : wideText(field);
        case L'S':
            return narrowText(field);
        case L'c':
        case L'C':
            return field.padded(std::wstring(1, static_cast<wchar_t>(va_arg(arguments, unsigned))));
        case L'd':
        case L'i':
            return field.number("jd", signedNumber(field));
        case L'u':
        case L'x':
        case L'X':
        case L'o':
            return field.number(std::string("j") + static_cast<char>(kind), unsignedNumber(field));
        case L'f':
        case L'F':
        case L'e':
        case L'E':
        case L'g':
        case L'G':
        case L'a':
        case L'A':
            if (field.length == "L")
                return field.number(std::string("L") + static_cast<char>(kind), va_arg(arguments, long double));
            return field.number(std::string(1, static_cast<char>(kind)), va_arg(arguments, double));
        case L'p':
            return field.number("p", va_arg(arguments, void*));
        case L'n':
            static_cast<void>(va_arg(arguments, void*));
            return {};
        default:
            return {start, format};
        }
    }

    int count() {
        if (*format == L'*') {
            ++format;
            return std::clamp(va_arg(arguments, int), -widestField, widestField);
        }
        int value = 0;
        while (isDigit(*format))
            value = std::min(value * 10 + static_cast<int>(*format++ - L'0'), widestField);
        return value;
    }

    std::wstring wideText(const Field& field) {
        const wchar_t* const text = va_arg(arguments, const wchar_t*);
        return field.cut(text != nullptr ? text : L"(null)");
    }

    std::wstring narrowText(const Field& field) {
        const char* const text = va_arg(arguments, const char*);
        return field.cut(text != nullptr ? fromNarrow(text) : L"(null)");
    }

    std::intmax_t signedNumber(const Field& field) {
        if (field.length == "l")
            return va_arg(arguments, long);
        if (field.length == "ll" || field.length == "j" || field.length == "z" || field.length == "t")
            return va_arg(arguments, long long);
        const int value = va_arg(arguments, int);
        return field.length == "h"    ? static_cast<short>(value)
               : field.length == "hh" ? static_cast<char>(value)
                                      : value;
    }

    std::uintmax_t unsignedNumber(const Field& field) {
        if (field.length == "l")
            return va_arg(arguments, unsigned long);
        if (field.length == "ll" || field.length == "j" || field.length == "z" || field.length == "t")
            return va_arg(arguments, unsigned long long);
        const unsigned value = va_arg(arguments, unsigned);
        return field.length == "h" ? value & 0xFFFFu : field.length == "hh" ? value & 0xFFu : value;
    }

    const wchar_t* format;
    va_list arguments;
};

std::wstring widened(const char* first, const char* last) {
    return {first, last};
}

} // namespace

std::wstring formatWide(const wchar_t* format, va_list arguments) {
    return Formatter(format, arguments).run();
}

std::wstring numberText(double value) {
    char digits[64];
    const bool common = value == 0 || (std::abs(value) >= 1e-4 && std::abs(value) < 1e16);
    const auto end = common ? std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed)
                            : std::to_chars(digits, digits + sizeof digits, value);
    return widened(digits, end.ptr);
}

std::wstring numberText(double value, int decimals) {
    char digits[400];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
    return end.ec == std::errc() ? widened(digits, end.ptr) : numberText(value);
}

} // namespace editor
