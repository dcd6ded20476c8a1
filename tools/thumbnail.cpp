#include "tools/thumbnail.h"

#include "editor/database/picture.h"
#include "editor/dwg/image_section.h"
#include "editor/dwg/thumbnail.h"
#include "tessaro/browser/preview/Dib.h"
#include "tessaro/reading/PreviewPng.h"

#include <algorithm>
#include <array>

namespace tools {

namespace {

std::optional<Picture> pixelsOf(PreviewBytes bitmap) {
    const DibHeader header = ReadDibHeader(bitmap);
    if (header.colours == 0 && header.bits <= 8)
        SetDibColours(bitmap, 1U << header.bits);
    const DibPixels pixels(bitmap, ReadDibHeader(bitmap).PixelOffset());
    if (!pixels.IsDrawable() || pixels.Width() * pixels.Height() > static_cast<std::int64_t>(kLargestPngArea))
        return std::nullopt;
    Picture picture(header.width, header.height);
    auto* at = picture.pixels.data();
    for (std::int64_t row = pixels.Height() - 1; row >= 0; --row) {
        for (std::int64_t column = 0; column < pixels.Width(); ++column) {
            const std::uint32_t colour = pixels.Colour(row, column);
            for (int shift = 0; shift < 24; shift += 8)
                *at++ = static_cast<std::uint8_t>(colour >> shift);
        }
    }
    return picture;
}

/// The embedded picture: a PNG before a bitmap.
std::optional<Picture> embeddedPicture(const std::filesystem::path& drawing) {
    const auto source = dwg::openSource(drawing);
    if (!source)
        return std::nullopt;
    const auto pictures = dwg::readPictures(**source);
    if (!pictures)
        return std::nullopt;
    for (const std::uint8_t code : {dwg::image_code::png, dwg::image_code::bitmap}) {
        for (const dwg::Picture& picture : *pictures) {
            if (picture.code != code)
                continue;
            const auto bitmap = code == dwg::image_code::png ? DecodePng(picture.bytes) : picture.bytes;
            if (!bitmap)
                continue;
            if (auto found = pixelsOf(*bitmap))
                return found;
        }
    }
    return std::nullopt;
}

std::optional<Picture> drawnPicture(const std::filesystem::path& drawing, int size) {
    AcDbDatabase database(false);
    if (database.readDwgFile(drawing.wstring().c_str()) != eOk)
        return std::nullopt;
    const std::string bitmap = editor::pictureOf(editor::wireframeOfModelSpace(database), size, size);
    return bitmap.empty() ? std::nullopt : pixelsOf({bitmap.begin(), bitmap.end()});
}

/// Each pixel is the mean of those that it stands for. Never larger than the picture itself.
Picture fitted(const Picture& picture, int size) {
    const int longest = std::max(picture.width, picture.height);
    if (longest <= size)
        return picture;
    const auto scaled = [&](int length) {
        return std::max(1, static_cast<int>(std::int64_t{length} * size / longest));
    };
    Picture small(scaled(picture.width), scaled(picture.height));
    const auto edge = [](int at, int from, int to) { return static_cast<int>(std::int64_t{at} * from / to); };
    auto* out = small.pixels.data();
    for (int y = 0; y < small.height; ++y) {
        const int top = edge(y, picture.height, small.height), bottom = edge(y + 1, picture.height, small.height);
        for (int x = 0; x < small.width; ++x) {
            const int left = edge(x, picture.width, small.width), right = edge(x + 1, picture.width, small.width);
            std::array<std::int64_t, 3> sums{};
            for (int row = top; row < bottom; ++row) {
                const auto* in =
                    &picture.pixels[(std::size_t(row) * std::size_t(picture.width) + std::size_t(left)) * 3];
                for (int value = 0; value < (right - left) * 3; ++value)
                    sums[std::size_t(value % 3)] += in[value];
            }
            for (const std::int64_t sum : sums)
                *out++ = static_cast<std::uint8_t>(sum / (std::int64_t{bottom - top} * (right - left)));
        }
    }
    return small;
}

} // namespace

std::optional<Picture> thumbnailOf(const std::filesystem::path& drawing, int size) {
    auto picture = embeddedPicture(drawing);
    if (!picture)
        picture = drawnPicture(drawing, size);
    return picture ? std::optional(fitted(*picture, size)) : std::nullopt;
}

} // namespace tools
