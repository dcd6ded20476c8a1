#pragma once

#include "tessaro/browser/preview/Preview.h"
#include "tessaro/browser/preview/Stretch.h"
#include "tessaro/host/ModuleState.h"

#include <cstdint>

/// A solid pen; a width of 0 is one device pixel.
struct Pen {
    Rgb colour;
    int width = 1;
    bool operator==(const Pen&) const = default;
};

/// Corners of a rectangle in device pixels; right and bottom are excluded.
struct DeviceRect {
    std::int64_t left = 0;
    std::int64_t top = 0;
    std::int64_t right = 0;
    std::int64_t bottom = 0;
    bool operator==(const DeviceRect&) const = default;
};

/// The few operations that a painted preview takes from its device, which counts in whole pixels from the top left
/// corner. Coordinates may be any: what lies outside of the device is not seen.
///
/// A fresh context has a black pen of width 1, a white brush and the mode BlackOnWhite. Main thread.
class DeviceContext {
public:
    virtual ~DeviceContext() = default;

    /// Gives the pen that was selected before.
    virtual Pen SelectPen(const Pen& pen) = 0;
    /// Gives the brush that was selected before.
    virtual Rgb SelectBrush(Rgb brush) = 0;
    virtual void SetStretchMode(StretchMode mode) = 0;

    /// Outlined by the pen, filled by the brush.
    virtual void Rectangle(const DeviceRect& place) = 0;
    /// Outlined by the pen, filled by the brush.
    virtual void Ellipse(const DeviceRect& place) = 0;
    /// Leaves out its last pixel.
    virtual void Line(std::int64_t fromX, std::int64_t fromY, std::int64_t toX, std::int64_t toY) = 0;
    /// As the function of that name, with the selected mode.
    virtual void StretchDib(const PixelBox& destination, const PreviewBytes& preview, std::uint64_t pixelOffset,
                            const PixelBox& source) = 0;
    /// The source box of a picture into the destination box. What of the source lies outside of the picture leaves its
    /// destination as it is.
    virtual void StretchPicture(const PixelBox& destination, const Picture& picture, const PixelBox& source) = 0;
};
