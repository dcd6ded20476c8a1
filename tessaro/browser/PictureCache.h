#pragma once

#include <QCache>
#include <QPixmap>

class ImageList;

/// The pictures of one image list as the screen wants them, made when first drawn. Keeps what some screens show, not
/// the whole list. Main thread; the list belongs to a Directory and is given back before that goes.
class PictureCache {
public:
    PictureCache();
    /// Null for none.
    void SetList(const ImageList* list);
    const ImageList* List() const { return images; }
    /// The slot's picture; a null picture for a slot that is not there.
    QPixmap Picture(int slot);
    /// The slot was replaced in the list.
    void Forget(int slot) { made.remove(slot); }
    QSize Size() const;

private:
    const ImageList* images = nullptr;
    QCache<int, QPixmap> made;
};
