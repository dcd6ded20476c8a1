#pragma once

#include "editor/dwg/code_page.h"
#include "editor/dwg/model.h"
#include "editor/dwg/source.h"

/// The section of object classes of flat files.
namespace dwg {

/// Reads the section with its guards. Damage behind the first record costs the records from there on and becomes a
/// finding.
Result<std::vector<ObjectClass>> readClasses(ByteView section, const CodePage& codePage, Findings& findings);

/// The records alone, without guards, length and check.
Bytes encodeClasses(const std::vector<ObjectClass>& classes, const CodePage& codePage);

} // namespace dwg
