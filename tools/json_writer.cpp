#include "tools/json_writer.h"

#include <charconv>
#include <cmath>

namespace tools {

JsonWriter& JsonWriter::key(std::string_view name) {
    next();
    quote(name);
    out += ": ";
    afterKey = true;
    return *this;
}

void JsonWriter::value(std::string_view text) {
    next();
    quote(text);
}

void JsonWriter::value(std::wstring_view text) {
    value(std::string_view(utf8(text)));
}

void JsonWriter::value(double number) {
    if (!std::isfinite(number)) {
        null();
        return;
    }
    next();
    char digits[64];
    const auto done = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 17);
    out.append(digits, done.ptr);
}

void JsonWriter::value(std::uint64_t number) {
    next();
    out += std::to_string(number);
}

void JsonWriter::value(std::int64_t number) {
    next();
    out += std::to_string(number);
}

void JsonWriter::value(bool truth) {
    next();
    out += truth ? "true" : "false";
}

void JsonWriter::null() {
    next();
    out += "null";
}

void JsonWriter::begin(char bracket) {
    next();
    out += bracket;
    ++depth;
    first = true;
}

void JsonWriter::end(char bracket) {
    --depth;
    if (!first)
        out.append("\n").append(depth * 2, ' ');
    out += bracket;
    first = false;
}

void JsonWriter::next() {
    if (afterKey) {
        afterKey = false;
        return;
    }
    if (depth == 0)
        return;
    out += first ? "\n" : ",\n";
    out.append(depth * 2, ' ');
    first = false;
}

void JsonWriter::quote(std::string_view text) {
    constexpr char hex[] = "0123456789abcdef";
    out += '"';
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte == '"' || byte == '\\') {
            out += '\\';
            out += character;
        } else if (byte < 0x20) {
            out += "\\u00";
            out += hex[byte >> 4];
            out += hex[byte & 15];
        } else {
            out += character;
        }
    }
    out += '"';
}

std::string utf8(std::wstring_view text) {
    std::string out;
    for (const wchar_t unit : text) {
        auto code = static_cast<std::uint32_t>(unit);
        if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
            code = 0xFFFD;
        if (code < 0x80) {
            out += static_cast<char>(code);
            continue;
        }
        const unsigned following = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        constexpr unsigned heads[] = {0, 0xC0, 0xE0, 0xF0};
        out += static_cast<char>(heads[following] | code >> following * 6);
        for (unsigned i = following; i > 0; --i)
            out += static_cast<char>(0x80 | (code >> (i - 1) * 6 & 0x3F));
    }
    return out;
}

} // namespace tools
