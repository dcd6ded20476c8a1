#pragma once

#include "tessaro/browser/preview/DeviceContext.h"

/// Paints into a picture by the platform's drawing rules, pixel for pixel. Pens have a width of one pixel. The picture
/// outlives the context.
class PictureContext : public DeviceContext {
public:
    explicit PictureContext(Picture& target) : picture(target) {}

    Pen SelectPen(const Pen& selected) override;
    Rgb SelectBrush(Rgb selected) override;
    void SetStretchMode(StretchMode selected) override { mode = selected; }
    void Rectangle(const DeviceRect& place) override;
    void Ellipse(const DeviceRect& place) override;
    void Line(std::int64_t fromX, std::int64_t fromY, std::int64_t toX, std::int64_t toY) override;
    void StretchDib(const PixelBox& destination, const PreviewBytes& preview, std::uint64_t pixelOffset,
                    const PixelBox& source) override;
    void StretchPicture(const PixelBox& destination, const Picture& from, const PixelBox& source) override;

private:
    Picture& picture;
    Pen pen;
    Rgb brush{255, 255, 255, 0};
    StretchMode mode = StretchMode::BlackOnWhite;
};
