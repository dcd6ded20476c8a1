#pragma once

#include <cstdint>

namespace dwg {

/// A colour as stored: index 0 is BYBLOCK, 256 BYLAYER, negative that of a layer that is off.
struct Color {
    std::int16_t index = 256;
    /// From 2004 on: red, green, blue in the lowest 24 bits where hasRgb is set.
    std::uint32_t rgb = 0;
    bool hasRgb = false;

    bool operator==(const Color&) const = default;
};

} // namespace dwg
