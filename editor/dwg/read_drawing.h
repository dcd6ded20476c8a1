#pragma once

#include "editor/dwg/drawing_file.h"
#include "editor/dwg/model.h"

namespace dwg {

/// Reads all objects of a drawing: an error where there is no object map or the file can't be read, `tooLarge`
/// where the objects would take far more memory than the size of the file tells. Everything else
/// that is wrong becomes a finding of the drawing: an object that can't be read is left out, a chain that can't be
/// followed is put together from the entities that name its owner.
Result<Drawing> readDrawing(const DrawingFile& file);

/// Second phase of reading, over objects whose links are as stored: entities of the two spaces get their owners, block
/// records their entities in order, insertions and polylines their parts.
void resolveLinks(Drawing& drawing);

/// Adds findings for what is kept as it is though it can't be meant: objects that own themselves by way of others,
/// blocks that are inserted in themselves, names of table records with control characters. Who walks along owners or
/// nested blocks must bound the way.
void checkContent(Drawing& drawing);

} // namespace dwg
