#pragma once

#include "editor/dwg/model.h"

#include <string>

namespace tools {

/// One line for each entity of a drawing, by ascending handles, parts of others and the frames of blocks among them.
/// Six columns with a tab between them: handle, type, handle of the owner (hexadecimal), layer, colour, linetype. A
/// colour is BYLAYER, BYBLOCK, an index, or # and six digits; BYLAYER and BYBLOCK stand for linetypes too. A reference
/// that leads nowhere is "?". Backslashes and control characters of names are escaped.
std::string entityLines(const dwg::Drawing& drawing);

} // namespace tools
