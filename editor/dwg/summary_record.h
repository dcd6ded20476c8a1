#pragma once

#include "editor/dwg/model.h"
#include "editor/dwg/summary_texts.h"

/// The summary of a drawing of release AC1015: a list of values under "DWGPROPS" in the named-objects dictionary.
/// Later releases keep a section instead.
namespace dwg {

/// Empty texts where the drawing has no summary, or one that isn't understood.
SummaryTexts readSummaryRecord(const Drawing& drawing);

/// Puts the texts into the drawing's summary, which is made where there is none; what else it holds stays. `missing`
/// for a drawing without a named-objects dictionary.
Result<void> writeSummaryRecord(Drawing& drawing, const SummaryTexts& texts);

/// The object that holds the summary; 0 where the drawing has none.
Handle findSummaryRecord(const Drawing& drawing);

/// The entry of a named-objects dictionary that leads to that object; 0 without one.
Handle summaryEntry(const Dictionary& names);

/// The texts that such a record holds.
SummaryTexts summaryTextsOf(const DataRecord& record, std::uint16_t codePage);

/// Takes the summary out of the drawing, for a release that keeps it elsewhere.
void removeSummaryRecord(Drawing& drawing);

} // namespace dwg
