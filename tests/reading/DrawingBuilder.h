#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tests {

/// Composes the parts of a drawing that the examination reads: mark, address, image section, data. What is not set is
/// filled with 0xAB, so that nothing passes by being zero.
class DrawingBuilder {
public:
    explicit DrawingBuilder(std::string_view versionMark) : magic(versionMark) {}

    /// An entry with its data behind the section.
    DrawingBuilder& entry(std::uint8_t code, std::string_view data);
    /// An entry that says of its data what it likes.
    DrawingBuilder& entryAt(std::uint8_t code, std::uint32_t start, std::uint32_t size);
    /// Puts this address in the header in place of the true one.
    DrawingBuilder& address(std::uint32_t value);
    /// Counts this many entries in place of the true number.
    DrawingBuilder& count(std::uint8_t value);

    std::string bytes() const;
    operator std::string() const { return bytes(); }

private:
    struct Entry {
        std::uint8_t code = 0;
        std::uint32_t start = 0;
        std::uint32_t size = 0;
        std::string data;
        bool placed = false;
    };
    std::string magic;
    std::vector<Entry> entries;
    std::int64_t sectionAddress = -1;
    int entryCount = -1;
};

/// A bitmap of 24 bits in one colour (red in the low byte), as code 2 holds it.
std::string plainBitmap(int width, int height, std::uint32_t colourWord);
/// A PNG in one colour.
std::string plainPng(unsigned width, unsigned height, std::uint32_t colourWord);
/// The same bitmap as a file.
std::string bitmapFile(const std::string& bitmap);

/// The bytes up to `length`.
std::string cut(std::string bytes, std::size_t length);

} // namespace tests
