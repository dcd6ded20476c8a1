#include "tests/entry/RunRecorder.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tests {
namespace {

std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

/// The exit status, or nothing where the process had to be ended.
std::string WaitForEnd(pid_t child) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > end) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return "hung";
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return {};
    return WIFEXITED(status) ? "exit " + std::to_string(WEXITSTATUS(status))
                             : "signal " + std::to_string(WTERMSIG(status));
}

} // namespace

ModulePlace::ModulePlace(const std::string& fileName) : module(place.path() / fileName) {
    std::filesystem::create_symlink(std::filesystem::path(TESSARO_BIN_DIR) / "tessaro24-64.arx", module);
}

std::vector<std::string> ModulePlace::run(const std::vector<std::string>& steps) const {
    const std::string output = (place.path() / "transcript").string(), errorOutput = (place.path() / "errors").string();
    std::vector<std::string> words{program.string(), module.string()};
    words.insert(words.end(), steps.begin(), steps.end());
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const std::string home = place.path().string();

    const pid_t child = fork();
    if (child == 0) {
        const int out = open(output.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600);
        dup2(out, STDOUT_FILENO);
        dup2(open(errorOutput.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600), STDERR_FILENO);
        setenv("LD_LIBRARY_PATH", TESSARO_BIN_DIR, 1);
        setenv("HOME", home.c_str(), 1);
        if (chdir(home.c_str()) == 0)
            execv(program.c_str(), arguments.data());
        _exit(127);
    }
    const std::string status = WaitForEnd(child);
    std::vector<std::string> lines = SplitLines(readFile(output));
    if (!status.empty())
        lines.push_back(status);
    return lines;
}

void ModulePlace::nameHost(const std::string& fileName) {
    program = place.path() / fileName;
    std::filesystem::copy_file(TESSARO_BIN_DIR "/entry_recorder", program);
}

std::vector<std::string> ModulePlace::log() const {
    for (const auto& file : std::filesystem::directory_iterator(folder() / "Log"))
        return SplitLines(readFile(file.path()));
    return {};
}

} // namespace tests
