#pragma once

#include <QImage>

class ImageList;

/// The picture of a slot as it is painted; a null image for no list or a slot that is not there. Made anew each time,
/// since a list may hold tens of thousands.
QImage ListPicture(const ImageList* images, int slot);
/// An invalid size for no list.
QSize ListPictureSize(const ImageList* images);
