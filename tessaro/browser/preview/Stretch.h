#pragma once

#include "tessaro/browser/preview/Dib.h"

/// How source pixels that meet in one destination pixel are combined.
enum class StretchMode {
    BlackOnWhite = 1, ///< AND of their colours: dark lines survive
    WhiteOnBlack = 2, ///< OR of their colours: light lines survive
};

/// A rectangle by corner and extent; empty or negative extents hold nothing.
struct PixelBox {
    std::int64_t left = 0;
    std::int64_t top = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
};

/// The source pixels, first to one past the last, that belong to destination pixel `index` when `source` pixels are
/// brought to `destination` pixels. Each axis for itself: a source pixel goes where its middle falls, on a tie to the
/// left; growing, a destination pixel takes the source pixel in which its middle lies.
struct PixelRun {
    std::int64_t first = 0;
    std::int64_t end = 0;
};
PixelRun SourceRun(std::int64_t index, std::int64_t source, std::int64_t destination);

/// Copies the source box of the preview into the destination box of the picture, shrinking or growing. What lies
/// outside the picture is dropped. The work is bounded by the bytes of the preview, whatever its header says. Nothing
/// is copied for a box without extent, or of a preview that can't be drawn.
void StretchDib(Picture& picture, const PixelBox& destination, const PreviewBytes& preview, std::uint64_t pixelOffset,
                const PixelBox& source, StretchMode mode);

/// The same with a picture for the source, red in the low byte. Of what lies outside of it nothing is drawn.
void StretchPicture(Picture& picture, const PixelBox& destination, const Picture& from, const PixelBox& source,
                    StretchMode mode);
