#pragma once

#include <string>

struct Block;
class Directory;

/// Whether the Directory holds the Block. A placement runs when the window is gone, and a Directory that was deleted or
/// replaced on the way has taken its Blocks along; the address alone is compared.
bool IsBlockOf(const Directory* directory, const Block* block);

/// Whether a name can be given to the command line as one answer: a line end or another control character in it, or the
/// sign for Escape at its start, would have the rest taken as commands. Tells the user where it can't.
bool CanBeAnswered(const std::wstring& name);
