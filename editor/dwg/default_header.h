#pragma once

#include "editor/dwg/header_variables.h"

namespace dwg {

/// The header variables of makeDefaultDrawing(): the usual values of a drawing in inches, created at `now`.
HeaderVariables makeDefaultHeader(DayAndTime now);

/// The moment `seconds` after 1970-01-01 UTC, with the given part of the second.
DayAndTime dayAndTime(std::int64_t seconds, std::uint32_t milliseconds = 0);

} // namespace dwg
