#pragma once

#include <array>
#include <string>

struct Block;
class Directory;
class ImageList;

/// The open browser window as the rooms below it see it: rows, cells, states, pictures. Main thread only: other threads
/// reach it inside platform::CallOnMainThread.
class BrowserWindow {
public:
    virtual ~BrowserWindow() = default;

    /// False before the window is made and after it is destroyed.
    virtual bool Exists() const = 0;

    // Block list. Rows are display positions; the item data of a row is its Block.
    virtual void EmptyBlockList() = 0;
    virtual int BlockRowCount() const = 0;
    /// Appends a row that shows only the text; gives its number.
    virtual int InsertBlockRow(const std::wstring& text) = 0;
    virtual void SetBlockRow(int row, const std::wstring& name, int image, Block* block) = 0;
    virtual void SetBlockCell(int row, int column, const std::wstring& text) = 0;
    virtual void SetBlockImage(int row, int image) = 0;
    /// -1 where no row has it.
    virtual int FindBlockRow(const Block* block) const = 0;
    /// Repaints a row whose picture was replaced.
    virtual void UpdateBlockRow(int row) = 0;
    virtual void ArrangeBlocks() = 0;
    /// Null detaches. Not owned.
    virtual void SetBlockImages(const ImageList* large, const ImageList* small) = 0;
    /// Takes the view bits out of the list's style, so that it stands in icon view.
    virtual void ClearBlockViewBits() = 0;
    /// Shows the curtain in the place of the block list, or the list again.
    virtual void ShowCurtain(bool curtain) = 0;

    // Directory list. The item data of a row is its Directory.
    virtual int DirectoryRowCount() const = 0;
    /// Appends a row; gives its number.
    virtual int InsertDirectoryRow(const std::wstring& text, Directory* directory) = 0;
    virtual void DeleteDirectoryRow(int row) = 0;
    virtual void SetDirectoryCell(int row, int column, const std::wstring& text) = 0;
    virtual Directory* DirectoryAt(int row) const = 0;
    virtual void SetDirectoryAt(int row, Directory* directory) = 0;
    /// Selects the row (its notification makes the directory current) and scrolls to it.
    virtual void SelectDirectoryRow(int row) = 0;

    // Scheme box.
    virtual void AddScheme(const std::wstring& name) = 0;

    // State.
    /// Copies the controls' values into `currentDirectory`.
    virtual void StoreDlgState() = 0;
    /// Copies the state of `currentDirectory` into the controls; `settings` false restores view, sort and selection.
    virtual void FillBlockControls(bool settings) = 0;
    virtual void SetView(int view) = 0;
    virtual std::array<int, 6> BlockColumnWidths() const = 0;
    virtual std::array<int, 3> DirectoryColumnWidths() const = 0;
    /// Posts a command to the window; 248 ends its modal loop.
    virtual void PostCommand(int id) = 0;
};
