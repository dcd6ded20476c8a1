#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits.h>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace platform {
namespace {

/// The variable's value where it is a full path, which the rules for these folders ask for.
std::string FolderOf(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && value[0] == '/' ? value : "";
}

const passwd* UserRecord() {
    return getpwuid(geteuid());
}

std::string HomeFolder() {
    if (std::string home = FolderOf("HOME"); !home.empty())
        return home;
    const passwd* const user = UserRecord();
    return user != nullptr ? user->pw_dir : "/";
}

/// Value of `XDG_DOCUMENTS_DIR="$HOME/..."` in the user's file of folders; empty without one.
std::string DocumentsOfUserFile() {
    std::string folder = FolderOf("XDG_CONFIG_HOME");
    if (folder.empty())
        folder = HomeFolder() + "/.config";
    std::ifstream file(folder + "/user-dirs.dirs");
    std::string result;
    for (std::string line; std::getline(file, line);) {
        const std::string key = "XDG_DOCUMENTS_DIR=\"";
        const std::size_t start = line.find_first_not_of(" \t");
        if (start == std::string::npos || line.compare(start, key.size(), key) != 0)
            continue;
        std::string value;
        for (std::size_t i = start + key.size(); i < line.size() && line[i] != '"'; ++i) {
            if (line[i] == '\\' && i + 1 < line.size())
                ++i;
            value += line[i];
        }
        const std::string home = "$HOME";
        if (value.compare(0, home.size(), home) == 0)
            value = HomeFolder() + value.substr(home.size());
        if (!value.empty() && value.front() == '/')
            result = value;
    }
    return result;
}

} // namespace

std::wstring CurrentFolder() {
    std::error_code failed;
    return FromNarrow(std::filesystem::current_path(failed).native());
}

std::wstring DocumentsFolder() {
    std::string folder = FolderOf("XDG_DOCUMENTS_DIR");
    if (folder.empty())
        folder = DocumentsOfUserFile();
    if (folder.empty())
        folder = HomeFolder() + "/Documents";
    return FromNarrow(folder);
}

std::wstring ApplicationDataFolder() {
    const std::string folder = FolderOf("XDG_DATA_HOME");
    return FromNarrow(folder.empty() ? HomeFolder() + "/.local/share" : folder);
}

std::wstring ComputerName() {
    char name[HOST_NAME_MAX + 1] = {};
    gethostname(name, HOST_NAME_MAX);
    return FromNarrow(name);
}

std::wstring UserName() {
    const passwd* const user = UserRecord();
    return user != nullptr ? FromNarrow(user->pw_name) : std::to_wstring(geteuid());
}

std::wstring ExecutablePath() {
    std::error_code failed;
    return FromNarrow(std::filesystem::read_symlink("/proc/self/exe", failed).native());
}

} // namespace platform
