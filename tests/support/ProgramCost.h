#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tests {

/// What a program took that was run as a child process.
struct ProgramCost {
    int status = -1;    ///< its exit status, -1 where a signal ended it
    double seconds = 0; ///< on the wall
    long kibibytes = 0; ///< the most of its memory that was resident, whatever this process has
};

/// Runs a program, found as the shell finds it, its output thrown away. Nothing where it can't be started, or this
/// system lets no process watch its child.
std::optional<ProgramCost> runProgram(std::vector<std::string> command);

} // namespace tests
