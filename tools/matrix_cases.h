#pragma once

#include "editor/sdk/db.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// Drawings read, saved in another release, read again and compared with what they were.
namespace matrix {

struct Target {
    AcDb::AcDbDwgVersion version;
    const char* name;
};

/// The releases that are written.
extern const std::vector<Target> targets;

struct Outcome {
    /// Where the drawing that was read again isn't the one that was read, a line each; empty when all is equal.
    std::vector<std::string> differences;
    /// What the release had no room for, by type.
    std::map<std::string, std::size_t> leftOut;
    /// Decoded entities whose fields were compared bit for bit.
    std::size_t compared = 0;
};

/// Reads a drawing, saves it as `copy` in the release of `target`, reads it again. What was left out isn't a
/// difference.
Outcome saveAndCompare(const std::filesystem::path& drawing, const std::filesystem::path& copy, const Target& target);

/// Reads a drawing, changes its comments and nothing else, saves it in its own release with its picture, reads it
/// again: every object must be the same bit for bit. Nothing is done for releases that aren't written.
Outcome rewriteAndCompare(const std::filesystem::path& drawing, const std::filesystem::path& copy);

/// Reads a drawing and inserts it as a definition into the drawing `into`, or a new one where that is empty, which is
/// saved as `copy` in the release of `target` and read again: the definition must have the model space of the drawing,
/// by type and layer, and decoded entities their fields. What was left out isn't a difference.
Outcome insertAndCompare(const std::filesystem::path& drawing, const std::filesystem::path& into,
                         const std::filesystem::path& copy, const Target& target);

} // namespace matrix
