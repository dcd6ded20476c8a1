#pragma once

#include "companions/TessaroHelper/HelperInterface.h"

#include <optional>
#include <string>
#include <vector>

namespace helper {

/// What the catalogue wants to know of a drawing.
struct DrawingRecord {
    HelperDate created{};
    HelperDate updated{};
    std::wstring comments;
    std::vector<double> view; ///< one record of 18 numbers, or empty
};

/// Reads it without the host: file header, header variables and summary, and with `wantView` the insertion point and
/// the active view: a few reads, whatever the size of the drawing. Nothing for a drawing that can't be read. Any
/// thread.
std::optional<DrawingRecord> readDrawingRecord(const std::wstring& path, bool wantView);

} // namespace helper
