#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tests {

/// A folder of its own for one test, removed with all it holds at the end of the object's life.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return folder; }
    /// Writes a file below the folder (making folders on the way) and gives its full path.
    std::filesystem::path write(const std::filesystem::path& name, std::string_view bytes) const;

private:
    std::filesystem::path folder;
};

/// All bytes of a file; an empty text where it can't be read.
std::string readFile(const std::filesystem::path& file);

/// The folder of shared real drawings or reference pictures beside the checkout; an empty path where it is absent, in
/// which case the test skips with one line.
std::filesystem::path sharedFolder(const std::string& name);

} // namespace tests
