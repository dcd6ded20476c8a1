#pragma once

#include <optional>
#include <string>

namespace catalogue_tests {

/// What the host's support path gives for every file in these tests.
struct SupportPath {
    static std::optional<std::wstring> found;
    static std::wstring asked;
};

/// What was printed on the host's command line.
struct HostCommandLine {
    static std::wstring printed;
};

} // namespace catalogue_tests
