#pragma once

#include "editor/dwg/drawing_file.h"
#include "editor/dwg/summary_info.h"
#include "editor/dwg/thumbnail.h"

#include <optional>

namespace dwg {

/// What is new in a drawing that otherwise stays as it is.
struct Replacements {
    std::optional<SummaryInfo> summary = {};
    /// All of the pictures; an empty list leaves the drawing without any.
    std::optional<std::vector<Picture>> pictures = {};
};

/// The file of a drawing of release 2004 or later in its own release, every section but the replaced ones as it was,
/// byte for byte. `unsupported` for older releases and for sections that are encrypted.
Result<Bytes> rewriteDrawing(const DrawingFile& file, const Replacements& replacements);

} // namespace dwg
