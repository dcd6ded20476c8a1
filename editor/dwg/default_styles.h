#pragma once

#include "editor/dwg/model.h"

/// Objects of a new drawing whose types aren't decoded: made as the bits that they are stored as.
namespace dwg {

/// The dimension style Standard with the usual values of a drawing in inches.
OtherRecord makeStandardDimensionStyle(HandleRef textStyle);

/// The multiline style Standard: two continuous lines half a unit off the axis.
Carried makeStandardMultilineStyle();

} // namespace dwg
