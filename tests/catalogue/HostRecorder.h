#pragma once

#include <optional>
#include <string>

namespace catalogue_tests {

/// What the host's support path gives for every file in these tests.
struct SupportPath {
    static std::optional<std::wstring> found;
    static std::wstring asked;
};

} // namespace catalogue_tests
