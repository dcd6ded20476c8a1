#pragma once

#include "editor/dwg/day_and_time.h"
#include "editor/dwg/source.h"
#include "editor/dwg/version.h"

#include <string_view>

/// Sections of paged files that tell little. What no drawing needs is written as other programs write it.
namespace dwg {

/// How many objects there are and when the drawing was changed.
Bytes writeObjectFreeSpace(Release release, std::uint32_t objects, DayAndTime updated);

/// `measurement` is 0 for a drawing in inches, 1 for a metric one. The description is left empty.
Bytes writeTemplate(Release release, std::uint16_t measurement);

Bytes writeRevisionHistory();

/// Which program wrote the file: its name and version.
Bytes writeAppInfo(std::wstring_view product, std::wstring_view version);

} // namespace dwg
