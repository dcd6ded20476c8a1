#pragma once

#include "tessaro/catalogue/ImageList.h"
#include "tessaro/host/ModuleState.h"

#include <cstdint>

/// Drawing into a Picture by the platform's rules. What lies outside of the picture is left out; coordinates may be any
/// whole numbers. Rectangles exclude their right and bottom edge.

void SetPixel(Picture& picture, int x, int y, Rgb colour);
/// Black outside of the picture.
Rgb PixelAt(const Picture& picture, int x, int y);
void FillRectangle(Picture& picture, int left, int top, int right, int bottom, Rgb brush);
/// An outline of a pen of width 1 around a filled area; its corners may be given in any order.
void Rectangle(Picture& picture, int left, int top, int right, int bottom, Rgb pen, Rgb brush);
/// A pen of width 1 that leaves out the last pixel. A point halfway between two pixels takes the upper or left one,
/// whatever the line's direction.
void Line(Picture& picture, int fromX, int fromY, int toX, int toY, Rgb pen);
