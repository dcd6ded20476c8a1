#pragma once

#include "editor/dwg/handle.h"
#include "editor/dwg/result.h"
#include "editor/dwg/source.h"

#include <limits>

/// Where objects lie: the section of handles.
namespace dwg {

struct ObjectPlaceInFile {
    Handle handle = 0;
    /// Of the object's length: in the file (up to 2000), in the section of objects (from 2004 on).
    std::uint64_t offset = 0;
};

/// Reads the pages of the map up to the empty one. Damage ends the reading and becomes a finding; what was read
/// before stays. So does an entry more than `most`.
std::vector<ObjectPlaceInFile> readObjectMap(ByteView section, Findings& findings,
                                             std::size_t most = std::numeric_limits<std::size_t>::max());

/// Where the object of this handle lies, found without reading the whole map: its pages begin with their first handle
/// and follow each other in ascending order. Nothing where the page that should hold it doesn't.
std::optional<std::uint64_t> findInObjectMap(ByteView section, Handle handle);

} // namespace dwg
