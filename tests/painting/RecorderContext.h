#pragma once

#include "tessaro/browser/painting/PrinterContext.h"

#include <string>
#include <vector>

namespace tests {

/// Writes down what is drawn, one line each with all that it is drawn with:
///
///     start doc "Tessaro Print", start page, end page, end doc
///     rectangle 1,1,2400,100 pen 000000/5 brush c0c0c0
///     ellipse L,T,R,B pen .. brush .., line X,Y,X,Y pen ..
///     dib X,Y,W,H from X,Y,W,H at OFFSET mode 1
///     picture X,Y,W,H from X,Y,W,H of WxH mode 1
///     text "words" L,T,R,B flags 2064 font 110 Arial colour 000000 on ffffff (or: transparent)
///
/// A new page forgets the font, as a printer may.
class RecorderContext : public PrinterContext {
public:
    int pageWidth = 0, pageHeight = 0, resolution = 0;
    int lineHeight = 10;       ///< of any text and font
    int versionHeight = 10;    ///< of `versionText` as it is measured
    bool failsToStart = false; ///< with the error 13
    std::vector<std::string> lines;
    std::vector<Picture> pictures; ///< of the lines "picture", in their order
    DeviceFont font{90, L"System"};

    /// Those that begin so.
    std::vector<std::string> linesOf(const std::string& begin) const;
    /// Pens, brushes, colours, mode of the background and font are those of a fresh context.
    bool isAsFresh() const;

    int PageWidth() const override { return pageWidth; }
    int PageHeight() const override { return pageHeight; }
    int Resolution() const override { return resolution; }
    int StartDoc(const std::wstring& name) override;
    long LastError() const override { return failsToStart ? 13 : 0; }
    void StartPage() override;
    void EndPage() override { lines.emplace_back("end page"); }
    void EndDoc() override { lines.emplace_back("end doc"); }
    DeviceFont SelectFont(const DeviceFont& selected) override;
    int LineHeight() const override { return lineHeight; }
    TextExtent Measure(const std::wstring& text) const override;
    Rgb SetTextColour(Rgb colour) override;
    Rgb SetBackColour(Rgb colour) override;
    bool SetTransparent(bool selected) override;
    void DrawText(const std::wstring& text, const DeviceRect& place, unsigned flags) override;
    Pen SelectPen(const Pen& selected) override;
    Rgb SelectBrush(Rgb selected) override;
    void SetStretchMode(StretchMode selected) override { mode = selected; }
    void Rectangle(const DeviceRect& place) override;
    void Ellipse(const DeviceRect& place) override;
    void Line(std::int64_t fromX, std::int64_t fromY, std::int64_t toX, std::int64_t toY) override;
    void StretchDib(const PixelBox& destination, const PreviewBytes& preview, std::uint64_t pixelOffset,
                    const PixelBox& source) override;
    void StretchPicture(const PixelBox& destination, const Picture& picture, const PixelBox& source) override;

private:
    Pen pen;
    Rgb brush{255, 255, 255, 0}, textColour, backColour{255, 255, 255, 0};
    bool transparent = false;
    StretchMode mode = StretchMode::BlackOnWhite;
};

std::string hex(Rgb colour);

} // namespace tests
