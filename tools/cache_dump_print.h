#pragma once

#include "tessaro/platform/Time.h"

#include <cstdint>
#include <string>

/// Lines on the standard output, built piece by piece, so that what was read ahead of a damage is printed.
namespace tools {

class LinePrinter {
public:
    ~LinePrinter() { end(); }
    LinePrinter() = default;
    LinePrinter(const LinePrinter&) = delete;
    LinePrinter& operator=(const LinePrinter&) = delete;

    /// One piece; pieces of a line are set apart by two blanks.
    LinePrinter& add(const std::string& piece);
    /// Ends a line that was begun.
    void end();
    void line(const std::string& whole) { add(whole).end(); }

private:
    std::string text;
};

/// In quotes, with control characters, quotes and backslashes written out.
std::string quoted(const std::wstring& text);
/// Seconds since 1970 and the date that they are, UTC.
std::string dated(platform::Time time);
std::string hexadecimal(std::uint32_t value);

} // namespace tools
