#pragma once

#include "editor/sdk/db.h"

#include <string>
#include <vector>

namespace editor {

/// What a listing says of an entity: its kind, layer, space, handle, and the facts of its own kind where it is decoded.
/// Numbers have four decimals, angles are in degrees. Empty for what is no entity.
std::vector<std::wstring> describeEntity(AcDbObjectId entity);

/// A handle as people read it: hexadecimal digits.
std::wstring handleText(std::uint64_t handle);

} // namespace editor
