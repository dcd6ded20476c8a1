#include "tessaro/reading/PreviewPng.h"

#include "tessaro/browser/preview/Dib.h"

#include <lodepng.h>
#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

constexpr std::size_t kSignatureSize = 8;
constexpr std::size_t kChunkFrame = 12;    // Length, name and check of a chunk.
constexpr std::uint64_t kLargestPixel = 8; // Bytes: four channels of sixteen bits.

std::uint32_t BigEndian(std::span<const std::uint8_t> bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 | bytes[3];
}

struct PngSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// What the first chunk says.
std::optional<PngSize> ReadPngSize(std::span<const std::uint8_t> png) {
    if (png.size() < kSignatureSize + kChunkFrame + 13)
        return std::nullopt;
    return PngSize{BigEndian(png.subspan(16)), BigEndian(png.subspan(20))};
}

/// Bytes of the decoder's own, which it frees.
class GrowingBytes {
public:
    GrowingBytes(unsigned char*& bytes, std::size_t& size) : start(bytes), used(size) {
        start = nullptr;
        used = 0;
    }
    /// Room for more behind what is used, up to so many in all; none where there is no memory.
    std::span<unsigned char> More(std::size_t most) {
        const std::size_t wanted = std::min(most, std::max(kFirst, used * 2));
        auto* const grown = static_cast<unsigned char*>(std::realloc(start, wanted));
        if (grown == nullptr)
            return {};
        start = grown;
        return {start + used, wanted - used};
    }
    void Use(std::size_t count) { used += count; }

private:
    static constexpr std::size_t kFirst = 65536;
    unsigned char*& start;
    std::size_t& used;
};

/// Unpacks picture data for the decoder, up to the count of bytes that the settings' context says; fails behind it.
unsigned InflateWithin(unsigned char** out, std::size_t* outSize, const unsigned char* packed, std::size_t packedSize,
                       const LodePNGDecompressSettings* settings) {
    constexpr unsigned failed = 1;
    const std::uint64_t limit = *static_cast<const std::uint64_t*>(settings->custom_context);
    GrowingBytes bytes(*out, *outSize);
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK)
        return failed;
    stream.next_in = const_cast<Bytef*>(packed);
    stream.avail_in = static_cast<uInt>(packedSize);
    int status = Z_OK;
    while (status == Z_OK) {
        const auto room = bytes.More(static_cast<std::size_t>(limit));
        if (room.empty())
            break;
        stream.next_out = room.data();
        stream.avail_out = static_cast<uInt>(room.size());
        status = inflate(&stream, Z_NO_FLUSH);
        bytes.Use(room.size() - stream.avail_out);
        if (status == Z_OK && stream.avail_out != 0)
            break; // the data breaks off
    }
    inflateEnd(&stream);
    return status == Z_STREAM_END ? 0 : failed;
}

/// The chunk at that place with its frame; empty where none stands there whole.
std::span<const std::uint8_t> ChunkAt(std::span<const std::uint8_t> png, std::size_t at) {
    const auto rest = png.subspan(at);
    if (rest.size() < kChunkFrame)
        return {};
    const std::size_t length = BigEndian(rest);
    return length > rest.size() - kChunkFrame ? std::span<const std::uint8_t>{} : rest.first(kChunkFrame + length);
}

bool HasName(std::span<const std::uint8_t> chunk, std::string_view name) {
    return std::equal(name.begin(), name.end(), chunk.begin() + 4);
}

/// The chunks that the pixels are made of. What else there is, colour profiles and texts, has no part in them, and the
/// decoder would unpack as much of it as there are chunks.
std::vector<std::uint8_t> WithoutNotes(std::span<const std::uint8_t> png) {
    constexpr std::uint8_t noteBit = 0x20; // of the name's first letter
    const auto signature = png.first(kSignatureSize);
    std::vector<std::uint8_t> bytes(signature.begin(), signature.end());
    std::size_t at = kSignatureSize;
    for (auto chunk = ChunkAt(png, at); !chunk.empty(); chunk = ChunkAt(png, at)) {
        if ((chunk[4] & noteBit) == 0 || HasName(chunk, "tRNS"))
            bytes.insert(bytes.end(), chunk.begin(), chunk.end());
        at += chunk.size();
    }
    // A chunk that breaks off is the decoder's to judge.
    const auto rest = png.subspan(at);
    bytes.insert(bytes.end(), rest.begin(), rest.end());
    return bytes;
}

void PutNumber(std::uint8_t*& out, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
        *out++ = static_cast<std::uint8_t>(value >> (8 * i));
}

} // namespace

void RgbToDib(PreviewBytes& out, const std::uint8_t* rgb, unsigned width, unsigned height) {
    const std::size_t used = std::size_t{width} * 3;
    const std::size_t stride = (used + 3) / 4 * 4;
    out.assign(kDibHeaderSize + stride * height, 0);
    std::uint8_t* head = out.data();
    PutNumber(head, kDibHeaderSize, 4);
    PutNumber(head, width & 0xffff, 4);
    PutNumber(head, height & 0xffff, 4);
    PutNumber(head, 1, 2);
    PutNumber(head, 24, 2);
    PutNumber(head, 0, 4);
    PutNumber(head, static_cast<std::uint32_t>(stride * height), 4);
    PutNumber(head, 1, 4);
    PutNumber(head, 1, 4);
    for (std::size_t row = 0; row < height; ++row) {
        const std::uint8_t* from = rgb + (height - 1 - row) * used;
        std::uint8_t* to = out.data() + kDibHeaderSize + row * stride;
        for (std::size_t pixel = 0; pixel < width; ++pixel, from += 3, to += 3) {
            to[0] = from[2];
            to[1] = from[1];
            to[2] = from[0];
        }
    }
}

std::optional<PreviewBytes> DecodePng(std::span<const std::uint8_t> png) {
    const auto size = ReadPngSize(png);
    if (!size || size->width == 0 || size->height == 0 || std::uint64_t{size->width} * size->height > kLargestPngArea)
        return std::nullopt;
    // Rows, each with its filter byte; an interlaced picture has up to twice as many, shorter ones.
    const std::uint64_t rows = std::uint64_t{size->height} * 2 + 8;
    std::uint64_t limit = std::uint64_t{size->width} * size->height * kLargestPixel + rows;

    lodepng::State decoder;
    decoder.info_raw.colortype = LCT_RGB;
    decoder.info_raw.bitdepth = 8;
    decoder.decoder.zlibsettings.custom_zlib = InflateWithin;
    decoder.decoder.zlibsettings.custom_context = &limit;
    const std::vector<std::uint8_t> picture = WithoutNotes(png);
    unsigned char* decoded = nullptr;
    unsigned width = 0;
    unsigned height = 0;
    const unsigned failure = lodepng_decode(&decoded, &width, &height, &decoder, picture.data(), picture.size());
    const std::unique_ptr<unsigned char, decltype(&std::free)> pixels(decoded, &std::free);
    if (failure != 0 || !pixels)
        return std::nullopt;
    PreviewBytes preview;
    RgbToDib(preview, pixels.get(), width, height);
    return preview;
}
