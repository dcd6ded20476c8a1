// A picture file of 5,000 slots in both lists against zlib alone, on a memory disk.

#include "bench/Harness.h"
#include "bench/catalogue/CacheData.h"
#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/Raster.h"
#include "tessaro/platform/Text.h"

#include <memory>
#include <random>
#include <stdexcept>

namespace {

constexpr int kSlots = 5000;

/// Lines in a few colours on a dark ground, as drawings are.
Picture Drawing(std::mt19937& random, int width, int height) {
    Picture picture(width, height);
    FillRectangle(picture, 0, 0, width, height, {0, 0, 0, 0});
    for (int line = 0; line < 12; ++line) {
        const auto& c = kStandardColours[7 + random() % 9];
        const auto place = [&](int size) { return static_cast<int>(random() % static_cast<unsigned>(size)); };
        Line(picture, place(width), place(height), place(width), place(height), {c[0], c[1], c[2], 0});
    }
    return picture;
}

void Measure(bench::Table& table) {
    const bench::CacheFolder folder;
    auto directory = std::make_unique<Directory>();
    directory->cacheFile = platform::FromNarrow((folder.path / "path1_35.cache").native());
    std::mt19937 random(35);
    while (directory->largeImages->Count() < kSlots) {
        directory->LargeForWrite().Add(Drawing(random, kLargeWidth, kLargeHeight));
        directory->SmallForWrite().Add(Drawing(random, kSmallWidth, kSmallHeight));
    }
    SaveDirCache(*directory);
    const bench::Stream stream(folder.path / "path1_35.cache");

    table.Ratio("save 5,000 pictures to compress", 1.3, {[&] { SaveDirCache(*directory); }},
                {[&] { stream.Compress(); }});
    directory->ResetImageLists(true);
    table.Ratio("load 5,000 pictures to uncompress", 1.5,
                {[&] {
                     LoadDirCache(*directory);
                     if (directory->smallImages->Count() != kSlots)
                         throw std::runtime_error("the picture file is damaged");
                 },
                 [&] { directory->ResetImageLists(true); }},
                {[&] { stream.UncompressFresh(); }});
}

const bench::Rows rows("pictures", Measure);

} // namespace
