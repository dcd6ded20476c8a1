#include "tessaro/catalogue/ImageList.h"

#include <cstring>

namespace {

constexpr int kGroup = 8; ///< pixels that are compared with their neighbours at once
constexpr std::size_t kGroupBytes = kGroup * 3;

/// The nearest standard colours, of which a picture asks for the same few again and again.
class NearestColours {
public:
    std::uint8_t Of(const std::uint8_t* pixel) {
        const std::uint32_t colour = pixel[0] | std::uint32_t{pixel[1]} << 8 | std::uint32_t{pixel[2]} << 16;
        Known& known = table[(colour * 2654435761u) >> 24];
        if (!known.valid || known.colour != colour)
            known = {colour, NearestStandardColour(pixel[0], pixel[1], pixel[2]), true};
        return known.nearest;
    }

private:
    struct Known {
        std::uint32_t colour = 0;
        std::uint8_t nearest = 0;
        bool valid = false;
    };
    std::array<Known, 256> table{};
};

/// One line of pixels to two pixels a byte.
void ReduceLine(NearestColours& colours, const std::uint8_t* pixel, int width, std::uint8_t* out) {
    int x = 0;
    while (x + 1 < width) {
        if (x >= kGroup && x + kGroup <= width && std::memcmp(pixel, pixel - kGroupBytes, kGroupBytes) == 0) {
            std::memcpy(out, out - kGroup / 2, kGroup / 2);
            x += kGroup;
            pixel += kGroupBytes;
            out += kGroup / 2;
            continue;
        }
        *out++ = static_cast<std::uint8_t>(colours.Of(pixel) << 4 | colours.Of(pixel + 3));
        x += 2;
        pixel += 6;
    }
    if (x < width)
        *out = static_cast<std::uint8_t>(colours.Of(pixel) << 4);
}

} // namespace

SlotPicture Reduced(const Picture& picture) {
    SlotPicture reduced{picture.width, picture.height, {}};
    const std::size_t lineBytes = reduced.LineBytes(), pixelBytes = static_cast<std::size_t>(picture.width) * 3;
    reduced.bytes.resize(lineBytes * static_cast<std::size_t>(picture.height));
    NearestColours colours;
    const std::uint8_t* pixels = picture.pixels.data();
    std::uint8_t* out = reduced.bytes.data();
    for (int y = 0; y < picture.height; ++y, pixels += pixelBytes, out += lineBytes) {
        // Much of a picture is background.
        if (y > 0 && std::memcmp(pixels, pixels - pixelBytes, pixelBytes) == 0)
            std::memcpy(out, out - lineBytes, lineBytes);
        else
            ReduceLine(colours, pixels, picture.width, out);
    }
    return reduced;
}
