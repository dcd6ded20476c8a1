#pragma once

#include <filesystem>

namespace tests {

/// Expects that two drawings of one release differ in their summary alone: the same pictures, header variables and
/// objects, bit for bit, but for the objects that hold a summary up to 2000.
void expectOnlyTheSummaryChanged(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace tests
