#pragma once

#include "companions/TessaroHelper/HelperInterface.h"
#include "editor/dwg/day_and_time.h"

#include <filesystem>
#include <optional>

namespace helper {

/// A stored date, which is universal time, as local time; whole seconds. Nothing for one that no calendar of this
/// system takes: before 1970 or from 3000 on, or with more milliseconds than a day has.
std::optional<HelperDate> localDate(const dwg::DayAndTime& stored);

/// When the file was last written, as local time; the present time where that can't be known.
HelperDate dateOfFile(const std::filesystem::path& file);

} // namespace helper
