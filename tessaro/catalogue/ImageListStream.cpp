#include "tessaro/catalogue/ImageList.h"

#include <algorithm>
#include <cstring>
#include <optional>

// The stream: a head of 28 bytes, then a bitmap file whose picture holds the slots, four in a row, the first row of
// slots on top; with a mask, a second bitmap file. All numbers are little-endian.

namespace {

constexpr std::size_t kHeadBytes = 28, kFileHeadBytes = 14, kInfoBytes = 40;
constexpr int kFlagMask = 1, kFlagFourBits = 4;
constexpr int kMostPixels = 4096;
constexpr std::size_t kMostTaken = std::size_t{1} << 16;

class SpanSource : public ByteSource {
public:
    explicit SpanSource(std::span<const std::uint8_t> source) : bytes(source) {}
    std::span<const std::uint8_t> Take(std::size_t count) override {
        if (count > bytes.size() - at)
            return {};
        at += count;
        return bytes.subspan(at - count, count);
    }
    std::uint64_t AtMost() const override { return bytes.size() - at; }
    std::size_t Position() const { return at; }

private:
    const std::span<const std::uint8_t> bytes;
    std::size_t at = 0;
};

/// Numbers from the front of some bytes that are known to be there.
class Numbers {
public:
    explicit Numbers(std::span<const std::uint8_t> source) : at(source.data()) {}
    std::uint32_t Next(std::size_t size) {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value |= static_cast<std::uint32_t>(*at++) << (8 * i);
        return value;
    }
    int Word() { return static_cast<int>(Next(2)); }
    void Skip(std::size_t size) { at += size; }

private:
    const std::uint8_t* at;
};

struct Head {
    int count = 0, maximum = 0, grow = 0, width = 0, height = 0, flags = 0;
};

std::optional<Head> ReadHead(ByteSource& source) {
    const auto bytes = source.Take(kHeadBytes);
    if (bytes.empty())
        return std::nullopt;
    Numbers in(bytes);
    const bool marked = in.Word() == 0x4C49 && in.Word() == 0x0101;
    Head head;
    head.count = in.Word();
    head.maximum = in.Word();
    head.grow = in.Word();
    head.width = in.Word();
    head.height = in.Word();
    in.Skip(4); // back colour
    head.flags = in.Word();
    if (!marked || head.count > head.maximum || head.maximum == 0 || head.width == 0 || head.height == 0 ||
        head.width > kMostPixels || head.height > kMostPixels)
        return std::nullopt;
    return head;
}

/// A bitmap of all slots, but for its pixels.
struct Bitmap {
    int width = 0, height = 0, bits = 0;
    bool topDown = false;
    bool standard = true; ///< four bits with the sixteen standard colours in their order
    std::size_t stride = 0;
    std::array<std::uint8_t, 256> standardOf{}; ///< by number in the bitmap's own colour table

