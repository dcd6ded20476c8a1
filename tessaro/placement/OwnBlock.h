#pragma once

struct Block;
class Directory;

/// Whether the Directory holds the Block. A placement runs when the window is gone, and a Directory that was deleted or
/// replaced on the way has taken its Blocks along; the address alone is compared.
bool IsBlockOf(const Directory* directory, const Block* block);
