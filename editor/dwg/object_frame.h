#pragma once

#include "editor/dwg/bits.h"
#include "editor/dwg/version.h"

#include <optional>

/// What lies around the record of an object: its length ahead, a check behind.
namespace dwg {

struct ObjectFrame {
    /// Where the record begins, counted from the length.
    std::size_t start = 0;
    std::size_t size = 0;
};

/// Reads the length at the beginning of the bytes, of which more may follow: `available` in all. Nothing for an empty
/// record or one that is longer. From 2010 on the size of the references follows the length, which doesn't count it,
/// and belongs to the record.
inline std::optional<ObjectFrame> readObjectFrame(std::span<const std::uint8_t> bytes, Release release,
                                                  std::uint64_t available) {
    BitReader head(bytes);
    ObjectFrame frame;
    frame.size = head.ms();
    frame.start = head.position() / 8;
    if (frame.size == 0)
        return std::nullopt;
    if (release >= Release::r2010) {
        head.umc();
        frame.size += head.position() / 8 - frame.start;
    }
    if (head.failed() || frame.start + frame.size > available)
        return std::nullopt;
    return frame;
}

} // namespace dwg
