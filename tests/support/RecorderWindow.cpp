#include "tests/support/RecorderWindow.h"

namespace tests {

void RecorderWindow::CheckThread() const {
    if (std::this_thread::get_id() != owner)
        ++const_cast<RecorderWindow*>(this)->callsFromOtherThreads;
}

void RecorderWindow::Note(const char* operation) {
    CheckThread();
    done.emplace_back(operation);
}

RecorderWindow::BlockRow& RecorderWindow::RowAt(int row) {
    CheckThread();
    if (row < 0 || row >= static_cast<int>(blockRows.size())) {
        beyond = BlockRow();
        return beyond;
    }
    return blockRows[static_cast<std::size_t>(row)];
}

void RecorderWindow::EmptyBlockList() {
    Note("EmptyBlockList");
    blockRows.clear();
}

int RecorderWindow::BlockRowCount() const {
    CheckThread();
    return static_cast<int>(blockRows.size());
}

int RecorderWindow::InsertBlockRow(const std::wstring& text) {
    CheckThread();
    BlockRow row;
    row.text = text;
    placeholderRows += text == L"12345678" ? 1 : 0;
    if (onBlockRowInserted)
        onBlockRowInserted();
    blockRows.push_back(row);
    return static_cast<int>(blockRows.size()) - 1;
}

void RecorderWindow::SetBlockRow(int row, const std::wstring& name, int image, Block* block) {
    BlockRow& changed = RowAt(row);
    changed.text = name;
    changed.image = image;
    changed.block = block;
    if (onBlockRowFilled)
        onBlockRowFilled(row);
}

void RecorderWindow::SetBlockCell(int row, int column, const std::wstring& text) {
    RowAt(row).cells[column] = text;
}

void RecorderWindow::SetBlockImage(int row, int image) {
    RowAt(row).image = image;
}

int RecorderWindow::FindBlockRow(const Block* block) const {
    CheckThread();
    for (std::size_t row = 0; row < blockRows.size(); ++row)
        if (blockRows[row].block == block)
            return static_cast<int>(row);
    return -1;
}

void RecorderWindow::UpdateBlockRow(int row) {
    RowAt(row);
}

void RecorderWindow::ArrangeBlocks() {
    Note("ArrangeBlocks");
}

void RecorderWindow::SetBlockImages(const ImageList* largeImages, const ImageList* smallImages) {
    Note(smallImages != nullptr ? "SetBlockImages" : "DetachBlockImages");
    large = largeImages;
    small = smallImages;
}

void RecorderWindow::ClearBlockViewBits() {
    Note("ClearBlockViewBits");
}

void RecorderWindow::ShowCurtain(bool shown) {
    Note(shown ? "ShowCurtain" : "HideCurtain");
    curtain = shown;
}

int RecorderWindow::DirectoryRowCount() const {
    CheckThread();
    return static_cast<int>(directoryRows.size());
}

int RecorderWindow::InsertDirectoryRow(const std::wstring& text, Directory* directory) {
    CheckThread();
    DirectoryRow row;
    row.text = text;
    row.directory = directory;
    directoryRows.push_back(row);
    return static_cast<int>(directoryRows.size()) - 1;
}

void RecorderWindow::DeleteDirectoryRow(int row) {
    Note("DeleteDirectoryRow");
    directoryRows.erase(directoryRows.begin() + row);
}

void RecorderWindow::SetDirectoryCell(int row, int column, const std::wstring& text) {
    CheckThread();
    DirectoryRow& changed = directoryRows.at(static_cast<std::size_t>(row));
    changed.cells[column] = text;
    if (column == 2)
        changed.states.push_back(text);
    if (onDirectoryCell)
        onDirectoryCell(column, text);
}

Directory* RecorderWindow::DirectoryAt(int row) const {
    CheckThread();
    return row >= 0 && row < static_cast<int>(directoryRows.size())
               ? directoryRows[static_cast<std::size_t>(row)].directory
               : nullptr;
}

void RecorderWindow::SetDirectoryAt(int row, Directory* directory) {
    CheckThread();
    directoryRows.at(static_cast<std::size_t>(row)).directory = directory;
}

void RecorderWindow::SelectDirectoryRow(int row) {
    Note("SelectDirectoryRow");
    if (onSelect)
        onSelect(directoryRows.at(static_cast<std::size_t>(row)).directory);
}

void RecorderWindow::AddScheme(const std::wstring& name) {
    CheckThread();
    schemes.push_back(name);
}

void RecorderWindow::StoreDlgState() {
    Note("StoreDlgState");
    if (onStore)
        onStore();
}

void RecorderWindow::FillBlockControls(bool settings) {
    Note(settings ? "FillBlockControls(true)" : "FillBlockControls(false)");
}

void RecorderWindow::SetView(int newView) {
    Note("SetView");
    view = newView;
}

std::array<int, 6> RecorderWindow::BlockColumnWidths() const {
    CheckThread();
    return {11, 12, 13, 14, 15, 16};
}

std::array<int, 3> RecorderWindow::DirectoryColumnWidths() const {
    CheckThread();
    return {21, 22, 23};
}

void RecorderWindow::PostCommand(int id) {
    Note("PostCommand");
    commands.push_back(id);
    if (onCommand)
        onCommand(id);
}

} // namespace tests
