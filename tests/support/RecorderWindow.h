#pragma once

#include "tessaro/host/BrowserWindow.h"

#include <atomic>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace tests {

/// A browser window without a screen: keeps rows, cells and pictures as told, and what was done in its order. Belongs
/// to the thread that makes it; a call from another thread is counted.
class RecorderWindow : public BrowserWindow {
public:
    struct BlockRow {
        std::wstring text;
        int image = -1;
        Block* block = nullptr;
        std::map<int, std::wstring> cells;
    };
    struct DirectoryRow {
        std::wstring text;
        Directory* directory = nullptr;
        std::map<int, std::wstring> cells;
        std::vector<std::wstring> states; ///< every text that column 2 ever had
    };

    std::vector<BlockRow> blockRows;
    std::vector<DirectoryRow> directoryRows;
    std::vector<std::wstring> schemes;
    std::vector<std::string> done; ///< names of operations on the whole window, in their order
    std::vector<int> commands;     ///< what was posted
    const ImageList* large = nullptr;
    const ImageList* small = nullptr;
    bool curtain = false;
    int view = -1;
    int placeholderRows = 0; ///< rows that were inserted with "12345678"
    std::atomic<int> callsFromOtherThreads{0};

    std::function<void(Directory*)> onSelect; ///< the notification of a selected row
    std::function<void()> onStore;
    std::function<void(int row)> onBlockRowFilled;
    std::function<void()> onBlockRowInserted;
    std::function<void(int id)> onCommand;
    std::function<void(int column, const std::wstring& text)> onDirectoryCell;

    bool Exists() const override { return true; }
    void EmptyBlockList() override;
    int BlockRowCount() const override;
    int InsertBlockRow(const std::wstring& text) override;
    void SetBlockRow(int row, const std::wstring& name, int image, Block* block) override;
    void SetBlockCell(int row, int column, const std::wstring& text) override;
    void SetBlockImage(int row, int image) override;
    int FindBlockRow(const Block* block) const override;
    void UpdateBlockRow(int row) override;
    void ArrangeBlocks() override;
    void SetBlockImages(const ImageList* largeImages, const ImageList* smallImages) override;
    void ClearBlockViewBits() override;
    void ShowCurtain(bool shown) override;
    int DirectoryRowCount() const override;
    int InsertDirectoryRow(const std::wstring& text, Directory* directory) override;
    void DeleteDirectoryRow(int row) override;
    void SetDirectoryCell(int row, int column, const std::wstring& text) override;
    Directory* DirectoryAt(int row) const override;
    void SetDirectoryAt(int row, Directory* directory) override;
    void SelectDirectoryRow(int row) override;
    void AddScheme(const std::wstring& name) override;
    void StoreDlgState() override;
    void FillBlockControls(bool settings) override;
    void SetView(int newView) override;
    std::array<int, 6> BlockColumnWidths() const override;
    std::array<int, 3> DirectoryColumnWidths() const override;
    void PostCommand(int id) override;

private:
    void Note(const char* operation);
    void CheckThread() const;
    /// Like a list control, takes what is set on a row that is not there and forgets it.
    BlockRow& RowAt(int row);

    BlockRow beyond;
    const std::thread::id owner = std::this_thread::get_id();
};

} // namespace tests
