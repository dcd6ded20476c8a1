#include "tessaro/catalogue/Raster.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

std::size_t Offset(const Picture& picture, std::int64_t x, std::int64_t y) {
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) + static_cast<std::size_t>(x)) * 3;
}

bool Inside(const Picture& picture, std::int64_t x, std::int64_t y) {
    return x >= 0 && y >= 0 && x < picture.width && y < picture.height;
}

void Put(Picture& picture, std::int64_t x, std::int64_t y, Rgb colour) {
    if (!Inside(picture, x, y))
        return;
    std::uint8_t* pixel = picture.pixels.data() + Offset(picture, x, y);
    pixel[0] = colour.red;
    pixel[1] = colour.green;
    pixel[2] = colour.blue;
}

/// Holds the product of two distances, each of up to 33 bits.
__extension__ using Product = __int128;

/// `step * rise / run` rounded to the nearest whole number, halves downward. `run` is above 0.
std::int64_t RoundHalfDown(std::int64_t step, std::int64_t rise, std::int64_t run) {
    const Product numerator = 2 * Product{step} * rise + run - 1;
    const Product denominator = 2 * Product{run};
    return static_cast<std::int64_t>(numerator >= 0 ? numerator / denominator
                                                    : -((-numerator + denominator - 1) / denominator));
}

/// Steps along the longer axis from `from` (included) to `to` (left out) that can meet the picture's `length` pixels.
std::pair<std::int64_t, std::int64_t> StepsWithin(std::int64_t from, std::int64_t to, std::int64_t length) {
    const std::int64_t steps = std::abs(to - from);
    if (to >= from)
        return {std::max<std::int64_t>(0, -from), std::min(steps, length - from)};
    return {std::max<std::int64_t>(0, from - length + 1), std::min(steps, from + 1)};
}

} // namespace

void SetPixel(Picture& picture, int x, int y, Rgb colour) {
    Put(picture, x, y, colour);
}

Rgb PixelAt(const Picture& picture, int x, int y) {
    if (!Inside(picture, x, y))
        return {};
    const std::uint8_t* pixel = picture.pixels.data() + Offset(picture, x, y);
    return {pixel[0], pixel[1], pixel[2], 0};
}

void FillRectangle(Picture& picture, int left, int top, int right, int bottom, Rgb brush) {
    for (int y = std::max(top, 0); y < std::min(bottom, picture.height); ++y)
        for (int x = std::max(left, 0); x < std::min(right, picture.width); ++x)
            Put(picture, x, y, brush);
}

void Rectangle(Picture& picture, int left, int top, int right, int bottom, Rgb pen, Rgb brush) {
    if (left > right)
        std::swap(left, right);
    if (top > bottom)
        std::swap(top, bottom);
    if (left == right || top == bottom)
        return;
    FillRectangle(picture, left, top, right, bottom, brush);
    for (int x = std::max(left, 0); x < std::min(right, picture.width); ++x) {
        Put(picture, x, top, pen);
        Put(picture, x, std::int64_t{bottom} - 1, pen);
    }
    for (int y = std::max(top, 0); y < std::min(bottom, picture.height); ++y) {
        Put(picture, left, y, pen);
        Put(picture, std::int64_t{right} - 1, y, pen);
    }
}

void Line(Picture& picture, int fromX, int fromY, int toX, int toY, Rgb pen) {
    const std::int64_t width = std::int64_t{toX} - fromX, height = std::int64_t{toY} - fromY;
    if (std::abs(width) >= std::abs(height)) {
        const auto [first, last] = StepsWithin(fromX, toX, picture.width);
        for (std::int64_t step = first; step < last; ++step)
            Put(picture, fromX + (width < 0 ? -step : step), fromY + RoundHalfDown(step, height, std::abs(width)), pen);
    } else {
        const auto [first, last] = StepsWithin(fromY, toY, picture.height);
        for (std::int64_t step = first; step < last; ++step)
            Put(picture, fromX + RoundHalfDown(step, width, std::abs(height)), fromY + (height < 0 ? -step : step),
                pen);
    }
}
