#include "tessaro/browser/PictureCache.h"

#include "tessaro/catalogue/ImageList.h"

#include <QImage>

namespace {
constexpr int kKept = 600;
}

PictureCache::PictureCache() : made(kKept) {}

void PictureCache::SetList(const ImageList* list) {
    images = list;
    made.clear();
}

QPixmap PictureCache::Picture(int slot) {
    if (images == nullptr || slot < 0 || slot >= images->Count())
        return {};
    if (const QPixmap* present = made.object(slot))
        return *present;
    const ::Picture drawn = images->Draw(slot);
    if (drawn.width <= 0 || drawn.height <= 0)
        return {};
    const QImage image(drawn.pixels.data(), drawn.width, drawn.height, drawn.width * 3, QImage::Format_RGB888);
    auto* picture = new QPixmap(QPixmap::fromImage(image));
    const QPixmap result = *picture;
    made.insert(slot, picture);
    return result;
}

QSize PictureCache::Size() const {
    return images == nullptr ? QSize() : QSize(images->Width(), images->Height());
}
