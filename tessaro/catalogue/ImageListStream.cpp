#include "tessaro/catalogue/ImageList.h"

#include <algorithm>
#include <cstring>
#include <optional>

// The stream: a head of 28 bytes, then a bitmap file whose picture holds the slots, four in a row, the first row of
// slots on top; with a mask, a second bitmap file. All numbers are little-endian.

namespace {

constexpr std::size_t kHeadBytes = 28, kFileHeadBytes = 14, kInfoBytes = 40;
constexpr int kSlotsInRow = 4;
constexpr int kFlagMask = 1, kFlagFourBits = 4;
constexpr int kMostPixels = 4096;

/// Numbers from the front of some bytes; past the end it fails for good.
class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> source) : bytes(source) {}
    std::uint32_t Number(std::size_t size) {
        if (!Has(size))
            return 0;
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value |= static_cast<std::uint32_t>(bytes[at + i]) << (8 * i);
        at += size;
        return value;
    }
    std::int32_t Signed() { return static_cast<std::int32_t>(Number(4)); }
    std::span<const std::uint8_t> Bytes(std::size_t size) {
        if (!Has(size))
            return {};
        at += size;
        return bytes.subspan(at - size, size);
    }
    bool Good() const { return good; }
    std::size_t Position() const { return at; }

private:
    bool Has(std::size_t size) {
        good = good && size <= bytes.size() - at;
        return good;
    }
    std::span<const std::uint8_t> bytes;
    std::size_t at = 0;
    bool good = true;
};

struct Head {
    int count = 0, maximum = 0, grow = 0, width = 0, height = 0, flags = 0;
};

std::optional<Head> ReadHead(Reader& in) {
    Head head;
    const bool marked = in.Number(2) == 0x4C49 && in.Number(2) == 0x0101;
    head.count = static_cast<int>(in.Number(2));
    head.maximum = static_cast<int>(in.Number(2));
    head.grow = static_cast<int>(in.Number(2));
    head.width = static_cast<int>(in.Number(2));
    head.height = static_cast<int>(in.Number(2));
    in.Number(4); // back colour
    head.flags = static_cast<int>(in.Number(2));
    in.Bytes(8); // overlays
    if (!in.Good() || !marked || head.count > head.maximum || head.maximum == 0 || head.width == 0 ||
        head.height == 0 || head.width > kMostPixels || head.height > kMostPixels)
        return std::nullopt;
    return head;
}

/// A bitmap of all slots as the stream holds it.
struct Bitmap {
    int width = 0, height = 0, bits = 0;
    bool topDown = false;
    std::size_t stride = 0;
    std::array<std::uint8_t, 256> standardOf{}; ///< by number in the bitmap's own colour table
    std::span<const std::uint8_t> pixels;

    std::uint8_t StandardAt(int x, int y) const {
        const auto row = static_cast<std::size_t>(topDown ? y : height - 1 - y);
        const std::uint8_t* line = pixels.data() + row * stride;
        const auto column = static_cast<std::size_t>(x);
        switch (bits) {
        case 1:
            return standardOf[(line[column / 8] >> (7 - column % 8)) & 1];
        case 4:
            return standardOf[column % 2 == 0 ? line[column / 2] >> 4 : line[column / 2] & 15];
        case 8:
            return standardOf[line[column]];
        case 16: {
            const int value = line[column * 2] | line[column * 2 + 1] << 8;
            const auto wide = [](int five) { return static_cast<std::uint8_t>(five << 3 | five >> 2); };
            return NearestStandardColour(wide(value >> 10 & 31), wide(value >> 5 & 31), wide(value & 31));
        }
        default: {
            const std::uint8_t* pixel = line + column * static_cast<std::size_t>(bits / 8);
            return NearestStandardColour(pixel[2], pixel[1], pixel[0]);
        }
        }
    }
};

/// Reads a bitmap file whose picture has room for the slots that the head tells.
std::optional<Bitmap> ReadBitmap(Reader& in, const Head& head) {
    const bool marked = in.Number(2) == 0x4D42;
    in.Bytes(8); // size and reserved words, of which writers differ
    const std::uint32_t offset = in.Number(4);
    Bitmap bitmap;
    const std::uint32_t infoBytes = in.Number(4);
    bitmap.width = in.Signed();
    const std::int32_t signedHeight = in.Signed();
    const std::uint32_t planes = in.Number(2);
    bitmap.bits = static_cast<int>(in.Number(2));
    const std::uint32_t compression = in.Number(4);
    in.Bytes(12); // size of the pixels, pixels a metre
    std::uint32_t colours = in.Number(4);
    in.Number(4); // colours that matter
    const std::int64_t rows = (head.maximum + kSlotsInRow - 1) / kSlotsInRow;
    const std::int64_t height = signedHeight < 0 ? -std::int64_t{signedHeight} : signedHeight;
    constexpr std::array<int, 6> accepted = {1, 4, 8, 16, 24, 32};
    if (!in.Good() || !marked || infoBytes != kInfoBytes || planes != 1 || compression != 0 ||
        std::find(accepted.begin(), accepted.end(), bitmap.bits) == accepted.end() ||
        bitmap.width != head.width * kSlotsInRow || height != rows * head.height)
        return std::nullopt;
    bitmap.height = static_cast<int>(height);
    bitmap.topDown = signedHeight < 0;
    bitmap.stride = (static_cast<std::size_t>(bitmap.width) * static_cast<std::size_t>(bitmap.bits) + 31) / 32 * 4;

    const std::uint32_t most = bitmap.bits <= 8 ? 1u << bitmap.bits : 0;
    if (colours == 0)
        colours = most;
    if (colours > 256 || (most != 0 && colours > most))
        return std::nullopt;
    for (std::uint32_t i = 0; i < colours; ++i) {
        const std::uint32_t colour = in.Number(4);
        bitmap.standardOf[i] =
            NearestStandardColour(static_cast<std::uint8_t>(colour >> 16), static_cast<std::uint8_t>(colour >> 8),
                                  static_cast<std::uint8_t>(colour));
    }
    const std::size_t heads = kFileHeadBytes + kInfoBytes + std::size_t{colours} * 4;
    if (offset < heads)
        return std::nullopt;
    in.Bytes(offset - heads);
    bitmap.pixels = in.Bytes(bitmap.stride * static_cast<std::size_t>(bitmap.height));
    if (!in.Good())
        return std::nullopt;
    return bitmap;
}

