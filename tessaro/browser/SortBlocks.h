#pragma once

struct Block;

/// The order of the block list. A sort style from 0 to 13: its residue modulo 7 is the key, 8 and up reverse the order.
constexpr int kSortKeys = 7;

/// -1, 0 or 1 by the key of the style (0 none, which is always less; 1 name, 2 type, 3 description, 4 size, 5 modified,
/// 6 created), reversed where `currentDirectory` says so; 0 where a Block is missing.
int CompareBlocks(const Block* a, const Block* b, int style);
/// The style after a click on a column: its key, or the reverse where the list is sorted by that key already.
int SortStyleAfterClick(int column, int style);
/// The column that shows a style; -1 for none.
int SortColumn(int style);
