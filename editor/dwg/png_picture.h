#pragma once

#include "editor/dwg/source.h"

#include <optional>

namespace dwg {

/// A bitmap as drawings embed it (40-byte header, colours, rows from the lowest up) as a PNG of the same colours.
/// Nothing for anything but an unpacked bitmap of one byte a pixel with its table of colours.
std::optional<Bytes> pngOfBitmap(ByteView bitmap);

} // namespace dwg
