#pragma once

#include "tessaro/browser/painting/PrinterContext.h"

#include <QPainter>

class QPrinter;

/// Prints through Qt: on a printer, or into a PDF file where the printer is set so. The pixels are those of the
/// printer's resolution. What the platform would clip to its pixels is drawn as outlines here, so that a sheet stays
/// sharp at any size. The printer outlives the context; a document that was not ended is ended with it.
class QtPrinterContext : public PrinterContext {
public:
    explicit QtPrinterContext(QPrinter& device);

    int PageWidth() const override;
    int PageHeight() const override;
    int Resolution() const override;

    int StartDoc(const std::wstring& name) override;
    long LastError() const override { return lastError; }
    void StartPage() override;
    void EndPage() override {}
    void EndDoc() override;

    DeviceFont SelectFont(const DeviceFont& selected) override;
    int LineHeight() const override;
    TextExtent Measure(const std::wstring& text) const override;
    Rgb SetTextColour(Rgb colour) override;
    Rgb SetBackColour(Rgb colour) override;
    bool SetTransparent(bool transparent) override;
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
    QFont FontOf(const DeviceFont& wanted) const;
    void UsePen();

    QPrinter& printer;
    QPainter painter;
    long lastError = 0;
    bool hasPage = false;
    DeviceFont font;
    Pen pen;
    Rgb brush{255, 255, 255, 0}, textColour, backColour{255, 255, 255, 0};
    bool isTransparent = false;
    StretchMode mode = StretchMode::BlackOnWhite;
};
