#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdlib.h>
#include <string>

/// A folder on a memory disk, where there is one, for the life of the process.
class FuzzFolder {
public:
    static const std::filesystem::path& Path() {
        static const FuzzFolder folder;
        return folder.path;
    }
    FuzzFolder(const FuzzFolder&) = delete;
    FuzzFolder& operator=(const FuzzFolder&) = delete;

private:
    FuzzFolder() {
        std::error_code ignored;
        const bool memory = std::filesystem::is_directory("/dev/shm", ignored);
        std::string pattern = (memory ? std::filesystem::path("/dev/shm") : std::filesystem::temp_directory_path()) /
                              "tessaro-fuzz-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr)
            std::abort();
        path = pattern;
    }
    ~FuzzFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::filesystem::path path;
};
