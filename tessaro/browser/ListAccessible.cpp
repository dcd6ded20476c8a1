#include "tessaro/browser/ListAccessible.h"

#include "tessaro/browser/ListView.h"

#include <QAccessibleWidget>
#include <QHeaderView>
#include <QPointer>

#include <unordered_map>

namespace {

/// One cell, by its place. It holds nothing of the row, so that rows may come and go.
class Cell : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    Cell(ListView* list, int row, int column) : view(list), cellRow(row), cellColumn(column) {}

    bool isValid() const override { return view != nullptr && Index().isValid(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(view); }
    QAccessible::Role role() const override { return QAccessible::Cell; }
    void setText(QAccessible::Text, const QString&) override {}
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this) : nullptr;
    }

    QString text(QAccessible::Text which) const override {
        if (!isValid())
            return {};
        if (which == QAccessible::Name)
            return Index().data(Qt::DisplayRole).toString();
        return which == QAccessible::Description ? Index().data(Qt::AccessibleDescriptionRole).toString() : QString();
    }

    QRect rect() const override {
        if (!isValid())
            return {};
        const QRect bounds = view->visualRect(Index());
        return {view->viewport()->mapToGlobal(bounds.topLeft()), bounds.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (state.invalid)
            return state;
        state.selectable = true;
        state.selected = isSelected();
        state.focusable = cellColumn == 0;
        state.focused = cellColumn == 0 && view->hasFocus() && view->currentIndex().row() == cellRow;
        state.editable = Index().flags().testFlag(Qt::ItemIsEditable);
        state.invisible = !view->isVisible() || (view->ViewBits() != ListView::ReportView && cellColumn > 0);
        state.offscreen = !view->viewport()->rect().intersects(view->visualRect(Index()));
        return state;
    }

    bool isSelected() const override { return view->SelectedRow() == cellRow; }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return cellColumn; }
    int rowIndex() const override { return cellRow; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

private:
    QModelIndex Index() const { return view->model() ? view->model()->index(cellRow, cellColumn) : QModelIndex(); }

    const QPointer<ListView> view;
    const int cellRow, cellColumn;
};

/// Children are the cells, row after row, as the view itself counts them in its own notices.
class Table : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit Table(ListView* list) : QAccessibleWidget(list, QAccessible::Table), view(list) {}
    ~Table() override {
        for (const auto& [place, id] : cells)
            QAccessible::deleteAccessibleInterface(id);
    }
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    int childCount() const override { return rowCount() * columnCount(); }
    QAccessibleInterface* child(int place) const override {
        return columnCount() == 0 ? nullptr : cellAt(place / columnCount(), place % columnCount());
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        const QModelIndex hit = view->indexAt(view->viewport()->mapFromGlobal(QPoint(x, y)));
        return hit.isValid() ? cellAt(hit.row(), hit.column()) : nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        const QModelIndex current = view->currentIndex();
        return current.isValid() ? cellAt(current.row(), 0) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        auto* const cell = const_cast<QAccessibleInterface*>(child)->tableCellInterface();
        return cell == nullptr ? -1 : cell->rowIndex() * columnCount() + cell->columnIndex();
    }

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override {
        if (!view->Rows().HasRow(row) || column < 0 || column >= columnCount())
            return nullptr;
        QAccessible::Id& id = cells[row * columnCount() + column];
        if (id == 0)
            id = QAccessible::registerAccessibleInterface(new Cell(view, row, column));
        return QAccessible::accessibleInterface(id);
    }
    int selectedCellCount() const override { return selectedRowCount() * columnCount(); }
    QList<QAccessibleInterface*> selectedCells() const override {
        QList<QAccessibleInterface*> selected;
        for (int column = 0; column < columnCount() && selectedRowCount() > 0; ++column)
            selected << cellAt(view->SelectedRow(), column);
        return selected;
    }
    QString columnDescription(int column) const override {
        return view->Rows().headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    }
    QString rowDescription(int) const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return view->SelectedRow() >= 0 ? 1 : 0; }
    int columnCount() const override { return view->Rows().columnCount(); }
    int rowCount() const override { return view->Rows().RowCount(); }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override {
        return selectedRowCount() == 0 ? QList<int>() : QList<int>{view->SelectedRow()};
    }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override { return row >= 0 && view->SelectedRow() == row; }
    bool selectRow(int row) override {
        view->SelectRow(row);
        return view->SelectedRow() == row;
    }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override {
        if (!isRowSelected(row))
            return false;
        view->clearSelection();
        return true;
    }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

private:
    ListView* const view;
    mutable std::unordered_map<int, QAccessible::Id> cells; ///< those that were asked for
};

QAccessibleInterface* MakeTable(const QString&, QObject* object) {
    auto* const list = dynamic_cast<ListView*>(object);
    return list == nullptr ? nullptr : new Table(list);
}

} // namespace

void InstallListAccessibility() {
    QAccessible::installFactory(MakeTable);
}