    std::uint8_t StandardAt(const std::uint8_t* line, int x) const {
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

bool ReadColours(ByteSource& source, Bitmap& bitmap, std::uint32_t colours) {
    const auto table = source.Take(std::size_t{colours} * 4);
    if (table.size() < std::size_t{colours} * 4)
        return false;
    for (std::uint32_t i = 0; i < colours; ++i) {
        const std::uint8_t* const colour = table.data() + std::size_t{i} * 4;
        bitmap.standardOf[i] = NearestStandardColour(colour[2], colour[1], colour[0]);
    }
    bitmap.standard = bitmap.bits == 4;
    for (std::uint8_t i = 0; i < 16; ++i)
        bitmap.standard = bitmap.standard && bitmap.standardOf[i] == i;
    return true;
}

bool Skip(ByteSource& source, std::uint64_t count) {
    while (count > 0) {
        const auto piece = static_cast<std::size_t>(std::min<std::uint64_t>(count, kMostTaken));
        if (source.Take(piece).empty())
            return false;
        count -= piece;
    }
    return true;
}

/// Reads the heads of a bitmap file whose picture has room for the slots that the list's head tells, up to its pixels.
std::optional<Bitmap> ReadBitmap(ByteSource& source, const Head& head) {
    constexpr int slotsInRow = 4;
    const auto heads = source.Take(kFileHeadBytes + kInfoBytes);
    if (heads.empty())
        return std::nullopt;
    Numbers in(heads);
    const bool marked = in.Word() == 0x4D42;
    in.Skip(8); // size and reserved words, of which writers differ
    const std::uint32_t offset = in.Next(4);
    Bitmap bitmap;
    const std::uint32_t infoBytes = in.Next(4);
    bitmap.width = static_cast<std::int32_t>(in.Next(4));
    const auto signedHeight = static_cast<std::int32_t>(in.Next(4));
    const int planes = in.Word();
    bitmap.bits = in.Word();
    const std::uint32_t compression = in.Next(4);
    in.Skip(12); // size of the pixels, pixels a metre
    std::uint32_t colours = in.Next(4);
    const std::int64_t rows = (head.maximum + slotsInRow - 1) / slotsInRow;
    const std::int64_t height = signedHeight < 0 ? -std::int64_t{signedHeight} : signedHeight;
    constexpr std::array<int, 6> accepted = {1, 4, 8, 16, 24, 32};
    if (!marked || infoBytes != kInfoBytes || planes != 1 || compression != 0 ||
        std::find(accepted.begin(), accepted.end(), bitmap.bits) == accepted.end() ||
        bitmap.width != head.width * slotsInRow || height != rows * head.height)
        return std::nullopt;
    bitmap.height = static_cast<int>(height);
    bitmap.topDown = signedHeight < 0;
    bitmap.stride = (static_cast<std::size_t>(bitmap.width) * static_cast<std::size_t>(bitmap.bits) + 31) / 32 * 4;

    const std::uint32_t most = bitmap.bits <= 8 ? 1u << bitmap.bits : 0;
    if (colours == 0)
        colours = most;
    if (colours > 256 || (most != 0 && colours > most) || !ReadColours(source, bitmap, colours))
        return std::nullopt;
    const std::size_t before = kFileHeadBytes + kInfoBytes + std::size_t{colours} * 4;
    if (offset < before || !Skip(source, offset - before) ||
        source.AtMost() < std::uint64_t{bitmap.stride} * static_cast<std::uint64_t>(bitmap.height))
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
    static std::unique_ptr<ImageList> Read(ByteSource& source) {
        const auto head = ReadHead(source);
        if (!head)
            return nullptr;
        const auto bitmap = ReadBitmap(source, *head);
        if (!bitmap)
            return nullptr;
        std::unique_ptr<ImageList> list(new ImageList);
        list->width = head->width;
        list->height = head->height;
        list->grow = head->grow;
        list->maximum = head->maximum;
        list->count = head->count;
        if (!ReadPixels(source, *bitmap, *list) || ((head->flags & kFlagMask) != 0 && !PassMask(source, *head)))
            return nullptr;
        return list;
    }

    /// Measures of the bitmap that holds the slots.
    struct Sheet {
        explicit Sheet(const ImageList& list)
            : width(static_cast<std::uint32_t>(list.width * kSlotsInRow)),
              height(static_cast<std::uint32_t>((list.maximum + kSlotsInRow - 1) / kSlotsInRow * list.height)),
              stride((width * 4 + 31) / 32 * 4) {}
        std::size_t Bytes() const { return std::size_t{stride} * height; }
        std::uint32_t width, height, stride;
    };
    static constexpr std::uint32_t kPixelsAt = kFileHeadBytes + kInfoBytes + 16 * 4;

    static std::size_t Size(const ImageList& list) { return kHeadBytes + kPixelsAt + Sheet(list).Bytes(); }

    static void Write(const ImageList& list, std::string& out) {
        const Sheet sheet(list);
        out.reserve(out.size() + Size(list));
        PutHead(list, out);

        Put(out, 0x4D42, 2);
        Put(out, kPixelsAt, 4); // the platform counts the heads only
        Put(out, 0, 4);
        Put(out, kPixelsAt, 4);
        Put(out, kInfoBytes, 4);
        Put(out, sheet.width, 4);
        Put(out, sheet.height, 4);
        Put(out, 1, 2);
        Put(out, 4, 2);
        Put(out, 0, 4);
        Put(out, sheet.stride * sheet.height, 4);
        out.append(16, '\0'); // pixels a metre, numbers of colours
        for (const auto& colour : kStandardColours)
            Put(out, static_cast<std::uint32_t>(colour[2] | colour[1] << 8 | colour[0] << 16), 4);

        const std::size_t pixels = out.size();
        out.resize(pixels + sheet.Bytes());
        for (int slot = 0; slot < list.count; ++slot) {
            const std::uint8_t* from = list.Pixels(slot);
            for (int y = 0; y < list.height; ++y, from += list.LineBytes()) {
                const auto line = static_cast<std::uint32_t>(slot / kSlotsInRow * list.height + y);
                char* const target = out.data() + pixels + std::size_t{sheet.stride} * (sheet.height - 1 - line);
                PutLine(from, list.width, target, slot % kSlotsInRow * list.width);
            }
        }
    }

private:
    static constexpr int kSlotsInRow = ImageList::kSlotsInRow;

    /// The lines in their order in the file, mostly the last one first.
    static bool ReadPixels(ByteSource& source, const Bitmap& bitmap, ImageList& list) {
        list.rows.resize(static_cast<std::size_t>((list.count + kSlotsInRow - 1) / kSlotsInRow));
        for (int n = 0; n < bitmap.height; ++n) {
            const auto line = source.Take(bitmap.stride);
            if (line.empty())
                return false;
            const int y = bitmap.topDown ? n : bitmap.height - 1 - n;
            const int first = y / list.height * kSlotsInRow;
            for (int slot = first; slot < std::min(first + kSlotsInRow, list.count); ++slot)
                TakeLine(line.data(), bitmap, list, slot, y % list.height);
        }
        return true;
    }

    /// A line of one slot out of a line of all slots; zero stands in the slot.
    static void TakeLine(const std::uint8_t* line, const Bitmap& bitmap, ImageList& list, int slot, int y) {
        auto& row = list.rows[static_cast<std::size_t>(slot / kSlotsInRow)];
        if (row.empty())
            row.resize(list.SlotBytes() * kSlotsInRow);
        std::uint8_t* const to = list.Pixels(slot) + static_cast<std::size_t>(y) * list.LineBytes();
        const int column = slot % kSlotsInRow * list.width;
        if (bitmap.standard && list.width % 2 == 0) {
            std::memcpy(to, line + column / 2, list.LineBytes());
            return;
        }
        for (int x = 0; x < list.width; ++x) {
            const std::uint8_t colour = bitmap.StandardAt(line, column + x);
            to[x / 2] |= static_cast<std::uint8_t>(x % 2 == 0 ? colour << 4 : colour);
        }
    }

    static bool PassMask(ByteSource& source, const Head& head) {
        const auto mask = ReadBitmap(source, head);
        return mask && Skip(source, std::uint64_t{mask->stride} * static_cast<std::uint64_t>(mask->height));
    }

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

    /// A line of one slot to its place in a line of all slots, which is zero there.
    static void PutLine(const std::uint8_t* line, int width, char* target, int column) {
        if (column % 2 == 0 && width % 2 == 0) {
            std::memcpy(target + column / 2, line, static_cast<std::size_t>(width / 2));
            return;
        }
        for (int x = 0; x < width; ++x) {
            const int colour = x % 2 == 0 ? line[x / 2] >> 4 : line[x / 2] & 15;
            target[(column + x) / 2] =
                static_cast<char>(target[(column + x) / 2] | ((column + x) % 2 == 0 ? colour << 4 : colour));
        }
    }
};

std::size_t ImageList::StreamSize() const {
    return ImageListStream::Size(*this);
}

void ImageList::Write(std::string& out) const {
    ImageListStream::Write(*this, out);
}

std::unique_ptr<ImageList> ImageList::Read(ByteSource& source) {
    return ImageListStream::Read(source);
}

std::unique_ptr<ImageList> ImageList::Read(std::span<const std::uint8_t> bytes, std::size_t& used) {
    SpanSource source(bytes);
    auto list = ImageListStream::Read(source);
    if (list != nullptr)
        used = source.Position();
    return list;
}
