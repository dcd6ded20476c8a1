#pragma once

#include "editor/dwg/drawing_file.h"

#include <cstdint>
#include <vector>

namespace dwg {

/// A picture that a drawing embeds: an image_code and its bytes.
struct Picture {
    std::uint8_t code = 0;
    Bytes bytes;
    bool operator==(const Picture&) const = default;
};

/// The pictures of a drawing file, without the header data entry. Entries that reach outside the file are left out.
Result<std::vector<Picture>> readPictures(const Source& source);

/// The image section of a drawing as stored, its entries counted from its own start. Where it can't be taken as it is
/// (entries outside it, a damaged table) it is put together from the pictures that can be read. Nothing where the
/// drawing has none.
Result<Bytes> readImageSectionBytes(const Source& source);

/// Tells the entries of an image section, which count from its start, that it lies at `address`.
void moveImageSection(Bytes& section, std::uint32_t address);

/// The image section as it lies in the file at `address`: a header data entry of 80 zero bytes, then the pictures.
Bytes writeImageSection(const std::vector<Picture>& pictures, std::uint32_t address);

} // namespace dwg
