#pragma once

#include "editor/dwg/model.h"
#include "editor/dwg/result.h"

namespace matrix {

/// An entity's own fields as one release stores them, without what hangs on its place in the drawing.
dwg::Result<dwg::Bits> fieldsOf(const dwg::Object& object, const dwg::Drawing& drawing);

} // namespace matrix
