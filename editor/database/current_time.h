#pragma once

#include "editor/dwg/day_and_time.h"

namespace editor {

/// Now, in universal time, as drawings keep it.
dwg::DayAndTime currentDayAndTime();

} // namespace editor
