#include "tessaro/browser/ListPicture.h"

#include "tessaro/catalogue/ImageList.h"

QImage ListPicture(const ImageList* images, int slot) {
    if (images == nullptr || slot < 0 || slot >= images->Count())
        return {};
    const Picture drawn = images->Draw(slot);
    const QImage shared(drawn.pixels.data(), drawn.width, drawn.height, drawn.width * 3, QImage::Format_RGB888);
    return shared.convertToFormat(QImage::Format_RGB32);
}

QSize ListPictureSize(const ImageList* images) {
    return images == nullptr ? QSize() : QSize(images->Width(), images->Height());
}
