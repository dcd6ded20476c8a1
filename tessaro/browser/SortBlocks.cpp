#include "tessaro/browser/SortBlocks.h"

#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"

#include <QHeaderView>

#include <array>

namespace {

constexpr int kFirstReversed = 8;
/// Key of each column. The last two are crossed against the keys: column 4 shows the creation, column 5 the last write.
constexpr std::array kColumnKeys{1, 2, 3, 4, 6, 5};

template <class T> int Compare(const T& a, const T& b) {
    return a < b ? -1 : (b < a ? 1 : 0);
}

int CompareByKey(const Block& a, const Block& b, int key) {
    switch (key) {
    case 1:
        return Compare(platform::CompareNoCase(a.name, b.name), 0);
    case 2:
        return Compare(a.fileType, b.fileType);
    case 3:
        return Compare(platform::CompareNoCase(a.description, b.description), 0);
    case 4:
        return Compare(a.status.m_size, b.status.m_size);
    case 5:
        return Compare(a.status.m_mtime, b.status.m_mtime);
    case 6:
        return Compare(a.status.m_ctime, b.status.m_ctime);
    default:
        return -1;
    }
}

} // namespace

int CompareBlocks(const Block* a, const Block* b, int style) {
    if (a == nullptr || b == nullptr)
        return 0;
    const int order = CompareByKey(*a, *b, style % kSortKeys);
    const Directory* const directory = currentDirectory;
    return directory != nullptr && directory->sortStyle >= kFirstReversed ? -order : order;
}

int SortStyleAfterClick(int column, int style) {
    const int key = kColumnKeys[static_cast<std::size_t>(column)];
    return key == style % kSortKeys && style < kSortKeys ? key + kSortKeys : key;
}

int SortColumn(int style) {
    for (std::size_t column = 0; column < kColumnKeys.size(); ++column)
        if (kColumnKeys[column] == style % kSortKeys)
            return static_cast<int>(column);
    return -1;
}

void BlockDlg::SortBlocks(int column) {
    Directory* const directory = currentDirectory;
    if (directory == nullptr) {
        ShowSortIndicator();
        return;
    }
    if (column >= 0 && column < static_cast<int>(kColumnKeys.size()))
        directory->sortStyle = SortStyleAfterClick(column, directory->sortStyle);
    const int style = directory->sortStyle;
    ListModel& rows = controls->blockList->Rows();
    // "Always less" is no order that a sort could carry out: the rows stay as they are.
    if (style % kSortKeys != 0) {
        rows.Sort([style](const void* a, const void* b) {
            return CompareBlocks(static_cast<const Block*>(a), static_cast<const Block*>(b), style) < 0;
        });
        for (int row = 0; row < rows.RowCount(); ++row)
            if (auto* block = static_cast<Block*>(rows.Data(row)))
                block->listIndex = row;
    }
    ShowSortIndicator();
}

void BlockDlg::ShowSortIndicator() {
    const Directory* const directory = currentDirectory;
    const int column = directory == nullptr ? -1 : SortColumn(directory->sortStyle);
    QHeaderView* header = controls->blockList->Header();
    header->setSortIndicatorShown(column >= 0);
    if (column >= 0)
        header->setSortIndicator(column,
                                 directory->sortStyle >= kFirstReversed ? Qt::DescendingOrder : Qt::AscendingOrder);
}
