#include "editor/dwg/thumbnail.h"

#include "editor/dwg/bits.h"
#include "editor/dwg/byte_cursor.h"
#include "editor/dwg/container_writer.h"
#include "editor/dwg/image_section.h"

#include <array>
#include <numeric>
#include <optional>

namespace dwg {

namespace {

constexpr std::array<std::uint8_t, 16> sectionBegin = {0x1F, 0x25, 0x6D, 0x07, 0xD4, 0x36, 0x28, 0x28,
                                                       0x9D, 0x57, 0xCA, 0x3F, 0x9D, 0x44, 0x10, 0x2B};
constexpr std::array<std::uint8_t, 16> sectionEnd = {0xE0, 0xDA, 0x92, 0xF8, 0x2B, 0xC9, 0xD7, 0xD7,
                                                     0x62, 0xA8, 0x35, 0xC0, 0x62, 0xBB, 0xEF, 0xD4};
constexpr std::size_t headerDataSize = 80;
constexpr std::size_t entrySize = 9;

constexpr std::size_t tableAt = sectionBegin.size() + 4;

/// The section where it can be taken as it lies in the file; nothing where it can't.
std::optional<Bytes> sectionAsStored(const Source& source, const ImageSection& section) {
    const std::uint64_t address = section.address;
    const auto head = source.bytes(address, tableAt);
    if (!head || !std::equal(sectionBegin.begin(), sectionBegin.end(), head->begin()))
        return std::nullopt;
    const std::uint64_t size = tableAt + ByteCursor(*head, sectionBegin.size()).u32() + sectionEnd.size();
    auto bytes = source.bytes(address, size);
    if (!bytes)
        return std::nullopt;
    std::size_t at = tableAt + 1;
    for (const ImageEntry& entry : section.entries) {
        const bool inside = entry.start >= address && entry.start - address <= size &&
                            entry.size <= size - (entry.start - address) && at + entrySize <= size;
        if (!inside)
            return std::nullopt;
        putU32(*bytes, at + 1, static_cast<std::uint32_t>(entry.start - address));
        at += entrySize;
    }
    return std::move(*bytes);
}

} // namespace

Result<Bytes> readImageSectionBytes(const Source& source) {
    const auto section = readImageSection(source);
    if (!section)
        return section.error();
    if (!section->has_value())
        return Bytes();
    if (auto stored = sectionAsStored(source, **section))
        return std::move(*stored);
    const auto pictures = readPictures(source);
    return pictures ? writeImageSection(*pictures, 0) : Result<Bytes>(pictures.error());
}

void moveImageSection(Bytes& section, std::uint32_t address) {
    if (section.size() <= tableAt)
        return;
    const std::size_t count = section[tableAt];
    std::size_t at = tableAt + 1;
    for (std::size_t i = 0; i < count && at + entrySize <= section.size(); ++i, at += entrySize)
        putU32(section, at + 1, ByteCursor(section, at + 1).u32() + address);
}

Result<std::vector<Picture>> readPictures(const Source& source) {
    auto section = readImageSection(source);
    if (!section)
        return section.error();
    std::vector<Picture> pictures;
    if (!section->has_value())
        return pictures;
    for (const ImageEntry& entry : section->value().entries) {
        if (entry.code == image_code::header || entry.size == 0)
            continue;
        auto bytes = source.bytes(entry.start, entry.size);
        if (bytes)
            pictures.push_back({entry.code, std::move(*bytes)});
    }
    return pictures;
}

Bytes writeImageSection(const std::vector<Picture>& pictures, std::uint32_t address) {
    // The length counts what lies between it and the end guard.
    const std::size_t tableSize = 1 + entrySize * (1 + pictures.size());
    const std::size_t dataSize =
        std::accumulate(pictures.begin(), pictures.end(), headerDataSize,
                        [](std::size_t sum, const Picture& picture) { return sum + picture.bytes.size(); });
    BitWriter out;
    out.append(sectionBegin);
    out.rl(static_cast<std::uint32_t>(tableSize + dataSize));
    out.rc(static_cast<std::uint8_t>(1 + pictures.size()));
    std::size_t start = address + sectionBegin.size() + 4 + tableSize;
    const auto writeEntry = [&](std::uint8_t code, std::size_t size) {
        out.rc(code);
        out.rl(static_cast<std::uint32_t>(start));
        out.rl(static_cast<std::uint32_t>(size));
        start += size;
    };
    writeEntry(image_code::header, headerDataSize);
    for (const Picture& picture : pictures)
        writeEntry(picture.code, picture.bytes.size());
    out.append(Bytes(headerDataSize, 0));
    for (const Picture& picture : pictures)
        out.append(picture.bytes);
    out.append(sectionEnd);
    return out.bytes();
}

} // namespace dwg
