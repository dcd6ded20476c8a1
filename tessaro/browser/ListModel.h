#pragma once

#include <QAbstractTableModel>

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

/// Rows of a list control: texts of the columns, a picture slot and the item data. Adding a row and finding the row of
/// an item cost the same for any number of rows.
class ListModel : public QAbstractTableModel {
public:
    struct Column {
        std::wstring heading;
        Qt::Alignment alignment = Qt::AlignLeft;
    };

    using QAbstractTableModel::QAbstractTableModel;

    void InsertColumn(const std::wstring& heading, Qt::Alignment alignment = Qt::AlignLeft);
    /// Inserts ahead of the row, at the end for the row count. Gives the row.
    int InsertRow(int row, const std::wstring& text, void* data = nullptr);
    void DeleteRow(int row);
    void DeleteAllRows();

    void SetText(int row, int column, const std::wstring& text);
    std::wstring Text(int row, int column) const;
    void SetImage(int row, int image);
    /// Slot of the row's picture; -1 for a row that has none yet.
    int Image(int row) const;
    void SetData(int row, void* data);
    /// Null for a row that is not there.
    void* Data(int row) const;
    /// -1 where no row has it.
    int FindData(const void* data) const;
    bool HasRow(int row) const { return row >= 0 && row < RowCount(); }
    int RowCount() const { return static_cast<int>(rows.size()); }

    /// Brings the rows into the order of the comparison of item data; equal rows keep their order and a selected row
    /// stays selected. A comparison that contradicts itself gives some order of the same rows.
    void Sort(const std::function<bool(const void*, const void*)>& less);

    /// Whether a row's first text may be edited, and what takes the new text. None: no editing.
    std::function<bool(int row)> mayEdit;
    std::function<void(int row, const std::wstring& text)> edited;
    /// What a cell's text means, for people who have it read to them; none: the text says it all.
    std::function<QString(int column, const QString& text)> meaning;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    struct Row {
        std::vector<QString> texts;
        int image = -1;
        void* data = nullptr;
    };
    void Renumber(int first);
    void RowChanged(int row, int firstColumn, int lastColumn);

    std::vector<Column> columns;
    std::vector<Row> rows;
    std::unordered_map<const void*, int> places; ///< row of each item
};
