#pragma once

#include "tessaro/host/ModuleState.h"

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

/// Pictures of one size in numbered slots from 0, four bits a pixel with the sixteen standard colours: a colour that is
/// added is replaced by the nearest of the sixteen (sum of squared differences, the first on a tie).
///
/// Reads and writes the platform's published image-list stream. Threads: belongs to the owner of its Directory; the
/// const operations may run beside each other.
class ImageList {
public:
    /// `growth` as given; the stream shows it rounded up to a multiple of four.
    ImageList(int pictureWidth, int pictureHeight, int initial, int growth);

    int Width() const;
    int Height() const;
    int Count() const;
    /// Gives the new slot. A picture of another size is cut or padded with black.
    int Add(const Picture& picture);
    /// False for a slot that is not there.
    bool Replace(int slot, const Picture& picture);
    /// The slot drawn back; an empty picture for a slot that is not there.
    Picture Draw(int slot) const;

    /// Appends the stream.
    void Write(std::string& out) const;
    /// Reads one list from the front of the bytes and says in `used` where it ends, from the heads alone. Accepts 1, 4,
    /// 8, 16, 24 and 32 bits a pixel. Null where the bytes are no list or too short.
    static std::unique_ptr<ImageList> Read(std::span<const std::uint8_t> bytes, std::size_t& used);

    bool operator==(const ImageList& other) const;

private:
    int width, height, grow, maximum, count = 0;
    std::vector<std::uint8_t> indices; ///< one byte a pixel, slot after slot, top row first

    friend class ImageListStream;
};
