#pragma once

#include "tessaro/catalogue/Directory.h"

#include <cstdint>
#include <optional>
#include <vector>

/// A preview in memory: a 40-byte bitmap header, the colour table, the pixels. Bytes that a header places past the end
/// count as zero.
using PreviewBytes = std::vector<std::uint8_t>;

/// Pairs of marks in pixels of the preview, x then y, y counted from the bottom.
using MarkPoints = std::vector<double>;

/// Sets `backColor` and `foreColor` from the host's colour word (red in the low byte). Black stands only on eight pure
/// colours; this is a list, not a brightness.
void SetBackground(std::uint32_t colourWord);

/// Walks the first 256 entries behind the header in place, whatever the header says of its colours: white becomes
/// `backColor`, black `foreColor`. Entries that are not wholly there stay.
void AdaptPalette(PreviewBytes& preview);

/// What is drawn for one Block, before the lists reduce it to their sixteen colours.
struct Thumbnails {
    std::optional<Picture> large; ///< absent for a Directory without large pictures
    Picture small;
};

/// The same as the lists hold it.
struct SlotPictures {
    SlotPictures() = default;
    explicit SlotPictures(const Thumbnails& pictures) : small(Reduced(pictures.small)) {
        if (pictures.large)
            large = Reduced(*pictures.large);
    }
    std::optional<SlotPicture> large;
    SlotPicture small;
};

/// Draws the preview with its marks. The palette of a preview that is no PNG is adapted in place, once, and the large
/// picture patches a count of 0 colours to 256 in place, which the small one then finds. Up to `fileType` 14 a frame of
/// one pixel is left out. Any thread; reads `backColor` and `foreColor`.
Thumbnails DrawThumbnails(bool withLarge, std::int32_t fileType, PreviewBytes& preview, bool isPng,
                          const MarkPoints& points);

/// Puts the pictures into both lists: new slots where `imageIndex` is 0 at the start, else the old one, whose row is
/// then repainted when the Directory is the shown one. Main thread while a dialog is open.
void StoreThumbnails(Directory& directory, Block& block, const SlotPictures& pictures);

/// Both in one step: draws the preview with its marks into both image lists. Main thread while a dialog is open.
void RenderThumbnail(Directory& directory, Block& block, PreviewBytes& preview, bool isPng, const MarkPoints& points);
