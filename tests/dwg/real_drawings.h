#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace tests {

/// The shared real drawings whose first six bytes are `magic`, by name; all from R13 on where it is empty. None where
/// the folder is absent.
std::vector<std::filesystem::path> realDrawings(std::string_view magic = {});

} // namespace tests
