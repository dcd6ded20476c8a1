#include "tessaro/reading/PreviewSection.h"

#include "tessaro/browser/preview/Dib.h"
#include "tessaro/reading/PreviewPng.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::uint64_t kSectionAddressAt = 13;
constexpr std::uint64_t kSentinelSize = 16;
constexpr std::uint64_t kBitmapFileHeaderSize = 14;

constexpr std::size_t kEntrySize = 9;

template <std::size_t Size> std::array<std::uint8_t, Size> ReadBytes(platform::File& file) {
    std::array<std::uint8_t, Size> bytes{};
    file.Read(bytes.data(), Size);
    return bytes;
}

std::uint32_t Number(const std::uint8_t* bytes) {
    return bytes[0] | std::uint32_t{bytes[1]} << 8 | std::uint32_t{bytes[2]} << 16 | std::uint32_t{bytes[3]} << 24;
}

std::optional<PreviewBytes> WithHeader(PreviewBytes bytes) {
    if (bytes.size() < kDibHeaderSize)
        return std::nullopt;
    return bytes;
}

/// Goes to the table of the image section and behind its count, which is given.
int ReadEntryCount(platform::File& drawing) {
    drawing.Seek(kSectionAddressAt);
    const std::uint64_t sectionAddress = Number(ReadBytes<4>(drawing).data());
    drawing.Seek(sectionAddress + kSentinelSize);
    const auto table = ReadBytes<5>(drawing); // The section's size, which nobody needs, and the count.
    return table[4];
}

void PutNumber(std::uint8_t* bytes, std::uint32_t value) {
    for (int i = 0; i < 4; ++i)
        bytes[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

std::vector<std::uint8_t> ReadRange(platform::File& file, std::uint64_t start, std::uint64_t size) {
    const std::uint64_t length = file.Length();
    const std::uint64_t there = start < length ? std::min(size, length - start) : 0;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(there));
    file.Seek(start);
    bytes.resize(file.Read(bytes.data(), bytes.size()));
    return bytes;
}

} // namespace

PreviewSection ReadPreviewSection(platform::File& drawing) {
    PreviewSection section;
    const int entryCount = ReadEntryCount(drawing);
    for (int i = 0; i < entryCount; ++i) {
        const auto entry = ReadBytes<kEntrySize>(drawing);
        const PreviewEntry place{Number(&entry[1]), Number(&entry[5])};
        switch (entry[0]) {
        case kHeaderCode:
            section.header = place;
            break;
        case kPngCode:
            section.isPng = true;
            [[fallthrough]];
        case kBitmapCode:
            section.image = place;
            break;
        default:
            break;
        }
    }
    return section;
}

std::optional<FoundEntry> FindEntry(platform::File& drawing, std::uint8_t code) {
    const int entryCount = ReadEntryCount(drawing);
    for (int i = 0; i < entryCount; ++i) {
        const std::uint64_t at = drawing.Position();
        const auto entry = ReadBytes<kEntrySize>(drawing);
        if (entry[0] == code)
            return FoundEntry{{Number(&entry[1]), Number(&entry[5])}, at};
    }
    return std::nullopt;
}

void WriteEntry(platform::File& drawing, std::uint64_t at, std::uint8_t code, const PreviewEntry& place) {
    std::array<std::uint8_t, kEntrySize> entry{code};
    PutNumber(&entry[1], place.start);
    PutNumber(&entry[5], place.size);
    drawing.Seek(at);
    drawing.Write(entry.data(), entry.size());
}

std::vector<std::uint8_t> ReadEntry(platform::File& drawing, const PreviewEntry& entry, std::size_t limit) {
    return ReadRange(drawing, entry.start, std::min<std::uint64_t>(entry.size, limit));
}

std::optional<PreviewBytes> ReadSectionImage(platform::File& drawing, const PreviewSection& section) {
    if (!section.image)
        return std::nullopt;
    std::vector<std::uint8_t> bytes = ReadEntry(drawing, *section.image, kLargestPreview);
    return section.isPng ? DecodePng(bytes) : WithHeader(std::move(bytes));
}

std::optional<PreviewBytes> ReadBitmapFile(platform::File& bitmap) {
    return WithHeader(ReadRange(bitmap, kBitmapFileHeaderSize, kLargestPreview));
}
