#pragma once

#include "editor/dwg/header_variables.h"
#include "editor/dwg/model.h"

namespace dwg {

/// Gives a drawing that comes from R13 or R14 what every drawing from 2000 on has: a layout for each of the two spaces,
/// the dictionaries of layouts, plot settings and plot styles, and a plot style for its layers. Nothing is done for a
/// drawing that has layouts, or no dictionary or spaces to hang them on.
void addLayouts(Drawing& drawing, HeaderVariables& header);

} // namespace dwg
