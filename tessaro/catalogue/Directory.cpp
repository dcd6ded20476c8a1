#include "tessaro/catalogue/Directory.h"

#include "tessaro/catalogue/Raster.h"

#include <utility>

namespace {

constexpr int kInitialSlots = 1, kGrowth = 25;

std::shared_ptr<ImageList> PlaceholderList(int width, int height) {
    auto list = std::make_shared<ImageList>(width, height, kInitialSlots, kGrowth);
    list->Add(PlaceholderPicture(width, height));
    return list;
}

const std::shared_ptr<ImageList>& LargePlaceholderList() {
    static const std::shared_ptr<ImageList> list = PlaceholderList(kLargeWidth, kLargeHeight);
    return list;
}

const std::shared_ptr<ImageList>& SmallPlaceholderList() {
    static const std::shared_ptr<ImageList> list = PlaceholderList(kSmallWidth, kSmallHeight);
    return list;
}

std::shared_ptr<ImageList> Shared(std::unique_ptr<ImageList> list, const std::shared_ptr<ImageList>& placeholder) {
    return *list == *placeholder ? placeholder : std::shared_ptr<ImageList>(std::move(list));
}

ImageList& OwnCopy(std::shared_ptr<ImageList>& list) {
    if (list.use_count() > 1)
        list = std::make_shared<ImageList>(*list);
    return *list;
}

} // namespace

Directory::Directory() {
    ResetImageLists(false);
}

Directory::~Directory() {
    while (!blocks.empty()) {
        delete blocks.front();
        blocks.pop_front();
    }
}

void Directory::ResetImageLists(bool destroyOld) {
    imagesLoaded = false;
    if (useLargeImages || destroyOld || largeImages == nullptr)
        largeImages = LargePlaceholderList();
    else
        LargeForWrite().Add(PlaceholderPicture(kLargeWidth, kLargeHeight));
    smallImages = SmallPlaceholderList();
}

void Directory::SetImageLists(std::unique_ptr<ImageList> large, std::unique_ptr<ImageList> small) {
    // Both or neither: slots count in both.
    auto newLarge = large != nullptr ? Shared(std::move(large), LargePlaceholderList()) : largeImages;
    auto newSmall = small != nullptr ? Shared(std::move(small), SmallPlaceholderList()) : smallImages;
    largeImages = std::move(newLarge);
    smallImages = std::move(newSmall);
}

ImageList& Directory::LargeForWrite() {
    return OwnCopy(largeImages);
}

ImageList& Directory::SmallForWrite() {
    return OwnCopy(smallImages);
}

Picture PlaceholderPicture(int width, int height) {
    constexpr Rgb pen{0, 0, 0, 0}, brush{255, 255, 255, 0};
    Picture picture(width, height);
    Rectangle(picture, 0, 0, width, height, pen, brush);
    Line(picture, 0, 0, width, height, pen);
    Line(picture, width, 0, 0, height, pen);
    return picture;
}
