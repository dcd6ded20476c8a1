#pragma once

#include "editor/dwg/header_variables.h"
#include "editor/dwg/model.h"
#include "editor/dwg/thumbnail.h"

namespace dwg {

/// A drawing file of release AC1015, whole. Brings the links of the drawing's entities in line with their order; the
/// references of the header variables, handle seed included, are those of the drawing's own objects as `header` has
/// them.
///
/// `measurement` is 0 for a drawing in inches, 1 for a metric one.
///
/// `unsupported` for a drawing whose objects come from another release, `invalid` for handles or sizes that the format
/// has no room for, and what encoding an object gives.
Result<Bytes> writeDrawing(Drawing& drawing, const HeaderVariables& header, const std::vector<Picture>& pictures,
                           std::uint16_t measurement);

} // namespace dwg
