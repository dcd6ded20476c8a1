#pragma once

#include <cstdint>
#include <span>

/// Length of the version mark at the front of a drawing.
constexpr std::size_t kMagicSize = 6;

/// Oldest `fileType` whose files have an image section.
constexpr std::int32_t kFirstTypeWithImages = 14;

/// Index into FileTypeNames for the mark, recognised by its CRC-32; 0 for any other.
std::int32_t DrawingType(std::span<const std::uint8_t, kMagicSize> magic);
