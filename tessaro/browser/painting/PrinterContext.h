#pragma once

#include "tessaro/browser/preview/DeviceContext.h"

#include <string>

/// A font by its size in tenths of a point and its face; the default is the device's own.
struct DeviceFont {
    int tenthsOfPoint = 0;
    std::wstring face;
    bool operator==(const DeviceFont&) const = default;
};

/// Height of such a font's characters in pixels of a device with that many dots per inch.
constexpr int FontPixels(int tenthsOfPoint, int resolution) {
    return tenthsOfPoint * resolution / 720;
}

struct TextExtent {
    int width = 0;
    int height = 0;
};

/// How a text stands in its rectangle, by the platform's numbers, which are added. Without any of them it stands in one
/// or more lines at the upper left. What does not fit is cut off at the rectangle.
enum TextFlag : unsigned {
    kTextCentre = 0x1,
    kTextRight = 0x2,
    kTextBottom = 0x8, ///< single lines only
    kTextWordBreak = 0x10,
    kTextSingleLine = 0x20,
    kTextNoPrefix = 0x800, ///< an ampersand stands for itself; there is no other way
};

/// A printer, or a file that takes its place. A document is begun, gets its pages one after the other, and is ended;
/// all drawing happens on a page. Main thread.
class PrinterContext : public DeviceContext {
public:
    // The printable area of a page in pixels, and the dots per inch.
    virtual int PageWidth() const = 0;
    virtual int PageHeight() const = 0;
    virtual int Resolution() const = 0;

    /// Above 0, or -1 where the document can't be begun; LastError then tells the system's reason.
    virtual int StartDoc(const std::wstring& name) = 0;
    virtual long LastError() const = 0;
    virtual void StartPage() = 0;
    virtual void EndPage() = 0;
    virtual void EndDoc() = 0;

    /// Gives the font that was selected before. A new page forgets the selection.
    virtual DeviceFont SelectFont(const DeviceFont& font) = 0;
    /// Of the selected font: height of a line.
    virtual int LineHeight() const = 0;
    virtual TextExtent Measure(const std::wstring& text) const = 0;

    // Each gives the value before. A fresh context writes black on white, and paints the background of its texts.
    virtual Rgb SetTextColour(Rgb colour) = 0;
    virtual Rgb SetBackColour(Rgb colour) = 0;
    virtual bool SetTransparent(bool transparent) = 0;
    /// The flags are a sum of TextFlag.
    virtual void DrawText(const std::wstring& text, const DeviceRect& place, unsigned flags) = 0;
};
