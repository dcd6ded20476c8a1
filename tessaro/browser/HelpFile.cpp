#include "tessaro/browser/HelpFile.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr std::uint64_t kDirectoryPlace = 0x48; ///< offset and length of the directory
constexpr std::uint64_t kContentPlace = 0x58;   ///< where the stored pages begin
constexpr std::size_t kChunkHead = 20;

/// Bytes from the front; `failed` once more was asked for than there is.
class Reader {
public:
    explicit Reader(std::string_view bytes) : rest(bytes) {}

    std::uint64_t Number(int size) {
        std::uint64_t value = 0;
        const std::string_view bytes = Take(static_cast<std::uint64_t>(size));
        for (std::size_t place = bytes.size(); place > 0; --place)
            value = value << 8 | static_cast<std::uint8_t>(bytes[place - 1]);
        return value;
    }
    /// Seven bits a byte, the highest first; the eighth says that more follow.
    std::uint64_t Packed() {
        std::uint64_t value = 0;
        for (int count = 0; count < 9; ++count) {
            const std::uint64_t byte = Number(1);
            value = value << 7 | (byte & 0x7F);
            if ((byte & 0x80) == 0)
                return value;
        }
        failed = true;
        return 0;
    }
    std::string_view Take(std::uint64_t size) {
        if (failed || size > rest.size()) {
            failed = true;
            return {};
        }
        const std::string_view taken = rest.substr(0, static_cast<std::size_t>(size));
        rest.remove_prefix(static_cast<std::size_t>(size));
        return taken;
    }
    bool Failed() const { return failed; }
    bool AtEnd() const { return failed || rest.empty(); }

private:
    std::string_view rest;
    bool failed = false;
};

std::string_view Part(std::string_view bytes, std::uint64_t offset, std::uint64_t length) {
    if (offset > bytes.size() || length > bytes.size() - offset)
        return {};
    return bytes.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(length));
}

std::uint64_t NumberAt(std::string_view bytes, std::uint64_t offset, int size) {
    return Reader(Part(bytes, offset, static_cast<std::uint64_t>(size))).Number(size);
}

bool SameName(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

struct Place {
    std::uint64_t section = 0, offset = 0, length = 0;
};

std::optional<Place> FindIn(std::string_view chunk, std::string_view name) {
    if (!chunk.starts_with("PMGL") || chunk.size() < kChunkHead)
        return std::nullopt;
    const std::uint64_t spare = NumberAt(chunk, 4, 4);
    if (spare > chunk.size() - kChunkHead)
        return std::nullopt;
    Reader entries(Part(chunk, kChunkHead, chunk.size() - kChunkHead - spare));
    while (!entries.AtEnd()) {
        const std::string_view present = entries.Take(entries.Packed());
        Place place;
        place.section = entries.Packed();
        place.offset = entries.Packed();
        place.length = entries.Packed();
        if (!entries.Failed() && SameName(present, name))
            return place;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> HelpPage(std::string_view file, std::string_view name) {
    if (!file.starts_with("ITSF") || NumberAt(file, 4, 4) != 3)
        return std::nullopt;
    const std::string_view directory =
        Part(file, NumberAt(file, kDirectoryPlace, 8), NumberAt(file, kDirectoryPlace + 8, 8));
    const std::uint64_t head = NumberAt(directory, 8, 4);
    const std::uint64_t chunkSize = NumberAt(directory, 16, 4);
    if (!directory.starts_with("ITSP") || chunkSize < kChunkHead)
        return std::nullopt;
    for (std::uint64_t start = head; start < directory.size() && chunkSize <= directory.size() - start;
         start += chunkSize) {
        const auto found = FindIn(Part(directory, start, chunkSize), name);
        if (!found)
            continue;
        const std::uint64_t content = NumberAt(file, kContentPlace, 8);
        if (found->section != 0 || content > file.size())
            return std::nullopt;
        const std::string_view page =
            Part(file.substr(static_cast<std::size_t>(content)), found->offset, found->length);
        return page.size() == found->length ? std::optional<std::string>(page) : std::nullopt;
    }
    return std::nullopt;
}
