#pragma once

#include "editor/dwg/code_page.h"
#include "editor/dwg/source.h"
#include "editor/dwg/version.h"

#include <optional>

/// Lists of values with codes: extended data, and what a DataRecord holds. Only their texts are stored otherwise from
/// 2007 on.
namespace dwg {

/// The values as another release stores them; nothing for data that contradicts itself or has values of a kind that
/// isn't known.
std::optional<Bytes> convertExtendedData(ByteView data, Release from, Release to, const CodePage& codePage,
                                         std::uint16_t codePageNumber);
std::optional<Bytes> convertRecordValues(ByteView data, Release from, Release to, const CodePage& codePage,
                                         std::uint16_t codePageNumber);

} // namespace dwg
