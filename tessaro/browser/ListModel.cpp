#include "tessaro/browser/ListModel.h"
#include "tessaro/browser/QtText.h"

#include <algorithm>

namespace {

struct Item {
    const void* data = nullptr;
    int row = 0; ///< before the sort
};

/// Merges neighbouring runs of growing length. It never looks beyond a run, whatever the comparison says, which the
/// sorts of the standard library do not promise.
void MergeSort(std::vector<Item>& items, const std::function<bool(const void*, const void*)>& less) {
    std::vector<Item> merged(items.size());
    for (std::size_t run = 1; run < items.size(); run *= 2) {
        for (std::size_t start = 0; start < items.size(); start += 2 * run) {
            const std::size_t middle = std::min(start + run, items.size());
            const std::size_t end = std::min(middle + run, items.size());
            std::size_t left = start;
            std::size_t right = middle;
            for (std::size_t place = start; place < end; ++place) {
                const bool takeRight = left == middle || (right < end && less(items[right].data, items[left].data));
                merged[place] = items[takeRight ? right++ : left++];
            }
        }
        items.swap(merged);
    }
}

} // namespace

void ListModel::InsertColumn(const std::wstring& heading, Qt::Alignment alignment) {
    const int column = static_cast<int>(columns.size());
    beginInsertColumns({}, column, column);
    columns.push_back({heading, alignment});
    endInsertColumns();
}

int ListModel::InsertRow(int row, const std::wstring& text, void* data) {
    row = std::clamp(row, 0, RowCount());
    beginInsertRows({}, row, row);
    Row inserted;
    inserted.texts.resize(std::max<std::size_t>(1, columns.size()));
    inserted.texts[0] = ToQt(text);
    inserted.data = data;
    rows.insert(rows.begin() + row, std::move(inserted));
    Renumber(row);
    endInsertRows();
    return row;
}

void ListModel::DeleteRow(int row) {
    if (!HasRow(row))
        return;
    beginRemoveRows({}, row, row);
    places.erase(rows[static_cast<std::size_t>(row)].data);
    rows.erase(rows.begin() + row);
    Renumber(row);
    endRemoveRows();
}

void ListModel::DeleteAllRows() {
    if (rows.empty())
        return;
    beginResetModel();
    rows.clear();
    places.clear();
    endResetModel();
}

void ListModel::SetText(int row, int column, const std::wstring& text) {
    if (!HasRow(row) || column < 0 || column >= static_cast<int>(columns.size()))
        return;
    rows[static_cast<std::size_t>(row)].texts[static_cast<std::size_t>(column)] = ToQt(text);
    RowChanged(row, column, column);
}

std::wstring ListModel::Text(int row, int column) const {
    if (!HasRow(row) || column < 0 || column >= static_cast<int>(columns.size()))
        return {};
    return FromQt(rows[static_cast<std::size_t>(row)].texts[static_cast<std::size_t>(column)]);
}

void ListModel::SetImage(int row, int image) {
    if (!HasRow(row))
        return;
    rows[static_cast<std::size_t>(row)].image = image;
    RowChanged(row, 0, 0);
}

int ListModel::Image(int row) const {
    return HasRow(row) ? rows[static_cast<std::size_t>(row)].image : -1;
}

void ListModel::SetData(int row, void* data) {
    if (!HasRow(row))
        return;
    Row& changed = rows[static_cast<std::size_t>(row)];
    const auto old = places.find(changed.data);
    if (old != places.end() && old->second == row)
        places.erase(old);
    changed.data = data;
    if (data != nullptr)
        places[data] = row;
}

void* ListModel::Data(int row) const {
    return HasRow(row) ? rows[static_cast<std::size_t>(row)].data : nullptr;
}

int ListModel::FindData(const void* data) const {
    const auto found = places.find(data);
    return found == places.end() ? -1 : found->second;
}

void ListModel::Sort(const std::function<bool(const void*, const void*)>& less) {
    bool ordered = true;
    for (std::size_t row = 1; row < rows.size() && ordered; ++row)
        ordered = !less(rows[row].data, rows[row - 1].data);
    if (ordered)
        return;
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    std::vector<Item> order(rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row)
        order[row] = {rows[row].data, static_cast<int>(row)};
    MergeSort(order, less);
    std::vector<int> newPlace(rows.size());
    std::vector<Row> sorted(rows.size());
    for (std::size_t place = 0; place < order.size(); ++place) {
        const auto old = static_cast<std::size_t>(order[place].row);
        newPlace[old] = static_cast<int>(place);
        sorted[place] = std::move(rows[old]);
    }
    rows = std::move(sorted);
    Renumber(0);
    for (const QModelIndex& kept : persistentIndexList())
        changePersistentIndex(kept, index(newPlace[static_cast<std::size_t>(kept.row())], kept.column()));
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : RowCount();
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!HasRow(index.row()) || index.column() >= static_cast<int>(columns.size()))
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return rows[static_cast<std::size_t>(index.row())].texts[static_cast<std::size_t>(index.column())];
    if (role == Qt::TextAlignmentRole)
        return QVariant(columns[static_cast<std::size_t>(index.column())].alignment | Qt::AlignVCenter);
    if (role == Qt::AccessibleDescriptionRole && meaning)
        return meaning(index.column(), data(index, Qt::DisplayRole).toString());
    return {};
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= static_cast<int>(columns.size()))
        return {};
    const Column& column = columns[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole)
        return ToQt(column.heading);
    if (role == Qt::TextAlignmentRole)
        return QVariant(column.alignment | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
    if (!HasRow(index.row()))
        return Qt::NoItemFlags;
    const Qt::ItemFlags fixed = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    const bool editable = index.column() == 0 && mayEdit && mayEdit(index.row());
    return editable ? fixed | Qt::ItemIsEditable : fixed;
}

bool ListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !HasRow(index.row()) || index.column() != 0 || !edited)
        return false;
    edited(index.row(), FromQt(value.toString()));
    return true;
}

void ListModel::Renumber(int first) {
    for (int row = first; row < RowCount(); ++row)
        if (void* data = rows[static_cast<std::size_t>(row)].data)
            places[data] = row;
}

void ListModel::RowChanged(int row, int firstColumn, int lastColumn) {
    emit dataChanged(index(row, firstColumn), index(row, lastColumn));
}
