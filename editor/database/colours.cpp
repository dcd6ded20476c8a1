#include "editor/database/colours.h"

#include <array>

namespace editor {

namespace {

constexpr std::size_t indexCount = 256;
constexpr int firstHue = 10;
constexpr int firstGrey = 250;

// Indices 10 to 249 are 24 hues of ten entries: five brightnesses, each first saturated, then half so. A hue is four
// steps between two of the six pure colours.
Rgb colourOfHue(int index) {
    constexpr std::array<double, 5> brightness = {255, 165, 127, 76, 38};
    const int hue = (index - firstHue) / 10;
    const double high = brightness[static_cast<std::size_t>(index % 10 / 2)];
    const double low = index % 2 == 0 ? 0 : high / 2;
    const int sector = hue / 4;
    const double rising = low + (high - low) * (hue % 4) / 4;
    const double falling = low + (high - low) * (4 - hue % 4) / 4;
    const auto make = [](double red, double green, double blue) {
        return Rgb{static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green), static_cast<std::uint8_t>(blue)};
    };
    switch (sector) {
    case 0:
        return make(high, rising, low);
    case 1:
        return make(falling, high, low);
    case 2:
        return make(low, high, rising);
    case 3:
        return make(low, falling, high);
    case 4:
        return make(rising, low, high);
    default:
        return make(high, low, falling);
    }
}

std::array<Rgb, indexCount> makeTable() {
    constexpr std::array<Rgb, 10> named = {{{255, 255, 255},
                                            {255, 0, 0},
                                            {255, 255, 0},
                                            {0, 255, 0},
                                            {0, 255, 255},
                                            {0, 0, 255},
                                            {255, 0, 255},
                                            {255, 255, 255},
                                            {128, 128, 128},
                                            {192, 192, 192}}};
    constexpr std::array<std::uint8_t, 6> greys = {51, 91, 132, 173, 214, 255};
    std::array<Rgb, indexCount> table;
    for (int index = 0; index < static_cast<int>(indexCount); ++index) {
        const auto slot = static_cast<std::size_t>(index);
        if (index < firstHue) {
            table[slot] = named[slot];
        } else if (index < firstGrey) {
            table[slot] = colourOfHue(index);
        } else {
            const std::uint8_t grey = greys[slot - firstGrey];
            table[slot] = {grey, grey, grey};
        }
    }
    return table;
}

const std::array<Rgb, indexCount>& table() {
    static const std::array<Rgb, indexCount> colours = makeTable();
    return colours;
}

} // namespace

Rgb colourOfIndex(std::uint16_t index) {
    return table()[index > 0 && index < indexCount ? index : colourForeground];
}

std::uint16_t nearestIndex(Rgb colour) {
    std::uint16_t best = colourForeground;
    int bestDistance = 3 * 256 * 256;
    for (std::uint16_t index = 1; index < indexCount; ++index) {
        const Rgb candidate = table()[index];
        const int red = candidate.red - colour.red;
        const int green = candidate.green - colour.green;
        const int blue = candidate.blue - colour.blue;
        const int distance = red * red + green * green + blue * blue;
        if (distance < bestDistance) {
            bestDistance = distance;
            best = index;
        }
    }
    return best;
}

} // namespace editor
