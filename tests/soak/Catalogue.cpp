#include "tests/soak/Catalogue.h"

#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"

#include <algorithm>
#include <numeric>

namespace {

std::uint64_t SumOf(const Picture& picture) {
    return std::accumulate(picture.pixels.begin(), picture.pixels.end(), std::uint64_t{14695981039346656037U},
                           [](std::uint64_t sum, auto value) { return (sum ^ value) * 1099511628211U; });
}

/// Slots that the lists don't have, or that two Blocks share, since the lists began anew.
bool HasLostPictures(const Directory& directory) {
    std::set<int> slots;
    for (const Block* block : directory.blocks) {
        const int slot = block->imageIndex;
        if (slot != 0 && (slot >= directory.smallImages->Count() || !slots.insert(slot).second))
            return true;
    }
    return false;
}

std::string DescribeBlock(const Directory& directory, const Block& block, bool withPictures) {
    std::string line = platform::ToNarrow(directory.path + L"/" + block.name + L": " + FileTypeName(block.fileType) +
                                          L", \"" + block.description + L"\"");
    line += ", " + std::to_string(block.status.m_size) + " bytes of " + std::to_string(block.status.m_mtime);
    if (!(block.status == block.cachedStatus))
        line += ", not compared";
    line += block.checked ? "" : ", unchecked";
    line += block.cached ? "" : ", not cached";
    // Dates of drawings are older than any file of the run.
    constexpr platform::Time day = 24 * 3600;
    if (block.modified < block.status.m_mtime - day)
        line += ", dated " + std::to_string(block.modified);
    if (!withPictures)
        return line;
    line += ", pictures " + std::to_string(SumOf(directory.largeImages->Draw(block.imageIndex))) + " and " +
            std::to_string(SumOf(directory.smallImages->Draw(block.imageIndex)));
    return line;
}

} // namespace

CatalogueDescription DescribeCatalogue(std::set<std::wstring>& foldersWithoutPictures) {
    CatalogueDescription described;
    for (Directory* directory : directories) {
        if (!directory->imagesLoaded)
            LoadDirCache(*directory);
        if (HasLostPictures(*directory)) {
            ++described.withLostPictures;
            foldersWithoutPictures.insert(directory->path);
        }
        auto& lines = described.lines;
        lines.push_back(platform::ToNarrow(directory->path) + (directory->loaded ? "" : " is not loaded"));
        const auto first = static_cast<std::ptrdiff_t>(lines.size());
        for (const Block* block : directory->blocks)
            lines.push_back(DescribeBlock(*directory, *block, !foldersWithoutPictures.contains(directory->path)));
        std::sort(lines.begin() + first, lines.end());
    }
    return described;
}

std::string FirstDifference(const std::vector<std::string>& one, const std::vector<std::string>& other) {
    const auto [here, there] = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
    if (here == one.end() && there == other.end())
        return {};
    const std::string missing = "nothing";
    return "  " + (here == one.end() ? missing : *here) + "\n  " + (there == other.end() ? missing : *there);
}
