#include "tests/dwg/model_support.h"

#include "tests/support/TemporaryFolder.h"

#include <algorithm>

namespace tests {

namespace {

/// Those whose magic is one of the list.
std::vector<std::filesystem::path> drawingsOf(std::initializer_list<std::string_view> magics) {
    std::vector<std::filesystem::path> files;
    const std::filesystem::path folder = sharedFolder("drawings");
    if (folder.empty())
        return files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".dwg")
            continue;
        const std::string magic = readFile(entry.path()).substr(0, 6);
        if (std::ranges::find(magics, magic) != magics.end())
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

std::vector<std::filesystem::path> drawingsOf2000() {
    return drawingsOf({"AC1015"});
}

std::vector<std::filesystem::path> realDrawings() {
    return drawingsOf({"AC1012", "AC1014", "AC1015", "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"});
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