void Put(std::string& out, std::uint32_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
        out += static_cast<char>(value >> (8 * i));
}

} // namespace

/// The one that knows both the list's storage and the stream's.
class ImageListStream {
public:
    static std::unique_ptr<ImageList> Read(std::span<const std::uint8_t> bytes, std::size_t& used) {
        Reader in(bytes);
        const auto head = ReadHead(in);
        if (!head)
            return nullptr;
        const auto bitmap = ReadBitmap(in, *head);
        if (!bitmap)
            return nullptr;
        if ((head->flags & kFlagMask) != 0 && !ReadBitmap(in, *head))
            return nullptr;
        used = in.Position();

        std::unique_ptr<ImageList> list(new ImageList);
        list->width = head->width;
        list->height = head->height;
        list->grow = head->grow;
        list->maximum = head->maximum;
        list->count = head->count;
        list->nibbles.resize(list->SlotBytes() * static_cast<std::size_t>(list->count));
        std::uint8_t* row = list->nibbles.data();
        for (int slot = 0; slot < list->count; ++slot)
            for (int y = 0; y < list->height; ++y, row += (list->width + 1) / 2)
                for (int x = 0; x < list->width; ++x) {
                    const std::uint8_t colour =
                        bitmap->StandardAt(slot % kSlotsInRow * list->width + x, slot / kSlotsInRow * list->height + y);
                    row[x / 2] |= static_cast<std::uint8_t>(x % 2 == 0 ? colour << 4 : colour);
                }
        return list;
    }

    static void Write(const ImageList& list, std::string& out) {
        const auto rows = static_cast<std::uint32_t>((list.maximum + kSlotsInRow - 1) / kSlotsInRow);
        const auto width = static_cast<std::uint32_t>(list.width * kSlotsInRow);
        const std::uint32_t height = rows * static_cast<std::uint32_t>(list.height);
        const std::uint32_t stride = (width * 4 + 31) / 32 * 4;
        const std::uint32_t pixelsAt = kFileHeadBytes + kInfoBytes + 16 * 4;
        out.reserve(out.size() + kHeadBytes + pixelsAt + std::size_t{stride} * height);
        PutHead(list, out);

        Put(out, 0x4D42, 2);
        Put(out, pixelsAt, 4); // the platform counts the heads only
        Put(out, 0, 4);
        Put(out, pixelsAt, 4);
        Put(out, kInfoBytes, 4);
        Put(out, width, 4);
        Put(out, height, 4);
        Put(out, 1, 2);
        Put(out, 4, 2);
        Put(out, 0, 4);
        Put(out, stride * height, 4);
        out.append(16, '\0'); // pixels a metre, numbers of colours
        for (const auto& colour : kStandardColours)
            Put(out, static_cast<std::uint32_t>(colour[2] | colour[1] << 8 | colour[0] << 16), 4);

        const std::size_t pixels = out.size();
        out.resize(pixels + std::size_t{stride} * height);
        const std::uint8_t* row = list.nibbles.data();
        for (int slot = 0; slot < list.count; ++slot)
            for (int y = 0; y < list.height; ++y, row += (list.width + 1) / 2) {
                const auto line = static_cast<std::uint32_t>(slot / kSlotsInRow * list.height + y);
                char* const target = out.data() + pixels + std::size_t{stride} * (height - 1 - line);
                PutRow(row, list.width, target, slot % kSlotsInRow * list.width);
            }
    }

private:
    static void PutHead(const ImageList& list, std::string& out) {
        out += "IL";
        Put(out, 0x0101, 2);
        Put(out, static_cast<std::uint32_t>(list.count), 2);
        Put(out, static_cast<std::uint32_t>(list.maximum), 2);
        Put(out, static_cast<std::uint32_t>(list.grow), 2);
        Put(out, static_cast<std::uint32_t>(list.width), 2);
        Put(out, static_cast<std::uint32_t>(list.height), 2);
        Put(out, 0xFFFFFFFF, 4); // no back colour
        Put(out, kFlagFourBits, 2);
        out.append(8, '\xFF'); // no overlays
    }

    /// A row of one slot to its place in a row of all slots, which is zero there.
    static void PutRow(const std::uint8_t* row, int width, char* target, int column) {
        if (column % 2 == 0 && width % 2 == 0) {
            std::memcpy(target + column / 2, row, static_cast<std::size_t>(width / 2));
            return;
        }
        for (int x = 0; x < width; ++x) {
            const int colour = x % 2 == 0 ? row[x / 2] >> 4 : row[x / 2] & 15;
            target[(column + x) / 2] =
                static_cast<char>(target[(column + x) / 2] | ((column + x) % 2 == 0 ? colour << 4 : colour));
        }
    }
};

void ImageList::Write(std::string& out) const {
    ImageListStream::Write(*this, out);
}

std::unique_ptr<ImageList> ImageList::Read(std::span<const std::uint8_t> bytes, std::size_t& used) {
    return ImageListStream::Read(bytes, used);
}
