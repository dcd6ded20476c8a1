#pragma once

#include "editor/dwg/bits.h"

/// The stream of texts that sections and objects have between data and references, from 2007 on. It ends with its
/// length and a bit that tells whether there is one.
namespace dwg {

struct TextStream {
    BitReader texts;
    /// Where the stream begins, which is where the data ends.
    std::size_t start = 0;
};

/// The stream that ends at bit `end` of the bytes; an empty one where it contradicts itself.
TextStream textStreamBefore(std::span<const std::uint8_t> bytes, std::size_t end);

/// Puts the texts behind the data.
void appendTextStream(BitWriter& data, const Bits& texts);

} // namespace dwg
