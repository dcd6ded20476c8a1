#include "editor/dwg/png_picture.h"

#include "editor/dwg/byte_cursor.h"
#include "editor/dwg/crc.h"

#include <array>
#include <string_view>
#include <zlib.h>

namespace dwg {

namespace {

constexpr std::size_t headerSize = 40;

struct Bitmap {
    std::uint32_t width = 0, height = 0;
    ByteView colours; ///< blue, green, red, 0
    ByteView rows;    ///< each a multiple of four bytes
    std::size_t rowSize = 0;
};

std::optional<Bitmap> readBitmap(ByteView bytes) {
    ByteCursor cursor(bytes);
    const std::uint32_t size = cursor.u32();
    Bitmap bitmap;
    bitmap.width = cursor.u32();
    bitmap.height = cursor.u32();
    const std::uint16_t planes = cursor.u16(), bits = cursor.u16();
    const std::uint32_t packing = cursor.u32();
    cursor.skip(12);
    const std::uint32_t used = cursor.u32();
    cursor.skip(4);
    constexpr std::uint32_t mostColours = 256, largestSide = 1 << 14;
    const std::uint32_t colours = used == 0 ? mostColours : used;
    const bool known = size == headerSize && planes == 1 && bits == 8 && packing == 0 && colours <= mostColours &&
                       bitmap.width > 0 && bitmap.width <= largestSide && bitmap.height > 0 &&
                       bitmap.height <= largestSide;
    if (cursor.failed() || !known)
        return std::nullopt;
    bitmap.colours = cursor.take(std::size_t{colours} * 4);
    bitmap.rowSize = (std::size_t{bitmap.width} + 3) / 4 * 4;
    bitmap.rows = cursor.take(bitmap.rowSize * bitmap.height);
    return cursor.failed() ? std::nullopt : std::optional(bitmap);
}

void appendBigEndian(Bytes& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<std::uint8_t>(value >> shift));
}

/// The length doesn't count the name, the check does.
void appendChunk(Bytes& out, std::string_view name, ByteView data) {
    appendBigEndian(out, static_cast<std::uint32_t>(data.size()));
    Bytes checked(name.begin(), name.end());
    checked.insert(checked.end(), data.begin(), data.end());
    out.insert(out.end(), checked.begin(), checked.end());
    appendBigEndian(out, crc32(checked));
}

std::optional<Bytes> deflated(const Bytes& plain) {
    uLongf size = compressBound(plain.size());
    Bytes out(size);
    if (compress(out.data(), &size, plain.data(), plain.size()) != Z_OK)
        return std::nullopt;
    out.resize(size);
    return out;
}

} // namespace

std::optional<Bytes> pngOfBitmap(ByteView bytes) {
    const auto bitmap = readBitmap(bytes);
    if (!bitmap)
        return std::nullopt;
    Bytes rows; // each begins with its filter, none here
    for (std::size_t row = bitmap->height; row > 0; --row) {
        const ByteView pixels = bitmap->rows.subspan((row - 1) * bitmap->rowSize, bitmap->width);
        rows.push_back(0);
        rows.insert(rows.end(), pixels.begin(), pixels.end());
    }
    const auto packed = deflated(rows);
    if (!packed)
        return std::nullopt;

    constexpr std::array<std::uint8_t, 8> signature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    constexpr std::array<std::uint8_t, 5> eightBitsByTable = {8, 3, 0, 0, 0};
    Bytes head;
    appendBigEndian(head, bitmap->width);
    appendBigEndian(head, bitmap->height);
    head.insert(head.end(), eightBitsByTable.begin(), eightBitsByTable.end());
    Bytes table;
    for (std::size_t i = 0; i + 4 <= bitmap->colours.size(); i += 4)
        table.insert(table.end(), {bitmap->colours[i + 2], bitmap->colours[i + 1], bitmap->colours[i]});
    Bytes out(signature.begin(), signature.end());
    appendChunk(out, "IHDR", head);
    appendChunk(out, "PLTE", table);
    appendChunk(out, "IDAT", *packed);
    appendChunk(out, "IEND", {});
    return out;
}

} // namespace dwg
