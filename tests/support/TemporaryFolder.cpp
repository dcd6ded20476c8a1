#include "tests/support/TemporaryFolder.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <stdlib.h>

namespace tests {

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tessaro-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    folder = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

std::filesystem::path TemporaryFolder::write(const std::filesystem::path& name, std::string_view bytes) const {
    const auto file = folder / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out)
        throw std::runtime_error("can't write " + file.string());
    return file;
}

std::string readFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::filesystem::path sharedFolder(const std::string& name) {
    const auto folder = std::filesystem::path(TESSARO_SOURCE_DIR) / ".." / "shared" / name;
    return std::filesystem::is_directory(folder) ? std::filesystem::canonical(folder) : std::filesystem::path();
}

} // namespace tests
