#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace tests {

/// A library drawing: the first in a folder of the sample library ("samples", "furniture"), or one of the shared
/// drawings ("drawings", "2000/Line").
struct LibraryDrawing {
    const char* library;
    const char* name;
};
void PrintTo(const LibraryDrawing& drawing, std::ostream* out);
/// Its name as part of a test's.
std::string TestName(const LibraryDrawing& drawing);

/// The file; the sample library is made below `place`. Empty where the shared drawings are absent.
std::filesystem::path fileOf(const LibraryDrawing& drawing, const std::filesystem::path& place);

/// An entity by its class and layer.
using Piece = std::pair<std::wstring, std::wstring>;
/// What the drawing's model space holds, in order.
std::vector<Piece> piecesIn(const std::filesystem::path& file);
/// What exploding leaves of it: definitions of attributes go.
std::vector<Piece> exploded(std::vector<Piece> pieces);

} // namespace tests
