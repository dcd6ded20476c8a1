#pragma once

#include "editor/sdk/db.h"

#include <string>
#include <vector>

namespace editor {

/// What the last save of a database had no room for in its release, a line for each type: "2 objects of type X were
/// left out." Empty where all was saved.
std::vector<std::wstring> leftOutMessages(const AcDbDatabase& database);

} // namespace editor
