#pragma once

#include "tessaro/browser/preview/Preview.h"

#include "tessaro/platform/File.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Where an entry of the image section says that its data lies; not checked.
struct PreviewEntry {
    std::uint32_t start = 0;
    std::uint32_t size = 0;
};

/// What the image section of a drawing offers. Of several entries of a kind the last one wins; `isPng` is never taken
/// back, so that a bitmap entry behind a PNG entry is taken for a PNG.
struct PreviewSection {
    std::optional<PreviewEntry> header; ///< code 1
    std::optional<PreviewEntry> image;  ///< code 2 or 6
    bool isPng = false;
};

/// The most that is read of one entry or picture file.
constexpr std::size_t kLargestPreview = std::size_t{32} << 20;

/// Walks the image section of an open drawing. What the file is too short for counts as zero. Throws FileException.
PreviewSection ReadPreviewSection(platform::File& drawing);

/// Codes of the entries of an image section.
constexpr std::uint8_t kHeaderCode = 1, kBitmapCode = 2, kPngCode = 6;

/// The first entry with that code; `at` is where the entry itself stands in the file. Throws FileException.
struct FoundEntry {
    PreviewEntry place;
    std::uint64_t at = 0;
};
std::optional<FoundEntry> FindEntry(platform::File& drawing, std::uint8_t code);
/// Overwrites the entry that stands at `at`. Throws FileException.
void WriteEntry(platform::File& drawing, std::uint64_t at, std::uint8_t code, const PreviewEntry& place);

/// The bytes of an entry: as many as the file holds of them, at most `limit`. Throws FileException.
std::vector<std::uint8_t> ReadEntry(platform::File& drawing, const PreviewEntry& entry, std::size_t limit);

/// The image of the section as a preview in memory; none for a PNG that can't be decoded, and for data that doesn't
/// even hold the header of a bitmap. Throws FileException.
std::optional<PreviewBytes> ReadSectionImage(platform::File& drawing, const PreviewSection& section);

/// The preview out of a bitmap file: all behind its file header of 14 bytes. Throws FileException.
std::optional<PreviewBytes> ReadBitmapFile(platform::File& bitmap);
