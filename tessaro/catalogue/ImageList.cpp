#include "tessaro/catalogue/ImageList.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace {

constexpr int kMostSlots = std::numeric_limits<std::uint16_t>::max();
constexpr int kMostPixels = 4096;
/// A stream may claim any growth, but room takes bytes once it is written.
constexpr int kMostGrowth = 256;

} // namespace

const std::array<std::array<std::uint8_t, 3>, 16> kStandardColours = {{{0x00, 0x00, 0x00},
                                                                       {0x80, 0x00, 0x00},
                                                                       {0x00, 0x80, 0x00},
                                                                       {0x80, 0x80, 0x00},
                                                                       {0x00, 0x00, 0x80},
                                                                       {0x80, 0x00, 0x80},
                                                                       {0x00, 0x80, 0x80},
                                                                       {0xC0, 0xC0, 0xC0},
                                                                       {0x80, 0x80, 0x80},
                                                                       {0xFF, 0x00, 0x00},
                                                                       {0x00, 0xFF, 0x00},
                                                                       {0xFF, 0xFF, 0x00},
                                                                       {0x00, 0x00, 0xFF},
                                                                       {0xFF, 0x00, 0xFF},
                                                                       {0x00, 0xFF, 0xFF},
                                                                       {0xFF, 0xFF, 0xFF}}};

std::uint8_t NearestStandardColour(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    std::uint8_t nearest = 0;
    int least = std::numeric_limits<int>::max();
    for (std::size_t i = 0; i < kStandardColours.size(); ++i) {
        const int r = red - kStandardColours[i][0], g = green - kStandardColours[i][1],
                  b = blue - kStandardColours[i][2];
        const int distance = r * r + g * g + b * b;
        if (distance < least) {
            least = distance;
            nearest = static_cast<std::uint8_t>(i);
        }
    }
    return nearest;
}

ImageList::ImageList(int pictureWidth, int pictureHeight, int initial, int growth)
    : width(pictureWidth), height(pictureHeight), grow((growth + 3) / 4 * 4), maximum(initial + 1) {
    if (width < 1 || height < 1 || width > kMostPixels || height > kMostPixels || initial < 0 || growth < 0 ||
        initial >= kMostSlots || growth > kMostSlots - 4)
        throw std::invalid_argument("size of an image list");
}

std::uint8_t* ImageList::Pixels(int slot) {
    return rows[static_cast<std::size_t>(slot / kSlotsInRow)].data() +
           SlotBytes() * static_cast<std::size_t>(slot % kSlotsInRow);
}

const std::uint8_t* ImageList::Pixels(int slot) const {
    return rows[static_cast<std::size_t>(slot / kSlotsInRow)].data() +
           SlotBytes() * static_cast<std::size_t>(slot % kSlotsInRow);
}

int ImageList::Add(const SlotPicture& picture) {
    if (count + 1 >= maximum) {
        maximum = std::min(maximum + std::min(grow, kMostGrowth) + 1, kMostSlots);
        if (count >= maximum)
            return -1;
    }
    if (count % kSlotsInRow == 0)
        rows.emplace_back(SlotBytes() * kSlotsInRow);
    Store(count, picture);
    return count++;
}

void ImageList::RemoveLast() {
    if (count == 0)
        return;
    --count;
    if (count % kSlotsInRow == 0)
        rows.pop_back();
    else
        std::fill_n(Pixels(count), SlotBytes(), std::uint8_t{0});
}

bool ImageList::Replace(int slot, const SlotPicture& picture) {
    if (slot < 0 || slot >= count)
        return false;
    Store(slot, picture);
    return true;
}

void ImageList::Store(int slot, const SlotPicture& picture) {
    std::uint8_t* line = Pixels(slot);
    std::fill_n(line, SlotBytes(), std::uint8_t{0});
    const int columns = std::min(width, picture.width);
    const auto bytes = static_cast<std::size_t>((columns + 1) / 2);
    const std::uint8_t* from = picture.bytes.data();
    for (int y = 0; y < std::min(height, picture.height); ++y) {
        std::copy_n(from, bytes, line);
        if (columns % 2 != 0)
            line[bytes - 1] &= 0xF0;
        from += picture.LineBytes();
        line += LineBytes();
    }
}

Picture ImageList::Draw(int slot) const {
    if (slot < 0 || slot >= count)
        return {};
    Picture picture(width, height);
    std::uint8_t* pixel = picture.pixels.data();
    const std::uint8_t* line = Pixels(slot);
    for (int y = 0; y < height; ++y, line += LineBytes())
        for (int x = 0; x < width; ++x, pixel += 3) {
            const auto& colour = kStandardColours[x % 2 == 0 ? line[x / 2] >> 4 : line[x / 2] & 15];
            std::copy(colour.begin(), colour.end(), pixel);
        }
    return picture;
}
