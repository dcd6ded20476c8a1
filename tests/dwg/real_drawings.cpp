#include "tests/dwg/real_drawings.h"

#include "editor/dwg/drawing_file.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>

namespace tests {

std::vector<std::filesystem::path> realDrawings(std::string_view magic) {
    std::vector<std::filesystem::path> files;
    const std::filesystem::path folder = sharedFolder("drawings");
    if (folder.empty())
        return files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".dwg")
            continue;
        const auto source = dwg::openSource(entry.path());
        const auto found = source ? dwg::readMagic(**source) : dwg::Result<std::string>(source.error());
        if (found && (magic.empty() ? dwg::releaseOf(*found).has_value() : *found == magic))
            files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

} // namespace tests
