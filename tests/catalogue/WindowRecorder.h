#pragma once

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/ModuleState.h"

#include <vector>

namespace catalogue_tests {

/// Keeps what reaches the directory list and the scheme box; the rest must not be touched by this room.
class WindowRecorder : public BrowserWindow {
public:
    struct Row {
        std::wstring text, count;
        Directory* directory = nullptr;
    };
    std::vector<Row> rows;
    std::vector<std::wstring> schemeNames;
    int selected = -1;
    Directory* currentAtSelection = nullptr;

    int InsertDirectoryRow(const std::wstring& text, Directory* directory) override {
        rows.push_back({text, L"", directory});
        return static_cast<int>(rows.size()) - 1;
    }
    void SetDirectoryCell(int row, int column, const std::wstring& text) override {
        if (column == 1)
            rows.at(static_cast<std::size_t>(row)).count = text;
    }
    void SelectDirectoryRow(int row) override {
        selected = row;
        currentAtSelection = currentDirectory;
        currentDirectory = rows.at(static_cast<std::size_t>(row)).directory;
    }
    void AddScheme(const std::wstring& name) override { schemeNames.push_back(name); }

    bool Exists() const override { return true; }
    void EmptyBlockList() override { Untouched(); }
    int BlockRowCount() const override { return 0; }
    int InsertBlockRow(const std::wstring&) override { return Untouched(); }
    void SetBlockRow(int, const std::wstring&, int, Block*) override { Untouched(); }
    void SetBlockCell(int, int, const std::wstring&) override { Untouched(); }
    void SetBlockImage(int, int) override { Untouched(); }
    int FindBlockRow(const Block*) const override { return -1; }
    void UpdateBlockRow(int) override { Untouched(); }
    void ArrangeBlocks() override { Untouched(); }
    void SetBlockImages(const ImageList*, const ImageList*) override { Untouched(); }
    void ClearBlockViewBits() override { Untouched(); }
    void ShowCurtain(bool) override { Untouched(); }
    int DirectoryRowCount() const override { return static_cast<int>(rows.size()); }
    void DeleteDirectoryRow(int) override { Untouched(); }
    Directory* DirectoryAt(int row) const override { return rows.at(static_cast<std::size_t>(row)).directory; }
    void SetDirectoryAt(int, Directory*) override { Untouched(); }
    void StoreDlgState() override { Untouched(); }
    void FillBlockControls(bool) override { Untouched(); }
    void SetView(int) override { Untouched(); }
    std::array<int, 6> BlockColumnWidths() const override { return {}; }
    std::array<int, 3> DirectoryColumnWidths() const override { return {}; }
    void PostCommand(int) override { Untouched(); }

private:
    static int Untouched();
};

} // namespace catalogue_tests
