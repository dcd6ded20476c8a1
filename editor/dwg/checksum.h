#pragma once

#include "editor/dwg/source.h"

namespace dwg {

/// The check of pages in the 2004 container: two sums modulo 65521, as published for zlib, started from `seed`
/// (its customary 1 is never used here).
std::uint32_t pageChecksum(ByteView bytes, std::uint32_t seed);

} // namespace dwg
