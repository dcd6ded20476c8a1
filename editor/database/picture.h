#pragma once

#include "editor/database/wireframe.h"

#include <string>

namespace editor {

constexpr int largestPictureWidth = 256;
constexpr int largestPictureHeight = 188;

/// A picture of the whole wireframe as drawings embed it: a bitmap without file header, 40-byte header, 256 colours,
/// one byte a pixel, lowest row first. It is at most `width` by `height` pixels and has the proportions of what is
/// drawn, seen from above. The background is white and what has the foreground colour black, which programs that show
/// the picture exchange for their own two. A wireframe that shows nothing gives an empty text.
std::string pictureOf(const Wireframe& wireframe, int width = largestPictureWidth, int height = largestPictureHeight);

/// The picture of a database's model space.
std::string pictureOfModelSpace(const AcDbDatabase& database);

} // namespace editor
