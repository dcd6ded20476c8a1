#pragma once

#include "editor/dwg/drawing_file.h"

#include <optional>

namespace dwg {

/// What an entry of the image section holds.
namespace image_code {
inline constexpr std::uint8_t header = 1;   ///< a NUL-terminated text
inline constexpr std::uint8_t bitmap = 2;   ///< a bitmap without its file header
inline constexpr std::uint8_t metafile = 3; ///< a Windows metafile
inline constexpr std::uint8_t png = 6;
} // namespace image_code

/// What the picture of an entry says of itself. Of a PNG only width and height are known.
struct ImageMeasures {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::optional<std::uint16_t> bits;
    std::optional<std::uint32_t> coloursUsed;
};

struct ImageEntry {
    std::uint8_t code = 0;
    std::uint32_t start = 0; ///< offset in the file
    std::uint32_t size = 0;
    std::optional<ImageMeasures> measures; ///< of bitmaps and PNGs whose head lies within the file
};

struct ImageSection {
    std::uint32_t address = 0;
    std::vector<ImageEntry> entries; ///< in file order
};

/// The image section that the file header of R13 and later points to; nothing where its address is 0. It depends on
/// no other part of the file. Entries that reach outside the file are kept as they are, without measures.
Result<std::optional<ImageSection>> readImageSection(const Source& source);

} // namespace dwg
