#pragma once

#include "tessaro/catalogue/Directory.h"

#include <cstdint>
#include <vector>

/// A preview in memory: a 40-byte bitmap header, the colour table, the pixels. Bytes that a header places past the end
/// count as zero.
using PreviewBytes = std::vector<std::uint8_t>;

/// Pairs of marks in pixels of the preview, x then y, y counted from the bottom.
using MarkPoints = std::vector<double>;

/// Sets `backColor` and `foreColor` from the host's colour word (red in the low byte). Black stands only on eight pure
/// colours; this is a list, not a brightness.
void SetBackground(std::uint32_t colourWord);

/// Draws the preview with its marks into both image lists: a new slot where `imageIndex` is 0, else the old one. The
/// palette of a preview that is no PNG is adapted in place. Worker's call; the caller brings the lists.
void RenderThumbnail(Directory& directory, Block& block, PreviewBytes& preview, bool isPng, const MarkPoints& points);
