#pragma once

#include <optional>
#include <string_view>

namespace dwg {

/// Releases of the file format that this codec reads, oldest first: `<` and `>=` mean "older" and "from ... on".
enum class Release {
    r13,   ///< AC1012
    r14,   ///< AC1014
    r2000, ///< AC1015
    r2004, ///< AC1018
    r2007, ///< AC1021
    r2010, ///< AC1024
    r2013, ///< AC1027
    r2018  ///< AC1032
};

/// The release whose magic the six characters are; nothing for an unknown or older one.
std::optional<Release> releaseOf(std::string_view magic);

/// The six characters that a file of this release begins with.
std::string_view magicOf(Release release);

} // namespace dwg
