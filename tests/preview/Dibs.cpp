#include "tests/preview/Dibs.h"

#include <cstddef>
#include <ostream>

namespace tests {
namespace {

void append(PreviewBytes& out, std::uint64_t value, int size) {
    for (int i = 0; i < size; ++i)
        out.push_back(static_cast<std::uint8_t>(i < 8 ? value >> (8 * i) : 0));
}

void appendRow(PreviewBytes& out, const std::vector<std::uint32_t>& row, std::uint16_t bits) {
    const std::size_t start = out.size();
    if (bits >= 8) {
        for (const std::uint32_t value : row)
            append(out, value, bits / 8);
    } else {
        const std::size_t perByte = 8U / bits;
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i % perByte == 0)
                out.push_back(0);
            out.back() = static_cast<std::uint8_t>(out.back() | row[i] << (8 - bits - bits * (i % perByte)));
        }
    }
    while ((out.size() - start) % 4 != 0)
        out.push_back(0);
}

} // namespace

PreviewBytes makeDib(const DibText& text) {
    PreviewBytes out;
    append(out, text.headerSize, 4);
    append(out, static_cast<std::uint32_t>(text.width), 4);
    append(out, static_cast<std::uint32_t>(text.height), 4);
    append(out, 1, 2);
    append(out, text.bits, 2);
    append(out, text.compression, 4);
    append(out, 0, 12);
    append(out, text.coloursUsed < 0 ? text.colours.size() : static_cast<std::uint64_t>(text.coloursUsed), 4);
    append(out, 0, 4);
    for (std::uint32_t more = 40; more < text.headerSize; ++more)
        out.push_back(0);
    for (const std::uint32_t mask : text.masks)
        append(out, mask, 4);
    for (const std::uint32_t word : text.colours) {
        out.push_back(static_cast<std::uint8_t>(word >> 16));
        out.push_back(static_cast<std::uint8_t>(word >> 8));
        out.push_back(static_cast<std::uint8_t>(word));
        out.push_back(0);
    }
    for (auto row = text.rows.rbegin(); row != text.rows.rend(); ++row)
        appendRow(out, *row, text.bits);
    return out;
}

PreviewBytes makePlainDib(int width, int height, std::uint32_t colourWord) {
    DibText text;
    text.width = width;
    text.height = height;
    text.colours.assign(256, colourWord);
    text.rows.assign(static_cast<std::size_t>(height), std::vector<std::uint32_t>(static_cast<std::size_t>(width), 7));
    return makeDib(text);
}

Rgb colourOf(std::uint32_t colourWord) {
    return {static_cast<std::uint8_t>(colourWord), static_cast<std::uint8_t>(colourWord >> 8),
            static_cast<std::uint8_t>(colourWord >> 16), 0};
}

std::uint32_t wordAt(const Picture& picture, int x, int y) {
    const std::ptrdiff_t place = std::ptrdiff_t{y} * picture.width + x;
    const auto* pixel = &picture.pixels.at(static_cast<std::size_t>(place) * 3);
    return pixel[0] | static_cast<std::uint32_t>(pixel[1]) << 8 | static_cast<std::uint32_t>(pixel[2]) << 16;
}

std::string drawn(const Picture& picture) {
    std::string text;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            switch (wordAt(picture, x, y)) {
            case 0x000000:
                text += '.';
                break;
            case 0xffffff:
                text += '#';
                break;
            case 0x0000ff:
                text += 'R';
                break;
            case 0x00ff00:
                text += 'G';
                break;
            case 0xff0000:
                text += 'B';
                break;
            default:
                text += '?';
            }
        }
        text += '\n';
    }
    return text;
}

} // namespace tests

void PrintTo(const Rgb& colour, std::ostream* out) {
    *out << "rgb(" << int{colour.red} << ", " << int{colour.green} << ", " << int{colour.blue} << ")";
}
