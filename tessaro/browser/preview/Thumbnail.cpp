#include "tessaro/browser/preview/Dib.h"
#include "tessaro/browser/preview/Ellipse.h"
#include "tessaro/browser/preview/Preview.h"
#include "tessaro/browser/preview/Stretch.h"
#include "tessaro/browser/preview/Truncate.h"

#include "tessaro/catalogue/Raster.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/Log.h"
#include "tessaro/host/ModuleState.h"

#include <algorithm>

namespace {

constexpr Rgb kRed{255, 0, 0, 0};
constexpr int kMarkRadius = 3;
constexpr int kMarkCross = 5;
constexpr std::int32_t kLastFramedType = 14; ///< previews up to this type have a frame of one pixel

/// Where the preview lands in the picture.
struct Placement {
    double factor = 0;
    PixelBox box;
};

Placement Place(int boxWidth, int boxHeight, const DibHeader& header) {
    const double width = header.width;
    const double height = header.height;
    Placement place;
    place.factor = boxHeight / height > boxWidth / width ? boxWidth / width : boxHeight / height;
    const std::int64_t drawWidth = Truncate(width * place.factor);
    const std::int64_t drawHeight = Truncate(height * place.factor);
    place.box = {boxWidth / 2 - Truncate(place.factor * width / 2), boxHeight / 2 - Truncate(place.factor * height / 2),
                 drawWidth, drawHeight};
    return place;
}

void DrawMarks(Picture& picture, const Placement& place, const MarkPoints& points, Rgb brush) {
    for (std::size_t i = 0; i + 1 < points.size(); i += 2) {
        const std::int64_t markX = place.box.left + Truncate(points[i] * place.factor);
        const double fromTop = static_cast<double>(picture.height - 2 * place.box.top) - points[i + 1] * place.factor;
        const std::int64_t markY = place.box.top + Truncate(fromTop);
        if (markX < -kMarkCross || markX > picture.width + kMarkCross || markY < -kMarkCross ||
            markY > picture.height + kMarkCross)
            continue;
        const int x = static_cast<int>(markX);
        const int y = static_cast<int>(markY);
        Ellipse(picture, x - kMarkRadius, y - kMarkRadius, x + kMarkRadius, y + kMarkRadius, kRed, brush);
        Line(picture, x - kMarkCross, y - kMarkCross, x + kMarkCross, y + kMarkCross, kRed);
        Line(picture, x + kMarkCross, y - kMarkCross, x - kMarkCross, y + kMarkCross, kRed);
    }
}

Picture DrawThumbnail(int boxWidth, int boxHeight, std::int32_t fileType, const PreviewBytes& preview,
                      const MarkPoints& points) {
    const Rgb back = backColor;
    Picture picture(boxWidth, boxHeight);
    Rectangle(picture, 0, 0, boxWidth, boxHeight, back, back);

    const DibHeader header = ReadDibHeader(preview);
    const Placement place = Place(boxWidth, boxHeight, header);
    PixelBox source{0, 0, header.width, header.height};
    if (fileType <= kLastFramedType)
        source = {1, 1, source.width - 2, source.height - 2};
    const StretchMode mode = foreColor.load().red != 0 ? StretchMode::WhiteOnBlack : StretchMode::BlackOnWhite;
    StretchDib(picture, place.box, preview, header.PixelOffset(), source, mode);
    DrawMarks(picture, place, points, back);
    return picture;
}

} // namespace

Thumbnails DrawThumbnails(bool withLarge, std::int32_t fileType, PreviewBytes& preview, bool isPng,
                          const MarkPoints& points) {
    Thumbnails pictures;
    if (!isPng)
        AdaptPalette(preview);
    if (withLarge) {
        if (fileType > kLastFramedType && !isPng && ReadDibHeader(preview).colours == 0)
            SetDibColours(preview, 256);
        pictures.large = DrawThumbnail(kLargeWidth, kLargeHeight, fileType, preview, points);
    }
    pictures.small = DrawThumbnail(kSmallWidth, kSmallHeight, fileType, preview, points);
    return pictures;
}

namespace {

/// The new slot in both lists; the placeholder's where one of them is full. The lists stay in step, whatever happens.
int AddPictures(Directory& directory, const SlotPictures& pictures) {
    if (pictures.large && directory.LargeForWrite().Add(*pictures.large) < 0)
        return 0;
    try {
        return std::max(directory.SmallForWrite().Add(pictures.small), 0);
    } catch (...) {
        if (pictures.large)
            directory.LargeForWrite().RemoveLast();
        throw;
    }
}

} // namespace

void StoreThumbnails(Directory& directory, Block& block, const SlotPictures& pictures) {
    if (block.imageIndex == 0) {
        block.imageIndex = AddPictures(directory, pictures);
        if (block.imageIndex == 0)
            Log(L"The picture lists of %s are full, %s keeps the placeholder\n", directory.path.c_str(),
                block.name.c_str());
        return;
    }
    if (pictures.large)
        directory.LargeForWrite().Replace(block.imageIndex, *pictures.large);
    directory.SmallForWrite().Replace(block.imageIndex, pictures.small);
    BrowserWindow* window = theBlockDlg;
    if (window != nullptr && currentDirectory == &directory && block.listIndex < window->BlockRowCount())
        window->UpdateBlockRow(block.listIndex);
}

void RenderThumbnail(Directory& directory, Block& block, PreviewBytes& preview, bool isPng, const MarkPoints& points) {
    StoreThumbnails(directory, block,
                    SlotPictures(DrawThumbnails(directory.useLargeImages, block.fileType, preview, isPng, points)));
}
