#include "tools/cache_dump_print.h"

#include "tessaro/platform/Text.h"

#include <cstdio>
#include <ctime>

namespace tools {

LinePrinter& LinePrinter::add(const std::string& piece) {
    if (!text.empty())
        text += "  ";
    text += piece;
    return *this;
}

void LinePrinter::end() {
    if (!text.empty())
        std::puts(text.c_str());
    text.clear();
}

std::string quoted(const std::wstring& text) {
    std::string result = "\"";
    for (const char c : platform::ToNarrow(text)) {
        const auto code = static_cast<unsigned char>(c);
        if (code < 0x20 || code == 0x7F) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%02x", code);
            result += escape;
        } else {
            if (c == '"' || c == '\\')
                result += '\\';
            result += c;
        }
    }
    return result + "\"";
}

std::string dated(platform::Time time) {
    const std::time_t seconds = time;
    std::tm utc{};
    char date[64];
    if (gmtime_r(&seconds, &utc) == nullptr || std::strftime(date, sizeof date, "%Y-%m-%d %H:%M:%S", &utc) == 0)
        return std::to_string(time);
    return std::to_string(time) + " (" + date + ")";
}

std::string hexadecimal(std::uint32_t value) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%08x", value);
    return digits;
}

} // namespace tools
