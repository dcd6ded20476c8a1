#pragma once

#include "editor/dwg/source.h"

/// Numbers of the 2004, 2010, 2013 and 2018 containers that reading and writing share.
namespace dwg::paged {

constexpr std::uint64_t fileHeaderOffset = 0x80;
constexpr std::size_t fileHeaderLength = 0x6C;
constexpr std::uint64_t firstPageOffset = 0x100;
constexpr std::uint32_t pageMapType = 0x41630E3B;
constexpr std::uint32_t sectionMapType = 0x4163003B;
constexpr std::uint32_t dataPageType = 0x4163043B;
constexpr std::uint32_t dataPageMask = 0x4164536B;
constexpr std::size_t systemPageHead = 20;
constexpr std::size_t dataPageHead = 32;
constexpr std::size_t pageAlignment = 0x20;
constexpr std::size_t dataPageSize = 0x7400;

/// The file header begins with this and a closing zero.
constexpr std::string_view headerMark = "AcFssFcAJMB";

/// The sequence that hides the file header and fills pages up.
class MaskSequence {
public:
    std::uint8_t next() {
        state = state * 0x343FD + 0x269EC3;
        return static_cast<std::uint8_t>(state >> 16);
    }

private:
    std::uint32_t state = 1;
};

/// Hides the head of a data page that lies at `offset`, or uncovers it.
inline void maskPageHead(Bytes& head, std::uint64_t offset) {
    const auto mask = static_cast<std::uint32_t>(dataPageMask ^ offset);
    for (std::size_t i = 0; i < dataPageHead; ++i)
        head[i] = static_cast<std::uint8_t>(head[i] ^ mask >> i % 4 * 8);
}

} // namespace dwg::paged
