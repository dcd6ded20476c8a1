#pragma once

#include <string>
#include <vector>

/// What a program took that was run as a child process, its output thrown away.
struct ChildCost {
    double seconds = 0;   ///< on the wall
    double mebibytes = 0; ///< the most that was resident
};

/// Runs a program, found as the shell finds it. Throws where it can't be started or ends with another status than 0.
ChildCost RunChild(const std::vector<std::string>& command);
