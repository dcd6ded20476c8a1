#pragma once

#include <string>

class BlockDlg;

/// What must hold at every moment of the soak, on the main thread. What is wrong comes back in words, else nothing.

/// Rows stand for the records that the catalogue has, and nothing that is queued is gone.
std::string BrokenInDialog(const BlockDlg& dialog);
/// The worker has nothing left to do: the block list shows the Blocks of the current directory, each once, by its name.
std::string BrokenAtRest(BlockDlg& dialog);
/// No dialog, no thread, no placement, and settings that can be read again; with `sameCatalogue` they name as many
/// directories as there are, which a delete that ends behind the last save makes fewer.
std::string BrokenWhenIdle(bool sameCatalogue);
