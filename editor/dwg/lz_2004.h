#pragma once

#include "editor/dwg/source.h"

namespace dwg {

/// Unpacks the byte packing of the 2004, 2010, 2013 and 2018 containers: literal runs between copies of earlier
/// output, up to the end mark 0x11. `limit` is the size that the file declares: output beyond it is `damaged`.
/// The result may be shorter than `limit`. Error offsets count in `packed`.
Result<Bytes> unpack2004(ByteView packed, std::size_t limit);

/// Packs bytes so that unpack2004 gives them back. The packing can't begin with fewer than four literals: fewer bytes
/// than that are filled up with zeros.
Bytes pack2004(ByteView plain);

} // namespace dwg
