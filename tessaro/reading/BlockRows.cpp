#include "tessaro/reading/BlockRows.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/Time.h"

bool IsShown(const Directory& directory) {
    return dialogOpen && currentDirectory == &directory;
}

void SetFileCells(BrowserWindow& window, int row, const Block& block) {
    window.SetBlockCell(row, kTypeColumn, FileTypeName(block.fileType));
    window.SetBlockCell(row, kSizeColumn, platform::Format(L"%ld", static_cast<long>(block.status.m_size)));
    window.SetBlockCell(row, kCreatedColumn, platform::FormatTime(block.created, L"%x, %X"));
    window.SetBlockCell(row, kModifiedColumn, platform::FormatTime(block.modified, L"%x, %X"));
}

void SetDirectoryCell(const Directory& directory, int column, const std::wstring& text) {
    BrowserWindow* const window = theBlockDlg;
    const int row = directory.listIndex;
    if (window != nullptr && row >= 0 && row < window->DirectoryRowCount() && window->DirectoryAt(row) == &directory)
        window->SetDirectoryCell(row, column, text);
}
