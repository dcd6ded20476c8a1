#include "editor/dwg/object_map.h"

#include "editor/dwg/bits.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/reading_limits.h"
#include "editor/dwg/section_names.h"

#include <algorithm>

namespace dwg {

namespace {

constexpr std::size_t sizeBytes = 2;
constexpr std::size_t checkBytes = 2;

std::size_t bigEndian(ByteView bytes) {
    return static_cast<std::size_t>(bytes[0]) << 8 | bytes[1];
}

/// Both differences count from 0 at the start of each page.
bool readPage(ByteView page, std::vector<ObjectPlaceInFile>& places) {
    BitReader bits(page);
    Handle handle = 0;
    std::int64_t offset = 0;
    while (bits.remaining() != 0) {
        handle += bits.umc();
        offset += bits.mc();
        if (bits.failed() || offset < 0)
            return false;
        places.push_back({handle, static_cast<std::uint64_t>(offset)});
    }
    return true;
}

} // namespace

std::vector<ObjectPlaceInFile> readObjectMap(ByteView section, Findings& findings, std::size_t most) {
    std::vector<ObjectPlaceInFile> places;
    const auto damage = [&findings](const char* reason, std::size_t at) {
        addFinding(findings, {std::string(section::handles), reason, at});
    };
    std::size_t at = 0;
    for (;;) {
        if (section.size() - at < sizeBytes) {
            damage("the object map ends without its empty page", at);
            return places;
        }
        // The size counts itself, not the check behind the page.
        const std::size_t size = bigEndian(section.subspan(at));
        if (size < sizeBytes || size + checkBytes > section.size() - at) {
            damage("a page of the object map is longer than the section", at);
            return places;
        }
        const ByteView page = section.subspan(at, size);
        if (crc16(page) != bigEndian(section.subspan(at + size)))
            damage("the check of a page of the object map doesn't fit", at);
        if (size == sizeBytes)
            return places;
        if (!readPage(page.subspan(sizeBytes), places)) {
            damage("a page of the object map can't be followed", at);
            return places;
        }
        if (places.size() > most) {
            damage("the object map has more entries than there can be objects", at);
            places.resize(most);
            return places;
        }
        at += size + checkBytes;
    }
}

std::optional<std::uint64_t> findInObjectMap(ByteView section, Handle handle) {
    ByteView page;
    for (std::size_t at = 0; section.size() - at > sizeBytes;) {
        const std::size_t size = bigEndian(section.subspan(at));
        if (size <= sizeBytes || size + checkBytes > section.size() - at)
            break;
        const ByteView candidate = section.subspan(at + sizeBytes, size - sizeBytes);
        if (BitReader(candidate).umc() > handle)
            break;
        page = candidate;
        at += size + checkBytes;
    }
    std::vector<ObjectPlaceInFile> places;
    readPage(page, places);
    const auto found = std::ranges::find(places, handle, &ObjectPlaceInFile::handle);
    return found == places.end() ? std::nullopt : std::optional(found->offset);
}

} // namespace dwg
