#include "tessaro/browser/painting/PaintPreview.h"

#include "tessaro/browser/preview/Dib.h"
#include "tessaro/browser/preview/Truncate.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/File.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/reading/DrawingType.h"
#include "tessaro/reading/Examine.h"
#include "tessaro/reading/PreviewSection.h"
#include "tessaro/reading/SiblingFiles.h"

namespace {

constexpr Rgb kRed{255, 0, 0, 0};
constexpr std::int64_t kFrameWidth = 256, kFrameHeight = 188;
constexpr std::int64_t kFullColourTable = 256;
constexpr std::int32_t kFirstUnframedType = 15; ///< previews below this type have a frame of one pixel

std::optional<PreviewBytes> ReadFromDrawing(const std::wstring& path, bool& isPng) {
    platform::File drawing;
    if (!drawing.Open(path, platform::File::modeRead))
        return std::nullopt;
    const PreviewSection section = ReadPreviewSection(drawing);
    isPng = section.isPng;
    return ReadSectionImage(drawing, section);
}

std::optional<PreviewBytes> ReadFromBitmap(const std::wstring& path) {
    const auto bitmapPath = FindBitmapFile(path);
    platform::File bitmap;
    if (!bitmapPath || !bitmap.Open(*bitmapPath, platform::File::modeRead))
        return std::nullopt;
    return ReadBitmapFile(bitmap);
}

std::optional<PreviewBytes> ReadPreview(const std::wstring& path, std::int32_t fileType, bool& isPng) try {
    return fileType >= kFirstTypeWithImages ? ReadFromDrawing(path, isPng) : ReadFromBitmap(path);
} catch (const platform::FileException&) {
    return std::nullopt; // The file closes with its object; the caller falls back on the list's picture.
}

struct MarkSize {
    std::int64_t markRadius = 0;
    std::int64_t crossHalf = 0;
};

void DrawMark(DeviceContext& dc, std::int64_t markX, std::int64_t markY, const MarkSize& size) {
    dc.Ellipse({markX - size.markRadius, markY - size.markRadius, markX + size.markRadius, markY + size.markRadius});
    dc.Line(markX - size.crossHalf, markY - size.crossHalf, markX + size.crossHalf, markY + size.crossHalf);
    dc.Line(markX + size.crossHalf, markY - size.crossHalf, markX - size.crossHalf, markY + size.crossHalf);
}

StretchMode ScreenMode() {
    return foreColor.load().red != 0 ? StretchMode::WhiteOnBlack : StretchMode::BlackOnWhite;
}

} // namespace

std::optional<LoadedPreview> LoadPreview(const Directory& directory, Block& block) {
    const std::wstring told = platform::Join(directory.path, block.name + L".dwg");
    const std::wstring path = platform::FindPath(told).value_or(told);
    LoadedPreview loaded;
    auto bytes = ReadPreview(path, block.fileType, loaded.isPng);
    if (!bytes)
        return std::nullopt;
    loaded.bytes = std::move(*bytes);
    LoadDrawing(path, block, directory.showInsPts, &loaded.bytes, loaded.points);
    return loaded;
}

void DrawPreview(DeviceContext& dc, LoadedPreview& preview, std::int32_t fileType, std::int64_t x, std::int64_t y,
                 std::int64_t scale, bool forScreen) {
    const MarkSize mark = forScreen ? MarkSize{4 * scale, 8 * scale} : MarkSize{6 * scale, 10 * scale};
    std::optional<Rgb> oldBrush;
    if (forScreen) {
        oldBrush = dc.SelectBrush(backColor);
        dc.SetStretchMode(ScreenMode());
        if (!preview.isPng)
            AdaptPalette(preview.bytes);
    } else {
        dc.SetStretchMode(StretchMode::BlackOnWhite);
    }
    dc.Rectangle({x, y, x + kFrameWidth * scale + 3, y + kFrameHeight * scale + 3});

    const DibHeader header = ReadDibHeader(preview.bytes);
    const std::int64_t width = header.width, height = header.height;
    const std::int64_t imageX = x + (kFrameWidth * scale / 2 - (width * scale) / 2) + 1;
    const std::int64_t imageY = y + (kFrameHeight * scale / 2 - (height * scale) / 2) + 1;
    const std::uint64_t entries = header.colours != 0 ? header.colours : kFullColourTable;
    PixelBox source{0, 0, width, height};
    if (fileType < kFirstUnframedType)
        source = {1, 1, width - 2, height - 2};
    dc.StretchDib({imageX, imageY, width * scale, height * scale}, preview.bytes, header.size + entries * 4, source);

    const Pen oldPen = dc.SelectPen({kRed, 1});
    for (std::size_t i = 0; i + 1 < preview.points.size(); i += 2) {
        const auto factor = static_cast<double>(scale);
        const double fromTop = static_cast<double>(height) - preview.points[i + 1];
        DrawMark(dc, imageX + Truncate(preview.points[i] * factor), imageY + Truncate(fromTop * factor), mark);
    }
    dc.SelectPen(oldPen);
    if (oldBrush)
        dc.SelectBrush(*oldBrush);
}

bool PaintPreview(const Directory& directory, Block& block, DeviceContext& dc, std::int64_t x, std::int64_t y,
                  std::int64_t scale, bool forScreen) {
    auto preview = LoadPreview(directory, block);
    if (!preview)
        return false;
    DrawPreview(dc, *preview, block.fileType, x, y, scale, forScreen);
    return true;
}
