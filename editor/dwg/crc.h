#pragma once

#include <cstdint>
#include <span>

namespace dwg {

/// Seed of the 16-bit checks over objects, object map pages, classes and header variables.
constexpr std::uint16_t crc16Seed = 0xC0C1;

/// The format's 16-bit check: reflected polynomial 0xA001, no final inversion. Pass the result of the bytes before as
/// `seed` to go on.
std::uint16_t crc16(std::span<const std::uint8_t> bytes, std::uint16_t seed = crc16Seed);

/// The 32-bit check of the paged container (reflected polynomial 0xEDB88320, inverted at both ends).
std::uint32_t crc32(std::span<const std::uint8_t> bytes, std::uint32_t seed = 0);

} // namespace dwg
