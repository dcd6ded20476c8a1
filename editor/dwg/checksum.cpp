#include "editor/dwg/checksum.h"

#include <zlib.h>

namespace dwg {

std::uint32_t pageChecksum(ByteView bytes, std::uint32_t seed) {
    if (bytes.empty())
        return seed;
    return static_cast<std::uint32_t>(adler32_z(seed, bytes.data(), bytes.size()));
}

} // namespace dwg
