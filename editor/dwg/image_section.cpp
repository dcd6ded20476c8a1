#include "editor/dwg/image_section.h"

#include "editor/dwg/byte_cursor.h"

namespace dwg {

namespace {

constexpr std::uint64_t addressOffset = 0x0D;
constexpr std::uint64_t sentinelLength = 16;
constexpr std::uint64_t entryLength = 9;

std::uint32_t bigEndian(ByteCursor& cursor) {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i)
        value = value << 8 | cursor.u8();
    return value;
}

std::optional<ImageMeasures> measure(const Source& source, const ImageEntry& entry) {
    ImageMeasures measures;
    if (entry.code == image_code::bitmap) {
        const auto head = source.bytes(entry.start, 40);
        if (!head || entry.size < 40)
            return std::nullopt;
        ByteCursor cursor(*head, 4);
        measures.width = cursor.i32();
        measures.height = cursor.i32();
        cursor.skip(2);
        measures.bits = cursor.u16();
        cursor.skip(16);
        measures.coloursUsed = cursor.u32();
        return measures;
    }
    if (entry.code == image_code::png) {
        const auto head = source.bytes(entry.start, 24);
        if (!head || entry.size < 24)
            return std::nullopt;
        ByteCursor cursor(*head, 16); // behind the signature and the first chunk's length and name
        measures.width = static_cast<std::int32_t>(bigEndian(cursor));
        measures.height = static_cast<std::int32_t>(bigEndian(cursor));
        return measures;
    }
    return std::nullopt;
}

} // namespace

Result<std::optional<ImageSection>> readImageSection(const Source& source) {
    const auto pointer = source.bytes(addressOffset, 4);
    if (!pointer)
        return pointer.error();
    ImageSection section;
    section.address = ByteCursor(*pointer).u32();
    if (section.address == 0)
        return std::optional<ImageSection>();

    const std::uint64_t countOffset = section.address + sentinelLength + 4;
    const auto count = source.bytes(countOffset, 1);
    if (!count)
        return count.error();
    const auto table = source.bytes(countOffset + 1, entryLength * count->front());
    if (!table)
        return table.error();
    ByteCursor cursor(*table);
    for (std::size_t i = 0; i < count->front(); ++i) {
        ImageEntry entry;
        entry.code = cursor.u8();
        entry.start = cursor.u32();
        entry.size = cursor.u32();
        entry.measures = measure(source, entry);
        section.entries.push_back(entry);
    }
    return std::optional<ImageSection>(std::move(section));
}

} // namespace dwg
