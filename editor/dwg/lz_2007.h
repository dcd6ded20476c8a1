#pragma once

#include "editor/dwg/source.h"

namespace dwg {

/// Unpacks the byte packing of the 2007 container. `size` is the unpacked length that the file declares: output
/// beyond it is `damaged`, and so is a shorter one. Error offsets count in `packed`.
Result<Bytes> unpack2007(ByteView packed, std::size_t size);

/// Packs bytes so that unpack2007 gives them back. The result may be longer than `plain`; files then store the bytes as
/// they are.
Bytes pack2007(ByteView plain);

} // namespace dwg
