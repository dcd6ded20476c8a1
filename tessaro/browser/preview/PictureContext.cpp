#include "tessaro/browser/preview/PictureContext.h"

#include "tessaro/browser/preview/Ellipse.h"
#include "tessaro/catalogue/Raster.h"

#include <algorithm>
#include <utility>

namespace {

/// Far outside of any picture, and small enough to count with.
constexpr std::int64_t kFarAway = 1 << 20;

int Near(std::int64_t coordinate) {
    return static_cast<int>(std::clamp(coordinate, -kFarAway, kFarAway));
}

bool IsNear(std::int64_t coordinate) {
    return coordinate >= -kFarAway && coordinate <= kFarAway;
}

} // namespace

Pen PictureContext::SelectPen(const Pen& selected) {
    return std::exchange(pen, selected);
}

Rgb PictureContext::SelectBrush(Rgb selected) {
    return std::exchange(brush, selected);
}

void PictureContext::Rectangle(const DeviceRect& place) {
    ::Rectangle(picture, Near(place.left), Near(place.top), Near(place.right), Near(place.bottom), pen.colour, brush);
}

void PictureContext::Ellipse(const DeviceRect& place) {
    if (IsNear(place.left) && IsNear(place.top) && IsNear(place.right) && IsNear(place.bottom))
        ::Ellipse(picture, static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right),
                  static_cast<int>(place.bottom), pen.colour, brush);
}

void PictureContext::Line(std::int64_t fromX, std::int64_t fromY, std::int64_t toX, std::int64_t toY) {
    if (IsNear(fromX) && IsNear(fromY) && IsNear(toX) && IsNear(toY))
        ::Line(picture, static_cast<int>(fromX), static_cast<int>(fromY), static_cast<int>(toX), static_cast<int>(toY),
               pen.colour);
}

void PictureContext::StretchDib(const PixelBox& destination, const PreviewBytes& preview, std::uint64_t pixelOffset,
                                const PixelBox& source) {
    ::StretchDib(picture, destination, preview, pixelOffset, source, mode);
}

void PictureContext::StretchPicture(const PixelBox& destination, const Picture& from, const PixelBox& source) {
    ::StretchPicture(picture, destination, from, source, mode);
}
