#include "tessaro/browser/preview/Ellipse.h"

#include "tessaro/catalogue/Raster.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

/// Which pixels of one row belong to the outline's left half: from `first` to `last`, counted from the left edge.
struct RowSpan {
    int first = 0;
    int last = -1;
};

/// The outline's left upper quarter, from the middle row up. The error term says which of the two steps (right, up)
/// keeps nearer to the curve; both may be taken at once.
std::vector<RowSpan> UpperRows(int width, int height) {
    const std::int64_t a = width - 1;
    const std::int64_t b = height - 1;
    const std::int64_t odd = b & 1;
    std::int64_t stepRight = 4 * b * b * (1 - a);
    std::int64_t stepUp = 4 * a * a * (1 + odd);
    std::int64_t error = stepRight + stepUp + a * a * odd;

    std::vector<RowSpan> rows(static_cast<std::size_t>(height + 1) / 2);
    int x = 0;
    int y = static_cast<int>(b / 2);
    while (y >= 0 && x <= a / 2) {
        RowSpan& row = rows[static_cast<std::size_t>(y)];
        if (row.last < row.first)
            row.first = x;
        row.last = x;
        const bool right = 2 * error >= stepRight;
        const bool up = 2 * error <= stepUp;
        if (right) {
            ++x;
            stepRight += 8 * b * b;
            error += stepRight;
        }
        if (up) {
            --y;
            stepUp += 8 * a * a;
            error += stepUp;
        }
    }
    // A flat or narrow ellipse ends its walk before the top; there the outline closes in the middle.
    for (RowSpan& row : rows) {
        if (row.last < row.first)
            row = {static_cast<int>(a / 2), static_cast<int>(a / 2)};
    }
    rows.front().last = static_cast<int>(a / 2);
    return rows;
}

} // namespace

void Ellipse(Picture& picture, int left, int top, int right, int bottom, Rgb pen, Rgb brush) {
    const int width = right - left;
    const int height = bottom - top;
    if (width <= 0 || height <= 0)
        return;
    const std::vector<RowSpan> rows = UpperRows(width, height);
    for (int y = 0; y < height; ++y) {
        const RowSpan& row = rows[static_cast<std::size_t>(std::min(y, height - 1 - y))];
        for (int x = row.first; x <= row.last; ++x) {
            SetPixel(picture, left + x, top + y, pen);
            SetPixel(picture, right - 1 - x, top + y, pen);
        }
        for (int x = row.last + 1; x < width - 1 - row.last; ++x)
            SetPixel(picture, left + x, top + y, brush);
    }
}
