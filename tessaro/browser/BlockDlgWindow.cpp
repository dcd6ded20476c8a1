// What the rooms below see of the window: rows, cells, pictures.
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/catalogue/Block.h"

#include <QHeaderView>

void BlockDlg::EmptyBlockList() {
    controls->blockList->Rows().DeleteAllRows();
}

int BlockDlg::BlockRowCount() const {
    return controls->blockList->Rows().RowCount();
}

int BlockDlg::InsertBlockRow(const std::wstring& text) {
    ListModel& rows = controls->blockList->Rows();
    return rows.InsertRow(rows.RowCount(), text);
}

void BlockDlg::SetBlockRow(int row, const std::wstring& name, int image, Block* block) {
    ListModel& rows = controls->blockList->Rows();
    rows.SetData(row, block);
    rows.SetImage(row, image);
    rows.SetText(row, 0, name);
}

void BlockDlg::SetBlockCell(int row, int column, const std::wstring& text) {
    controls->blockList->Rows().SetText(row, column, text);
}

void BlockDlg::SetBlockImage(int row, int image) {
    controls->blockList->Rows().SetImage(row, image);
}

int BlockDlg::FindBlockRow(const Block* block) const {
    return block == nullptr ? -1 : controls->blockList->Rows().FindData(block);
}

void BlockDlg::UpdateBlockRow(int row) {
    MyList& list = *controls->blockList;
    list.viewport()->update(list.RowBounds(row));
}

void BlockDlg::ArrangeBlocks() {
    controls->blockList->Arrange();
}

void BlockDlg::SetBlockImages(const ImageList* large, const ImageList* small) {
    controls->blockList->SetImages(large, small);
}

void BlockDlg::ClearBlockViewBits() {
    controls->blockList->SetViewBits(ListView::IconView);
}

void BlockDlg::ShowCurtain(bool curtain) {
    controls->curtainList->setVisible(curtain);
    controls->blockList->setVisible(!curtain);
}

int BlockDlg::DirectoryRowCount() const {
    return controls->directoryList->Rows().RowCount();
}

int BlockDlg::InsertDirectoryRow(const std::wstring& text, Directory* directory) {
    ListModel& rows = controls->directoryList->Rows();
    return rows.InsertRow(rows.RowCount(), text, directory);
}

void BlockDlg::DeleteDirectoryRow(int row) {
    controls->directoryList->Rows().DeleteRow(row);
}

void BlockDlg::SetDirectoryCell(int row, int column, const std::wstring& text) {
    controls->directoryList->Rows().SetText(row, column, text);
}

Directory* BlockDlg::DirectoryAt(int row) const {
    return static_cast<Directory*>(controls->directoryList->Rows().Data(row));
}

void BlockDlg::SetDirectoryAt(int row, Directory* directory) {
    controls->directoryList->Rows().SetData(row, directory);
}

void BlockDlg::SelectDirectoryRow(int row) {
    controls->directoryList->SelectRow(row);
}

void BlockDlg::AddScheme(const std::wstring& name) {
    AddSorted(*controls->scheme, name);
}

std::array<int, 6> BlockDlg::BlockColumnWidths() const {
    std::array<int, 6> widths{};
    for (int column = 0; column < static_cast<int>(widths.size()); ++column)
        widths[static_cast<std::size_t>(column)] = controls->blockList->Header()->sectionSize(column);
    return widths;
}

std::array<int, 3> BlockDlg::DirectoryColumnWidths() const {
    std::array<int, 3> widths{};
    for (int column = 0; column < static_cast<int>(widths.size()); ++column)
        widths[static_cast<std::size_t>(column)] = controls->directoryList->Header()->sectionSize(column);
    return widths;
}
