#include "tessaro/browser/preview/Dib.h"

#include <algorithm>
#include <bit>

namespace {

constexpr std::uint32_t kPlain = 0;
constexpr std::uint32_t kMasks = 3;
constexpr std::size_t kColoursAt = 32;

std::uint32_t Number(const PreviewBytes& bytes, std::size_t offset, std::size_t size) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size && offset + i < bytes.size(); ++i)
        value |= std::uint32_t{bytes[offset + i]} << (8 * i);
    return value;
}

std::uint32_t Colour24(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return red | green << 8 | blue << 16;
}

/// The part of the value under the mask, widened or narrowed to eight bits.
std::uint32_t Channel(std::uint32_t value, std::uint32_t mask) {
    if (mask == 0)
        return 0;
    const int shift = std::countr_zero(mask);
    const int length = std::bit_width(mask >> shift);
    const std::uint32_t part = (value & mask) >> shift;
    if (length >= 8)
        return part >> (length - 8);
    std::uint32_t wide = 0;
    for (int filled = 0; filled < 8; filled += length)
        wide = filled + length <= 8 ? wide << length | part : wide << (8 - filled) | part >> (length - (8 - filled));
    return wide;
}

} // namespace

DibHeader ReadDibHeader(const PreviewBytes& preview) {
    DibHeader header;
    header.size = Number(preview, 0, 4);
    header.width = static_cast<std::int32_t>(Number(preview, 4, 4));
    header.height = static_cast<std::int32_t>(Number(preview, 8, 4));
    header.bits = static_cast<std::uint16_t>(Number(preview, 14, 2));
    header.compression = Number(preview, 16, 4);
    header.colours = Number(preview, kColoursAt, 4);
    return header;
}

void SetDibColours(PreviewBytes& preview, std::uint32_t colours) {
    for (std::size_t i = 0; i < 4 && kColoursAt + i < preview.size(); ++i)
        preview[kColoursAt + i] = static_cast<std::uint8_t>(colours >> (8 * i));
}

DibPixels::DibPixels(const PreviewBytes& bytes, std::uint64_t pixelOffset)
    : preview(bytes), header(ReadDibHeader(bytes)), start(pixelOffset) {
    const bool indexed = header.bits == 1 || header.bits == 4 || header.bits == 8;
    const bool masked = header.bits == 16 || header.bits == 32;
    drawable = header.size >= kDibHeaderSize && header.width > 0 && header.height > 0 &&
               (indexed || masked || header.bits == 24) &&
               (header.compression == kPlain || (masked && header.compression == kMasks));
    if (!drawable)
        return;
    stride = (static_cast<std::uint64_t>(header.width) * header.bits + 31) / 32 * 4;
    if (indexed)
        ReadPalette();
    if (masked)
        ReadMasks();
    colourOfZero = ColourOf(0);
}

void DibPixels::ReadPalette() {
    const std::uint32_t most = 1U << header.bits;
    const std::uint32_t entries = header.colours == 0 ? most : std::min(header.colours, most);
    for (std::uint32_t i = 0; i < entries; ++i) {
        const std::uint64_t at = header.size + std::uint64_t{i} * 4;
        palette[i] = Colour24(Byte(at + 2), Byte(at + 1), Byte(at));
    }
}

void DibPixels::ReadMasks() {
    if (header.compression == kMasks)
        masks = {Number(preview, 40, 4), Number(preview, 44, 4), Number(preview, 48, 4)};
    else if (header.bits == 16)
        masks = {0x7c00, 0x03e0, 0x001f};
    else
        masks = {0xff0000, 0x00ff00, 0x0000ff};
}

std::int64_t DibPixels::RowsPresent() const {
    if (start >= preview.size())
        return 0;
    const std::uint64_t rows = (preview.size() - start + stride - 1) / stride;
    return static_cast<std::int64_t>(std::min(rows, static_cast<std::uint64_t>(header.height)));
}

std::int64_t DibPixels::ColumnsPresent(std::int64_t row) const {
    const std::uint64_t at = start + static_cast<std::uint64_t>(row) * stride;
    if (at >= preview.size())
        return 0;
    const std::uint64_t columns = ((preview.size() - at) * 8 + header.bits - 1) / header.bits;
    return static_cast<std::int64_t>(std::min(columns, static_cast<std::uint64_t>(header.width)));
}

std::uint32_t DibPixels::Colour(std::int64_t row, std::int64_t column) const {
    const std::uint64_t line = start + static_cast<std::uint64_t>(row) * stride;
    const auto x = static_cast<std::uint64_t>(column);
    switch (header.bits) {
    case 1:
        return palette[Byte(line + x / 8) >> (7 - x % 8) & 1];
    case 4:
        return palette[Byte(line + x / 2) >> (x % 2 == 0 ? 4 : 0) & 15];
    case 8:
        return palette[Byte(line + x)];
    case 16:
        return ColourOf(Byte(line + 2 * x) | Byte(line + 2 * x + 1) << 8);
    case 24:
        return Colour24(Byte(line + 3 * x + 2), Byte(line + 3 * x + 1), Byte(line + 3 * x));
    default:
        return ColourOf(Byte(line + 4 * x) | Byte(line + 4 * x + 1) << 8 | Byte(line + 4 * x + 2) << 16 |
                        Byte(line + 4 * x + 3) << 24);
    }
}

std::uint32_t DibPixels::ColourOf(std::uint32_t value) const {
    switch (header.bits) {
    case 16:
    case 32:
        return Colour24(Channel(value, masks[0]), Channel(value, masks[1]), Channel(value, masks[2]));
    case 24:
        return value;
    default:
        return palette[value];
    }
}
