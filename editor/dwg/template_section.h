#pragma once

#include "editor/dwg/drawing_file.h"

namespace dwg {

/// Units of a drawing that came from its template: 0 English, 1 metric. `missing` for a file without the record.
Result<std::uint16_t> readMeasurement(const DrawingFile& file);

} // namespace dwg
