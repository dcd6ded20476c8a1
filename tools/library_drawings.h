#pragma once

#include "editor/dwg/read_drawing.h"
#include "editor/dwg/summary_info.h"
#include "editor/dwg/write_drawing.h"

#include <optional>
#include <string_view>
#include <vector>

namespace tools {

/// Releases by the names that people know: "2000" to "2018".
std::optional<dwg::Release> releaseByName(std::string_view name);
const char* nameOf(dwg::Release release);

/// Of each release there are so many drawings, all different.
constexpr int libraryKinds = 24;
/// A drawing of a large library before it has a picture, a description and dates; `kind` from 0. One thread at a time.
dwg::Bytes drawnFile(dwg::Release release, int kind);

/// The same as a model that any number of files are made of. One thread at a time, each with its own.
class LibraryDrawing {
public:
    LibraryDrawing(const dwg::Bytes& drawn, int kind);

    /// The whole file with these comments and this date, in days since the epoch.
    dwg::Result<dwg::Bytes> file(const std::wstring& comments, int day);

private:
    dwg::Drawing drawing;
    dwg::DrawingParts parts;
};

} // namespace tools
