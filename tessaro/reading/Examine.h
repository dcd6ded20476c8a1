#pragma once

#include "tessaro/browser/preview/Preview.h"

#include <string>

/// Turns one drawing file into a filled-in Block and its pictures. True when the bridge succeeded.
bool ExamineDrawing(Directory& directory, Block& block);

/// The bridge to the helper: sets `created`, `modified` and `description` of the Block and appends the positions of the
/// insertion point in the preview. False: nothing was changed. Throws where the helper is missing.
bool LoadDrawing(const std::wstring& path, Block& block, bool wantInsPts, const PreviewBytes* preview,
                 MarkPoints& points);
