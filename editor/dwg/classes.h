#pragma once

#include "editor/dwg/code_page.h"
#include "editor/dwg/model.h"
#include "editor/dwg/source.h"

/// The section of object classes.
namespace dwg {

/// Reads the section as stored, with its guards. What doesn't match and a record that can't be are findings; such a
/// record costs those behind it.
Result<std::vector<ObjectClass>> readClasses(Bytes section, Release release, std::uint8_t maintenance,
                                             const CodePage& codePage, Findings& findings);

/// The content of the section as the release stores it, without guards, length and check.
Bytes encodeClasses(const std::vector<ObjectClass>& classes, const CodePage& codePage,
                    Release release = Release::r2000);

} // namespace dwg
