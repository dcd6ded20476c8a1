#pragma once

#include "tessaro/browser/preview/Preview.h"

#include <array>
#include <cstdint>

/// What the 40-byte header of a preview says; nothing of it is checked. Fields that are not there are zero.
struct DibHeader {
    std::uint32_t size = 0; ///< of the header itself; the colour table stands behind it
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint16_t bits = 0;
    std::uint32_t compression = 0;
    std::uint32_t colours = 0; ///< as stored, 0 included

    /// Where the pixels start when the colour table has as many entries as the header says: behind the end of the
    /// preview for a hostile header.
    std::uint64_t PixelOffset() const { return size + std::uint64_t{colours} * 4; }
};

constexpr std::size_t kDibHeaderSize = 40;

DibHeader ReadDibHeader(const PreviewBytes& preview);
/// Patches the count of colours in place.
void SetDibColours(PreviewBytes& preview, std::uint32_t colours);

/// Reads the pixels of a preview: rows bottom up, 1, 4, 8, 16, 24 or 32 bits, plain or with colour masks. Bytes past
/// the end count as zero; an index past the colour table is black.
class DibPixels {
public:
    DibPixels(const PreviewBytes& bytes, std::uint64_t pixelOffset);

    /// False for a depth or a compression that can't be drawn, and for a picture without extent (a negative one
    /// included).
    bool IsDrawable() const { return drawable; }
    std::int64_t Width() const { return header.width; }
    std::int64_t Height() const { return header.height; }

    /// Rows, counted from the bottom, of which at least one byte is there.
    std::int64_t RowsPresent() const;
    /// Pixels of such a row, from the left, of which at least one byte is there.
    std::int64_t ColumnsPresent(std::int64_t row) const;
    /// Red in the low byte. Row and column must lie in the picture.
    std::uint32_t Colour(std::int64_t row, std::int64_t column) const;
    /// The colour of pixels that are not there.
    std::uint32_t ColourOfZero() const { return colourOfZero; }

private:
    std::uint32_t Byte(std::uint64_t offset) const { return offset < preview.size() ? preview[offset] : 0; }
    std::uint32_t ColourOf(std::uint32_t value) const;
    void ReadPalette();
    void ReadMasks();

    const PreviewBytes& preview;
    const DibHeader header;
    const std::uint64_t start;
    std::uint64_t stride = 0;
    bool drawable = false;
    std::array<std::uint32_t, 256> palette{};
    std::array<std::uint32_t, 3> masks{}; ///< red, green, blue
    std::uint32_t colourOfZero = 0;
};
