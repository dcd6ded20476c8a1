#pragma once

#include "tessaro/browser/preview/Preview.h"

#include <cstdint>
#include <optional>
#include <span>

/// Builds a preview of 24 bits a pixel: rows bottom up, blue, green, red, each padded to a multiple of four bytes.
/// `rgb` is top down, red, green, blue, without padding, width times height times 3 bytes. The header keeps the low 16
/// bits of width and height only.
void RgbToDib(PreviewBytes& out, const std::uint8_t* rgb, unsigned width, unsigned height);

/// The most pixels of a PNG that are decoded.
constexpr std::uint64_t kLargestPngArea = std::uint64_t{8} << 20;

/// A PNG as a preview in memory. None for one that can't be decoded, and for one whose size or packed data goes beyond
/// what a preview is; that is found out before anything is allocated for it.
std::optional<PreviewBytes> DecodePng(std::span<const std::uint8_t> png);
