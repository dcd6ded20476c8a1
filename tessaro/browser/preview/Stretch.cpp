#include "tessaro/browser/preview/Stretch.h"

#include <algorithm>
#include <vector>

namespace {

constexpr std::uint32_t kAllBits = 0xffffff;

/// Colours that meet in one pixel.
class Meeting {
public:
    explicit Meeting(StretchMode stretchMode)
        : mode(stretchMode), colour(stretchMode == StretchMode::BlackOnWhite ? kAllBits : 0) {}
    void Add(std::uint32_t other) {
        if (mode == StretchMode::BlackOnWhite)
            colour &= other;
        else
            colour |= other;
    }
    /// No further colour can change it.
    bool IsSettled() const { return colour == (mode == StretchMode::BlackOnWhite ? 0 : kAllBits); }
    std::uint32_t Colour() const { return colour; }

private:
    StretchMode mode;
    std::uint32_t colour;
};

void PutPixel(Picture& picture, std::int64_t x, std::int64_t y, std::uint32_t colour) {
    auto* pixel = &picture.pixels[static_cast<std::size_t>((y * picture.width + x) * 3)];
    pixel[0] = static_cast<std::uint8_t>(colour);
    pixel[1] = static_cast<std::uint8_t>(colour >> 8);
    pixel[2] = static_cast<std::uint8_t>(colour >> 16);
}

std::uint32_t ColourAt(const Picture& picture, std::int64_t x, std::int64_t y) {
    const auto* pixel = &picture.pixels[static_cast<std::size_t>((y * picture.width + x) * 3)];
    return pixel[0] | std::uint32_t{pixel[1]} << 8 | std::uint32_t{pixel[2]} << 16;
}

/// The part of a run, counted from the box's begin, that lies in the picture's `length` pixels.
PixelRun Within(const PixelRun& run, std::int64_t begin, std::int64_t length) {
    return {std::max<std::int64_t>(0, begin + run.first), std::min(length, begin + run.end)};
}

/// One destination row: the source rows of the run, counted from the top of the source box, meet in it.
std::vector<Meeting> MeetRows(const DibPixels& pixels, const PixelBox& source, const PixelRun& rows,
                              const std::vector<PixelRun>& columns, StretchMode mode) {
    std::vector<Meeting> cells(columns.size(), Meeting(mode));
    const std::int64_t rowsPresent = pixels.RowsPresent();
    // In memory the bottom row comes first.
    const std::int64_t lowest = pixels.Height() - source.top - rows.end;
    const std::int64_t end = pixels.Height() - source.top - rows.first;
    for (std::int64_t row = lowest; row < std::min(end, rowsPresent); ++row) {
        const std::int64_t columnsPresent = pixels.ColumnsPresent(row);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const std::int64_t last = source.left + columns[i].end;
            for (std::int64_t x = source.left + columns[i].first; x < std::min(last, columnsPresent); ++x) {
                if (cells[i].IsSettled())
                    break;
                cells[i].Add(pixels.Colour(row, x));
            }
            if (last > columnsPresent)
                cells[i].Add(pixels.ColourOfZero());
        }
    }
    if (end > rowsPresent) {
        for (Meeting& cell : cells)
            cell.Add(pixels.ColourOfZero());
    }
    return cells;
}

} // namespace

PixelRun SourceRun(std::int64_t index, std::int64_t source, std::int64_t destination) {
    if (source <= destination) {
        const std::int64_t pixel = (source * (2 * index + 1) - 1) / (2 * destination);
        return {pixel, pixel + 1};
    }
    const auto first = [&](std::int64_t i) { return (2 * source * i + destination) / (2 * destination); };
    return {first(index), first(index + 1)};
}

void StretchDib(Picture& picture, const PixelBox& destination, const PreviewBytes& preview, std::uint64_t pixelOffset,
                const PixelBox& source, StretchMode mode) {
    if (destination.width <= 0 || destination.height <= 0 || source.width <= 0 || source.height <= 0)
        return;
    const DibPixels pixels(preview, pixelOffset);
    if (!pixels.IsDrawable())
        return;

    const std::int64_t firstColumn = std::max<std::int64_t>(0, -destination.left);
    const std::int64_t endColumn = std::min(destination.width, picture.width - destination.left);
    std::vector<PixelRun> columns;
    for (std::int64_t x = firstColumn; x < endColumn; ++x)
        columns.push_back(SourceRun(x, source.width, destination.width));

    const std::int64_t firstRow = std::max<std::int64_t>(0, -destination.top);
    const std::int64_t endRow = std::min(destination.height, picture.height - destination.top);
    for (std::int64_t y = firstRow; y < endRow; ++y) {
        const PixelRun rows = SourceRun(y, source.height, destination.height);
        const std::vector<Meeting> cells = MeetRows(pixels, source, rows, columns, mode);
        for (std::size_t i = 0; i < cells.size(); ++i)
            PutPixel(picture, destination.left + firstColumn + static_cast<std::int64_t>(i), destination.top + y,
                     cells[i].Colour());
    }
}

void StretchPicture(Picture& picture, const PixelBox& destination, const Picture& from, const PixelBox& source,
                    StretchMode mode) {
    if (destination.width <= 0 || destination.height <= 0 || source.width <= 0 || source.height <= 0)
        return;
    const std::int64_t endColumn = std::min(destination.width, picture.width - destination.left);
    const std::int64_t endRow = std::min(destination.height, picture.height - destination.top);
    for (std::int64_t y = std::max<std::int64_t>(0, -destination.top); y < endRow; ++y) {
        const PixelRun rows = Within(SourceRun(y, source.height, destination.height), source.top, from.height);
        for (std::int64_t x = std::max<std::int64_t>(0, -destination.left); x < endColumn; ++x) {
            const PixelRun columns = Within(SourceRun(x, source.width, destination.width), source.left, from.width);
            if (rows.first >= rows.end || columns.first >= columns.end)
                continue;
            Meeting cell(mode);
            for (std::int64_t row = rows.first; row < rows.end && !cell.IsSettled(); ++row)
                for (std::int64_t column = columns.first; column < columns.end && !cell.IsSettled(); ++column)
                    cell.Add(ColourAt(from, column, row));
            PutPixel(picture, destination.left + x, destination.top + y, cell.Colour());
        }
    }
}
