#pragma once

#include "editor/sdk/ge.h"

#include <string_view>
#include <vector>

namespace editor {

/// The strokes of a line of text: letter height 1, baseline on y 0, beginning at x 0. Letters are drawn as capitals;
/// a character without a glyph is a box. A letter advances by `strokeFontAdvance`.
std::vector<std::vector<AcGePoint2d>> strokesOfText(std::wstring_view text);

constexpr double strokeFontAdvance = 1.0;

} // namespace editor
