#include "tessaro/browser/MyList.h"

#include <QHeaderView>

#include <algorithm>

namespace {

int RowFromPoint(const ListView& list, QPoint point, QRect& bounds) {
    const QModelIndex hit = list.indexAt(point);
    if (!hit.isValid())
        return -1;
    bounds = list.RowBounds(hit.row());
    return hit.row();
}

int CellFromPoint(const ListView& list, QPoint point, QRect& cell, int& column) {
    const int rowCount = list.Rows().RowCount();
    const int last = std::min(list.TopIndex() + list.CountPerPage() + 1, rowCount);
    for (int row = std::max(0, list.TopIndex() - 1); row < last; ++row) {
        const QRect bounds = list.RowBounds(row);
        if (!bounds.contains(point))
            continue;
        int left = bounds.left();
        for (int index = 0; index < list.Header()->count(); ++index) {
            const int width = list.Header()->sectionSize(index);
            if (point.x() >= left && point.x() < left + width) {
                column = index;
                cell = QRect(left, bounds.top(), width, bounds.height());
                cell.setRight(std::min(cell.right(), list.viewport()->width() - 1));
                return row;
            }
            left += width;
        }
    }
    return -1;
}

} // namespace

MyList::MyList(QWidget* parent) : ListView(parent) {}

int MyList::OnToolHitTest(QPoint point, QRect& bounds) const {
    const int row = RowFromPoint(*this, point, bounds);
    return row < 0 || ViewBits() == ReportView ? -1 : row + 1;
}

int MyList::CellRectFromPoint(QPoint point, QRect& cell, int& column) const {
    return ViewBits() == ReportView ? CellFromPoint(*this, point, cell, column) : -1;
}

MyList2::MyList2(QWidget* parent) : ListView(parent) {}

int MyList2::OnToolHitTest(QPoint point, QRect& bounds) const {
    const int row = RowFromPoint(*this, point, bounds);
    return row < 0 ? -1 : row + 1;
}

int MyList2::CellRectFromPoint(QPoint point, QRect& cell, int& column) const {
    return CellFromPoint(*this, point, cell, column);
}
