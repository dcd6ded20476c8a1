#include "tests/reading/DrawingBuilder.h"

#include <lodepng.h>

#include <stdexcept>

namespace tests {
namespace {

constexpr std::size_t kSectionAt = 48;
constexpr char kFiller = '\xAB';

std::string number(std::uint64_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(i < 8 ? value >> (8 * i) : 0);
    return bytes;
}

} // namespace

DrawingBuilder& DrawingBuilder::entry(std::uint8_t code, std::string_view data) {
    entries.push_back({code, 0, static_cast<std::uint32_t>(data.size()), std::string(data), false});
    return *this;
}

DrawingBuilder& DrawingBuilder::entryAt(std::uint8_t code, std::uint32_t start, std::uint32_t size) {
    entries.push_back({code, start, size, {}, true});
    return *this;
}

DrawingBuilder& DrawingBuilder::address(std::uint32_t value) {
    sectionAddress = value;
    return *this;
}

DrawingBuilder& DrawingBuilder::count(std::uint8_t value) {
    entryCount = value;
    return *this;
}

std::string DrawingBuilder::bytes() const {
    std::string out = magic;
    out.resize(13, kFiller);
    out += number(sectionAddress < 0 ? kSectionAt : static_cast<std::uint64_t>(sectionAddress), 4);
    out.resize(kSectionAt + 20, kFiller); // With the sentinel and the overall size, which nobody reads.
    out += static_cast<char>(entryCount < 0 ? static_cast<int>(entries.size()) : entryCount);
    std::size_t dataAt = out.size() + 9 * entries.size();
    std::string data;
    for (const Entry& entry : entries) {
        out += static_cast<char>(entry.code);
        out += number(entry.placed ? entry.start : dataAt + data.size(), 4);
        out += number(entry.size, 4);
        data += entry.data;
    }
    return out + data;
}

std::string plainBitmap(int width, int height, std::uint32_t colourWord) {
    std::string out = number(40, 4) + number(static_cast<std::uint32_t>(width), 4) +
                      number(static_cast<std::uint32_t>(height), 4) + number(1, 2) + number(24, 2) + number(0, 16) +
                      number(256, 4) + number(0, 4);
    out.append(1024, '\x55'); // A table that nobody uses: the large picture would count it all the same.
    for (int y = 0; y < height; ++y) {
        const std::size_t start = out.size();
        for (int x = 0; x < width; ++x)
            out += {static_cast<char>(colourWord >> 16), static_cast<char>(colourWord >> 8),
                    static_cast<char>(colourWord)};
        while ((out.size() - start) % 4 != 0)
            out += '\0';
    }
    return out;
}

std::string plainPng(unsigned width, unsigned height, std::uint32_t colourWord) {
    std::vector<unsigned char> rgb;
    for (std::size_t i = 0; i < std::size_t{width} * height; ++i)
        rgb.insert(rgb.end(), {static_cast<unsigned char>(colourWord), static_cast<unsigned char>(colourWord >> 8),
                               static_cast<unsigned char>(colourWord >> 16)});
    std::vector<unsigned char> png;
    if (lodepng::encode(png, rgb, width, height, LCT_RGB) != 0)
        throw std::runtime_error("can't encode a PNG");
    return {png.begin(), png.end()};
}

std::string bitmapFile(const std::string& bitmap) {
    return "BM" + std::string(12, kFiller) + bitmap;
}

std::string cut(std::string bytes, std::size_t length) {
    bytes.resize(std::min(length, bytes.size()));
    return bytes;
}

} // namespace tests
