#pragma once

#include "tessaro/catalogue/ImageList.h"

#include <filesystem>
#include <optional>

namespace tools {

constexpr int largestThumbnail = 4096;

/// The picture of a drawing that a file manager shows, `size` pixels (1 to largestThumbnail) wide or high at the most:
/// the one that the drawing embeds, made smaller where need be, else the model space as the editor draws it. Nothing
/// for a file that is no drawing, and for a drawing that shows nothing.
std::optional<Picture> thumbnailOf(const std::filesystem::path& drawing, int size);

} // namespace tools
