#pragma once

#include "tessaro/browser/preview/DeviceContext.h"

#include <optional>

/// The preview of one Block as its drawing holds it now.
struct LoadedPreview {
    PreviewBytes bytes;
    bool isPng = false;
    MarkPoints points;
};

/// Reads the preview out of the drawing (or, up to the type "R12", out of the bitmap beside it) and asks the bridge for
/// the points, which refreshes dates and description of the Block whenever the bridge succeeds. Nothing where there is
/// no drawing or no preview; the Block then stays as it is. Throws where the bridge's helper is missing.
std::optional<LoadedPreview> LoadPreview(const Directory& directory, Block& block);

/// Paints a preview with its frame and its marks, at `scale` times its own size, centred in a frame of 256 by 188
/// pixels times `scale` at (x, y). On the screen the colours are adapted to the host's background, and `backColor`
/// fills the frame; elsewhere colours and brush are left as they are. The context's pen and brush are restored.
///
/// The colour table counts as 256 entries where the header says 0, also of a PNG, whose pixels are thus taken from
/// 1,024 bytes behind their start: that is how they are to be painted.
void DrawPreview(DeviceContext& dc, LoadedPreview& preview, std::int32_t fileType, std::int64_t x, std::int64_t y,
                 std::int64_t scale, bool forScreen);

/// Both in one step. False where no preview was found; nothing was painted then. Main thread.
bool PaintPreview(const Directory& directory, Block& block, DeviceContext& dc, std::int64_t x, std::int64_t y,
                  std::int64_t scale, bool forScreen);
