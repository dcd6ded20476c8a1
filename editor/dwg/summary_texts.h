#pragma once

#include <string>

namespace dwg {

/// The texts of a drawing's summary, wherever a release keeps it.
struct SummaryTexts {
    std::wstring title, subject, author, comments, keywords, lastSavedBy, revision;
    bool operator==(const SummaryTexts&) const = default;
};

} // namespace dwg
