#pragma once

#include "editor/dwg/source.h"

/// The checks of the 2007 container. All take their seed from the number of bytes, by the linear sequence
/// n * 214013 + 2531011, and take the bytes of every eight in the order 6 7 4 5 2 3 0 1, then those of a rest of four,
/// two and one likewise. The shifted-register checks: ECMA-182 high bit first (polynomial 0x42F0E1EBA9EA3693) and Jones
/// low bit first (0xAD93D23594C935A9).
namespace dwg {

/// Of packed pages and of the maps, packed and unpacked.
std::uint64_t pageCheck2007(ByteView bytes);

/// Of unpacked pages: the two sums of pageChecksum.
std::uint32_t pageChecksum2007(ByteView bytes);

/// Of the file header's record and of its packed bytes.
std::uint64_t headerCheck2007(ByteView bytes);

/// The check that goes with a key in the file header.
std::uint64_t keyCheck2007(std::uint64_t key);

constexpr std::size_t checkDataLength2007 = 0x28;

/// The bytes that close the file header: two checks over two numbers, the numbers, and one more.
Bytes checkData2007(std::uint64_t first, std::uint64_t second, std::uint64_t further);

} // namespace dwg
