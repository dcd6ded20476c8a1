#pragma once

#include <cstdint>
#include <string>

/// The least that some work costs, written against the system and the libraries alone.
namespace bench {

/// Opens a drawing, reads what an examination reads of it, decodes its picture where that is a PNG, closes.
void ReadBareDrawing(const std::string& path);

/// Lists the drawings of a folder in the order of their names, ignoring case, and asks for the status of each by its
/// full path; gives a sum of what came, to be kept.
std::uint64_t ListAndLook(const std::string& folder);

} // namespace bench
