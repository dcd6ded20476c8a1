#pragma once

#include "editor/dwg/result.h"
#include "editor/dwg/source.h"

#include <filesystem>

namespace editor {

/// Puts bytes in the place of a file: they are written to a temporary file beside it, which then takes the name, so
/// that the old file stays readable to the end and survives a failure. With `keepBackup` the old file goes on under its
/// name with the extension ".bak". `io` where a step fails; a file that nobody may write is refused, also for root.
dwg::Result<void> replaceFile(const std::filesystem::path& file, dwg::ByteView bytes, bool keepBackup);

} // namespace editor
