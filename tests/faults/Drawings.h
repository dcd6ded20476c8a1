#pragma once

#include "editor/sdk/db.h"

#include <array>
#include <filesystem>
#include <ostream>
#include <string>

namespace faults {

/// The releases that are written, with the type that the catalogue gives them.
struct Release {
    const char* name;
    AcDb::AcDbDwgVersion version;
    int fileType;
};
inline void PrintTo(const Release& release, std::ostream* out) {
    *out << release.name;
}
inline constexpr std::array kReleases{
    Release{"2000", AcDb::kDHL_1015, 16}, Release{"2004", AcDb::kDHL_1800, 17}, Release{"2007", AcDb::kDHL_1021, 18},
    Release{"2010", AcDb::kDHL_1024, 19}, Release{"2013", AcDb::kDHL_1027, 20}, Release{"2018", AcDb::kDHL_1032, 0},
};

/// A drawing of that release with a line, a circle, a picture and the comments "as drawn"; made once.
const std::string& DrawingOf(const Release& release);
/// Adds a circle to model space.
void DrawCircle(AcDbDatabase& database);
/// Comments and number of entities of a drawing ("as drawn, 2"); "unreadable" where it can't be read whole.
std::string Describe(const std::filesystem::path& drawing);

} // namespace faults
