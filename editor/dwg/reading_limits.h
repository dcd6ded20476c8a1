#pragma once

#include "editor/dwg/model.h"

/// How much memory a drawing may take while it is read. A sound drawing takes what its content needs; one that is
/// damaged or made up stays within 16 times its file and 64 MiB.
namespace dwg {

/// Adds a finding unless there are very many.
inline void addFinding(Findings& findings, Finding finding) {
    constexpr std::size_t most = 1000;
    if (findings.size() < most)
        findings.push_back(std::move(finding));
    else if (findings.size() == most)
        findings.push_back({finding.place, "there is more damage, which isn't listed", finding.offset});
}

class ReadingLimits {
public:
    explicit ReadingLimits(std::uint64_t fileSize) : file(fileSize) {}

    /// The most entries that an object map may have: an object takes more than four bytes, packed as it may be.
    std::size_t places() const { return (512u << 10) + file / 4; }

    void take(std::size_t bytes) { used += bytes; }
    /// The bytes that are left.
    std::size_t left(const Findings& findings) const {
        constexpr std::uint64_t mebibyte = 1u << 20;
        const std::uint64_t whole =
            findings.empty() ? 256 * mebibyte + 64 * file : 56 * mebibyte + 14 * file; // the rest is the process's own
        return used < whole ? static_cast<std::size_t>(whole - used) : 0;
    }

private:
    std::uint64_t file;
    std::uint64_t used = 0;
};

} // namespace dwg
