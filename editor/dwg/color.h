#pragma once

#include <cstdint>
#include <string>

namespace dwg {

/// A colour: index 0 is BYBLOCK, 256 BYLAYER, 257 none, negative that of a layer that is off.
struct Color {
    std::int16_t index = 256;
    /// From 2004 on: red, green, blue in the lowest 24 bits where hasRgb is set. The index is an
    /// approximation then, or means nothing.
    std::uint32_t rgb = 0;
    bool hasRgb = false;

    bool operator==(const Color&) const = default;
};

/// The four bytes that drawings store from 2004 on: 0xC0 by layer, 0xC1 by block, 0xC2 and the true colour, 0xC3 and
/// the index, 0xC8 none, the kind in the highest byte.
std::uint32_t packedColor(const Color& color);
/// The reverse; `index` is what stands ahead of the four bytes, for kinds that don't tell the index themselves.
Color unpackedColor(std::uint32_t packed, std::int16_t index);

/// A colour that may come from a book: what layers and others have from 2004 on.
struct NamedColor : Color {
    std::wstring name{}, book{};

    bool operator==(const NamedColor&) const = default;
};

} // namespace dwg
