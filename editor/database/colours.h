#pragma once

#include <cstdint>

namespace editor {

struct Rgb {
    std::uint8_t red = 0, green = 0, blue = 0;
    bool operator==(const Rgb&) const = default;
};

constexpr std::uint16_t colourByBlock = 0;
constexpr std::uint16_t colourByLayer = 256;
/// The index that is drawn in the contrast of the background.
constexpr std::uint16_t colourForeground = 7;

/// The colour of an index 1 to 255; any other number gives that of index 7 (white).
Rgb colourOfIndex(std::uint16_t index);

/// The index (1 to 255) whose colour lies nearest, by the sum of squares; of several equal ones the lowest.
std::uint16_t nearestIndex(Rgb colour);

/// The same for a true colour as drawings store it: red, green and blue in the lowest 24 bits.
inline std::int16_t nearestIndexOf(std::uint32_t rgb) {
    const auto byte = [rgb](unsigned shift) { return static_cast<std::uint8_t>(rgb >> shift); };
    return static_cast<std::int16_t>(nearestIndex({byte(16), byte(8), byte(0)}));
}

} // namespace editor
