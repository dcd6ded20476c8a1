#pragma once

#include "editor/dwg/container_writer.h"
#include "editor/dwg/drawing_file.h"
#include "editor/dwg/header_variables.h"
#include "editor/dwg/model.h"
#include "editor/dwg/summary_info.h"

#include <optional>
#include <string_view>

namespace editor {

/// Where a database's drawing comes from, for saving it with as little change as possible. The file's bytes are kept in
/// memory, so that the drawing may be saved over the file it was read from, and the file may go.
struct Origin {
    std::optional<dwg::DrawingFile> file;
    dwg::HeaderVariables header;
    dwg::SummaryInfo summary;
    std::vector<dwg::ObjectClass> classes;
    std::size_t objects = 0;
    bool hadSummaryRecord = false;

    /// Whether the drawing still is what was read, but for its summary: no other object changed, added or taken away,
    /// no variable set.
    bool holds(const dwg::Drawing& drawing, const dwg::HeaderVariables& header) const;
    /// Sections of the file that nobody here looks into: those of the names, or all where none are given.
    std::vector<dwg::SectionBytes> keptSections(const std::vector<std::string_view>& names) const;
};

} // namespace editor
