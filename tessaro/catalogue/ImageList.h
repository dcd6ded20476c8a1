#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

/// Pixels of one picture: three bytes red, green, blue, top row first, no padding.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    Picture() = default;
    Picture(int pictureWidth, int pictureHeight)
        : width(pictureWidth), height(pictureHeight),
          pixels(static_cast<std::size_t>(pictureWidth) * static_cast<std::size_t>(pictureHeight) * 3) {}
    bool operator==(const Picture&) const = default;
};

/// A picture as a slot holds it: two pixels a byte, left one high, top line first, numbers of standard colours.
struct SlotPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;

    std::size_t LineBytes() const { return static_cast<std::size_t>((width + 1) / 2); }
    bool operator==(const SlotPicture&) const = default;
};
/// Every colour replaced by the nearest of the sixteen. Any thread.
SlotPicture Reduced(const Picture& picture);

/// The sixteen standard colours in the platform's order: red, green, blue.
extern const std::array<std::array<std::uint8_t, 3>, 16> kStandardColours;
/// Number of the nearest of the sixteen by the sum of squared differences, the first on a tie.
std::uint8_t NearestStandardColour(std::uint8_t red, std::uint8_t green, std::uint8_t blue);

/// Bytes in their order, from wherever they come.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    /// That many bytes, which stay until the next call; none where fewer are left. Asked for at most 64 KiB at once.
    virtual std::span<const std::uint8_t> Take(std::size_t count) = 0;
    /// No more than this is left; less may be.
    virtual std::uint64_t AtMost() const = 0;
};

/// Pictures of one size in numbered slots from 0, four bits a pixel with the sixteen standard colours: a colour that is
/// added is replaced by the nearest of them.
///
/// Reads and writes the platform's published image-list stream. Threads: belongs to the owner of its Directory; the
/// const operations may run beside each other.
class ImageList {
public:
    /// `growth` as given; the stream shows it rounded up to a multiple of four, and at most 256 slots are added at
    /// once. Sizes are 1 to 4096.
    ImageList(int pictureWidth, int pictureHeight, int initial, int growth);

    int Width() const { return width; }
    int Height() const { return height; }
    int Count() const { return count; }
    /// Gives the new slot, or -1 where the list is full: its stream counts with 16 bits. A picture of another size is
    /// cut or padded with black.
    int Add(const SlotPicture& picture);
    int Add(const Picture& picture) { return Add(Reduced(picture)); }
    /// Takes the last slot back; the room that was made for it stays.
    void RemoveLast();
    /// False for a slot that is not there.
    bool Replace(int slot, const SlotPicture& picture);
    bool Replace(int slot, const Picture& picture) { return Replace(slot, Reduced(picture)); }
    /// The slot drawn back; an empty picture for a slot that is not there.
    Picture Draw(int slot) const;

    /// Appends the stream.
    void Write(std::string& out) const;
    std::size_t StreamSize() const;
    /// Reads one list from the front of the bytes and says in `used` where it ends, from the heads alone. Accepts 1, 4,
    /// 8, 16, 24 and 32 bits a pixel, which become four; a mask is passed over. Null where the bytes are no list or too
    /// short.
    static std::unique_ptr<ImageList> Read(std::span<const std::uint8_t> bytes, std::size_t& used);
    /// The same from a source, which is left behind the list; where null is given, somewhere. Memory follows the bytes
    /// that are there.
    static std::unique_ptr<ImageList> Read(ByteSource& source);

    /// Size, slots and room for growth are the same.
    bool operator==(const ImageList& other) const = default;

private:
    ImageList() = default;
    static constexpr int kSlotsInRow = 4;
    std::size_t LineBytes() const { return static_cast<std::size_t>((width + 1) / 2); }
    std::size_t SlotBytes() const { return LineBytes() * static_cast<std::size_t>(height); }
    std::uint8_t* Pixels(int slot);
    const std::uint8_t* Pixels(int slot) const;
    void Store(int slot, const SlotPicture& picture);

    int width = 0, height = 0;
    int grow = 0;    ///< as the stream shows it
    int maximum = 0; ///< slots that the stream has room for
    int count = 0;
    /// Two pixels a byte, left one high, top line first; slot after slot, four slots a row, zero where none is yet.
    std::vector<std::vector<std::uint8_t>> rows;

    friend class ImageListStream;
};
