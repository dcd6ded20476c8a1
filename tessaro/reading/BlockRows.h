#pragma once

#include <string>

struct Block;
class BrowserWindow;
class Directory;

/// Rows and cells of the window, by the records that they show. Main thread.

constexpr int kTypeColumn = 1, kDescriptionColumn = 2, kSizeColumn = 3, kCreatedColumn = 4, kModifiedColumn = 5;
constexpr int kCountColumn = 1, dirStateColumn = 2;

/// Whether the Directory is the one that the open dialog shows. Any thread.
bool IsShown(const Directory& directory);
/// Columns 1, 3, 4 and 5: type, size, both dates.
void SetFileCells(BrowserWindow& window, int row, const Block& block);
/// A cell of the directory list; nothing where the Directory has no row there.
void SetDirectoryCell(const Directory& directory, int column, const std::wstring& text);
