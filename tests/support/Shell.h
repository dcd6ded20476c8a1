#pragma once

#include <string>

namespace tests {

struct ShellRun {
    int status = -1; ///< of the command; -1 where it was not run to its end
    std::string output;
};

/// Runs a command line by the shell; what it writes to both of its streams is the output.
ShellRun runShell(const std::string& command);
/// As one word of a command line.
std::string quoted(const std::string& word);

} // namespace tests
