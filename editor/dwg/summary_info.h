#pragma once

#include "editor/dwg/day_and_time.h"
#include "editor/dwg/drawing_file.h"
#include "editor/dwg/summary_texts.h"

#include <utility>

/// The summary of drawings from 2004 on, a section of its own.
namespace dwg {

struct SummaryInfo {
    SummaryTexts texts;
    std::wstring hyperlinkBase;
    DayAndTime editingTime; ///< a length of time
    DayAndTime created, updated;
    /// The user's own: name and value.
    std::vector<std::pair<std::wstring, std::wstring>> properties;

    bool operator==(const SummaryInfo&) const = default;
};

/// `missing` for releases before 2004, which keep no such section (see summary_record.h), and for files without it.
Result<SummaryInfo> readSummaryInfo(const DrawingFile& file, Findings* findings = nullptr);

/// The same from the bytes of the section. Texts are in the code page of this number before 2007, UTF-16 from then on.
Result<SummaryInfo> readSummaryInfo(ByteView section, Release release, std::uint16_t codePage);

/// The section as the release stores it; texts are cut at 16,383 characters or, in a code page, 32,767 bytes. `release`
/// is 2004 or later.
Bytes writeSummaryInfo(const SummaryInfo& info, Release release, std::uint16_t codePage);

} // namespace dwg
