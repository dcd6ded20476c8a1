#include "tessaro/reading/PreviewPng.h"

#include "tessaro/browser/preview/Dib.h"

#include <lodepng.h>
#include <zlib.h>

#include <algorithm>
#include <array>
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

/// Unpacks the picture data without keeping it, to see that it isn't more than `limit` bytes.
class PackedData {
public:
    explicit PackedData(std::uint64_t most) : limit(most) { ready = inflateInit(&stream) == Z_OK; }
    ~PackedData() {
        if (ready)
            inflateEnd(&stream);
    }
    PackedData(const PackedData&) = delete;
    PackedData& operator=(const PackedData&) = delete;

    /// False once the limit is passed. Damage ends the count: the decoder will meet it in its turn.
    bool Add(std::span<const std::uint8_t> packed) {
        stream.next_in = const_cast<Bytef*>(packed.data());
        stream.avail_in = static_cast<uInt>(packed.size());
        while (ready && !ended) {
            std::array<Bytef, 16384> block;
            stream.next_out = block.data();
            stream.avail_out = static_cast<uInt>(block.size());
            const int status = inflate(&stream, Z_NO_FLUSH);
            unpacked += block.size() - stream.avail_out;
            if (unpacked > limit)
                return false;
            if (status != Z_OK)
                ended = status != Z_BUF_ERROR;
            if (status != Z_OK || stream.avail_out != 0)
                break;
        }
        return ready;
    }

private:
    const std::uint64_t limit;
    z_stream stream{};
    std::uint64_t unpacked = 0;
    bool ready = false;
    bool ended = false;
};

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

bool FitsUnpacked(std::span<const std::uint8_t> png, std::uint64_t limit) {
    PackedData data(limit);
    std::size_t at = kSignatureSize;
    for (auto chunk = ChunkAt(png, at); !chunk.empty(); chunk = ChunkAt(png, at)) {
        if (HasName(chunk, "IDAT") && !data.Add(chunk.subspan(8, chunk.size() - kChunkFrame)))
            return false;
        at += chunk.size();
    }
    return true;
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

void AppendNumber(PreviewBytes& out, std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i)
        out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

} // namespace

void RgbToDib(PreviewBytes& out, const std::uint8_t* rgb, unsigned width, unsigned height) {
    const std::size_t used = std::size_t{width} * 3;
    const std::size_t padding = (4 - used % 4) % 4;
    out.clear();
    out.reserve(kDibHeaderSize + (used + padding) * height);
    AppendNumber(out, kDibHeaderSize, 4);
    AppendNumber(out, width & 0xffff, 4);
    AppendNumber(out, height & 0xffff, 4);
    AppendNumber(out, 1, 2);
    AppendNumber(out, 24, 2);
    AppendNumber(out, 0, 4);
    AppendNumber(out, static_cast<std::uint32_t>((used + padding) * height), 4);
    AppendNumber(out, 1, 4);
    AppendNumber(out, 1, 4);
    AppendNumber(out, 0, 4);
    AppendNumber(out, 0, 4);
    for (std::size_t row = height; row-- > 0;) {
        const std::uint8_t* pixels = rgb + row * used;
        for (std::size_t i = 0; i < used; i += 3) {
            out.push_back(pixels[i + 2]);
            out.push_back(pixels[i + 1]);
            out.push_back(pixels[i]);
        }
        out.insert(out.end(), padding, 0);
    }
}

std::optional<PreviewBytes> DecodePng(std::span<const std::uint8_t> png) {
    const auto size = ReadPngSize(png);
    if (!size || size->width == 0 || size->height == 0 || std::uint64_t{size->width} * size->height > kLargestPngArea)
        return std::nullopt;
    // Rows, each with its filter byte; an interlaced picture has up to twice as many, shorter ones.
    const std::uint64_t rows = std::uint64_t{size->height} * 2 + 8;
    if (!FitsUnpacked(png, std::uint64_t{size->width} * size->height * kLargestPixel + rows))
        return std::nullopt;

    const std::vector<std::uint8_t> picture = WithoutNotes(png);
    unsigned char* decoded = nullptr;
    unsigned width = 0;
    unsigned height = 0;
    const unsigned failure = lodepng_decode24(&decoded, &width, &height, picture.data(), picture.size());
    const std::unique_ptr<unsigned char, decltype(&std::free)> pixels(decoded, &std::free);
    if (failure != 0 || !pixels)
        return std::nullopt;
    PreviewBytes preview;
    RgbToDib(preview, pixels.get(), width, height);
    return preview;
}
