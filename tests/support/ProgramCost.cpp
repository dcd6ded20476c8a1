#include "tests/support/ProgramCost.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tests {

namespace {

// What wait4 tells of memory begins with that of the process that forked, so the child is asked before it ends.
long mostResident(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    const std::string wanted = "VmHWM:";
    for (std::string word; status >> word;) {
        long kibibytes = 0;
        if (word == wanted && status >> kibibytes)
            return kibibytes;
    }
    return 0;
}

[[noreturn]] void becomeProgram(std::vector<std::string>& command) {
    constexpr int notStarted = 127;
    std::vector<char*> arguments;
    for (std::string& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    const int nowhere = ::open("/dev/null", O_WRONLY);
    ::dup2(nowhere, STDOUT_FILENO);
    ::dup2(nowhere, STDERR_FILENO);
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0)
        ::execvp(arguments[0], arguments.data());
    ::_exit(notStarted);
}

bool isExitStop(int status) {
    return status >> 8 == (SIGTRAP | PTRACE_EVENT_EXIT << 8);
}

} // namespace

std::optional<ProgramCost> runProgram(std::vector<std::string> command) {
    using Clock = std::chrono::steady_clock;
    const pid_t child = ::fork();
    if (child == 0)
        becomeProgram(command);
    int status = 0;
    // The first stop is that of the new program.
    if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFSTOPPED(status))
        return std::nullopt;
    const auto start = Clock::now();
    ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACEEXIT | PTRACE_O_EXITKILL);
    ProgramCost cost;
    int signal = 0;
    for (;;) {
        ::ptrace(PTRACE_CONT, child, nullptr, signal);
        if (::waitpid(child, &status, 0) != child)
            return std::nullopt;
        if (!WIFSTOPPED(status))
            break;
        signal = isExitStop(status) ? 0 : WSTOPSIG(status);
        if (isExitStop(status))
            cost.kibibytes = mostResident(child);
    }
    cost.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    cost.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return cost;
}

} // namespace tests
