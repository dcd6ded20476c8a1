#pragma once

#include "tessaro/catalogue/ImageList.h"
#include "tessaro/host/ModuleState.h"

/// The ellipse in the rectangle from (left, top) to right and bottom, which it excludes: an outline of width 1 and the
/// inside of its rows. Clipped to the picture. Nothing for an empty rectangle.
void Ellipse(Picture& picture, int left, int top, int right, int bottom, Rgb pen, Rgb brush);
