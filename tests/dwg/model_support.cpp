#include "tests/dwg/model_support.h"

#include "tests/support/TemporaryFolder.h"

#include <algorithm>

namespace tests {

std::vector<std::filesystem::path> drawingsOf2000() {
    std::vector<std::filesystem::path> files;
    const std::filesystem::path folder = sharedFolder("drawings");
    if (folder.empty())
        return files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".dwg" && readFile(entry.path()).starts_with("AC1015"))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string hex(const std::vector<std::uint8_t>& bytes) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
        text += ' ';
    }
    return text;
}

} // namespace tests
