#pragma once

#include <optional>
#include <string>

/// What the host's support path gives for every file in these tests.
namespace catalogue_tests {

struct SupportPath {
    static std::optional<std::wstring> found;
    static std::wstring asked;
};

} // namespace catalogue_tests
