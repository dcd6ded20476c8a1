#include "tests/support/Shell.h"

#include <array>
#include <cstdio>
#include <sys/wait.h>

namespace tests {

ShellRun runShell(const std::string& command) {
    FILE* const pipe = popen(("( " + command + "\n) 2>&1").c_str(), "r");
    if (pipe == nullptr)
        return {};
    ShellRun run;
    std::array<char, 4096> piece{};
    while (const std::size_t count = fread(piece.data(), 1, piece.size(), pipe))
        run.output.append(piece.data(), count);
    const int ended = pclose(pipe);
    run.status = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
    return run;
}

std::string quoted(const std::string& word) {
    std::string text = "'";
    for (const char letter : word) {
        if (letter == '\'')
            text += "'\\'";
        text += letter;
    }
    return text + "'";
}

} // namespace tests
