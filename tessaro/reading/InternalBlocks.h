#pragma once

#include "tessaro/catalogue/Block.h"

#include <memory>
#include <vector>

using NewBlocks = std::vector<std::unique_ptr<Block>>;

/// Appends a Block for each definition of the current drawing that a user can place: no layout, no anonymous block,
/// none that comes from an external reference. Without a drawing nothing. Worker; the drawing is read, under its lock,
/// in short calls on the main thread.
void ReadInternalBlocks(NewBlocks& blocks);
