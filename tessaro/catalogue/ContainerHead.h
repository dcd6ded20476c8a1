#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

/// The sixteen bytes ahead of a packed stream: the marks "akz" in 16-bit units, then these, little-endian.
struct ContainerHead {
    static constexpr std::size_t kSize = 16;
    static constexpr std::uint16_t kPacked = 1, kPackedWithPassword = 3;

    std::uint16_t kind = kPacked;
    std::uint32_t plainLength = 0; ///< bytes before packing
    std::uint32_t checksum = 1;    ///< Adler-32 of the packed bytes, before the password's step

    std::array<std::uint8_t, kSize> Bytes() const;
    /// Nothing where the bytes don't begin with the marks; of fewer than sixteen bytes the missing ones count as zero.
    static std::optional<ContainerHead> Parse(std::span<const std::uint8_t> bytes);
};
