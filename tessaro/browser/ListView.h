#pragma once

#include "tessaro/browser/ListModel.h"
#include "tessaro/browser/ListPicture.h"

#include <QAbstractItemView>

class ImageList;
class QHeaderView;

/// The list control of the browser window: one set of rows in icon, small-icon, list or report view, single selection
/// by row.
///
/// All places are computed from the row number, none is stored, so that a list of 100,000 rows opens, scrolls and
/// changes its view at once. Column 0 carries the picture.
class ListView : public QAbstractItemView {
public:
    enum View { IconView = 0, SmallIconView = 1, SmallListView = 2, ReportView = 3 };

    explicit ListView(QWidget* parent);
    ~ListView() override;

    ListModel& Rows() { return rows; }
    const ListModel& Rows() const { return rows; }

    void SetViewBits(int view);
    int ViewBits() const { return view; }
    /// Size of a cell in icon view.
    void SetIconSpacing(QSize spacing);
    /// Large pictures serve the icon view, small ones all others. Not owned; null takes them away.
    void SetImages(const ImageList* large, const ImageList* small);
    /// Lays the rows out anew.
    void Arrange();

    QHeaderView* Header() const { return header; }
    /// Makes a column of the report as wide as its heading and the texts that are in sight need.
    void FitColumn(int column);
    /// First row that is wholly visible; 0 without rows.
    int TopIndex() const;
    /// Number of rows that fit whole into the view.
    int CountPerPage() const;
    /// -1 for none.
    int SelectedRow() const;
    /// Selects and scrolls to the row; one that is not there changes nothing.
    void SelectRow(int row);
    /// Bounds of the row in the viewport.
    QRect RowBounds(int row) const;

    /// Id of the tip of the row under the point, which is the row + 1; -1 for none.
    virtual int OnToolHitTest(QPoint point, QRect& bounds) const = 0;
    /// The first column and, where it isn't empty, " / " and the third; at most 80 characters. Empty for the id 0.
    std::wstring ToolTipText(int id) const;

    QRect visualRect(const QModelIndex& index) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    QModelIndex indexAt(const QPoint& point) const override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>& roles) override;
    void rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end) override;
    void rowsInserted(const QModelIndex& parent, int start, int end) override;
    void reset() override;

protected:
    /// Paints one row that is to be seen; called for no other.
    virtual void PaintRow(QPainter& painter, int row, const QRect& bounds);

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;
    void updateGeometries() override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    int horizontalOffset() const override;
    int verticalOffset() const override;
    bool isIndexHidden(const QModelIndex& index) const override;
    void setSelection(const QRect& rectangle, QItemSelectionModel::SelectionFlags command) override;
    QRegion visualRegionForSelection(const QItemSelection& selection) const override;

private:
    QSize CellSize() const;
    /// Cells side by side; in list view cells one above the other.
    int CellsAcross() const;
    QRect ContentRect(int row) const;
    int RowAt(QPoint point) const;
    void FirstAndLastVisible(int& first, int& last) const;
    void PaintReportRow(QPainter& painter, int row, const QRect& bounds);
    void PaintCell(QPainter& painter, int row, const QRect& bounds);
    void PaintPicture(QPainter& painter, int row, QPoint place);
    void PaintSelection(QPainter& painter, int row, const QRect& bounds);
    QColor TextColour(int row) const;
    QString Fitting(const QString& text, int width) const;
    bool IsRowSelected(int row) const;
    void PlaceHeader();

    ListModel rows;
    QHeaderView* header;
    const ImageList* largePictures = nullptr;
    const ImageList* smallPictures = nullptr;
    QSize iconSpacing{142, 120};
    int view = ReportView;
};
