#include "tessaro/browser/ListView.h"

#include "tessaro/browser/ListLabel.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kRowPadding = 6;     ///< above and below a row's text together
constexpr int kPictureGap = 4;     ///< around a small picture
constexpr int kSmallCellText = 22; ///< width of a small cell's text, in average characters

/// Headings are cut at their end, with as much of the text as the column takes, however they are aligned.
class ListHeader : public QHeaderView {
public:
    explicit ListHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override {
        QHeaderView::initStyleOptionForIndex(option, section);
        const QString text = model()->headerData(section, Qt::Horizontal).toString();
        const int room = sectionSize(section) - 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
        if (fontMetrics().horizontalAdvance(text) <= room)
            return;
        option->textAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        option->text = fontMetrics().elidedText(text, Qt::ElideRight, room);
    }
};

} // namespace

ListView::ListView(QWidget* parent) : QAbstractItemView(parent), header(new ListHeader(this)) {
    setModel(&rows);
    setItemDelegate(new ListLabel(this));
    header->setModel(&rows);
    header->setSectionsClickable(true);
    header->setHighlightSections(false);
    header->setMinimumSectionSize(0);
    header->setTextElideMode(Qt::ElideRight);
    header->setFocusProxy(this);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setTextElideMode(Qt::ElideRight);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setEditTriggers(SelectedClicked | EditKeyPressed);
    connect(header, &QHeaderView::sectionResized, this, [this] {
        updateGeometries();
        viewport()->update();
    });
    connect(header, &QHeaderView::sectionHandleDoubleClicked, this, &ListView::FitColumn);
}

ListView::~ListView() {
    setModel(nullptr);
}

void ListView::SetViewBits(int newView) {
    if (newView < IconView || newView > ReportView || newView == view)
        return;
    view = newView;
    Arrange();
}

void ListView::SetIconSpacing(QSize spacing) {
    iconSpacing = spacing;
    Arrange();
}

void ListView::SetImages(const ImageList* large, const ImageList* small) {
    largePictures = large;
    smallPictures = small;
    Arrange();
}

void ListView::Arrange() {
    PlaceHeader();
    updateGeometries();
    viewport()->update();
}

int ListView::TopIndex() const {
    const QSize cell = CellSize();
    if (view == SmallListView)
        return std::min((horizontalOffset() + cell.width() - 1) / cell.width() * CellsAcross(),
                        std::max(0, rows.RowCount() - 1));
    const int line = (verticalOffset() + cell.height() - 1) / cell.height();
    return std::clamp(line * CellsAcross(), 0, std::max(0, rows.RowCount() - 1));
}

int ListView::CountPerPage() const {
    const QSize cell = CellSize();
    if (view == SmallListView)
        return std::max(1, viewport()->width() / cell.width()) * CellsAcross();
    return std::max(1, viewport()->height() / cell.height()) * CellsAcross();
}

int ListView::SelectedRow() const {
    const QModelIndexList selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : selected.first().row();
}

void ListView::SelectRow(int row) {
    if (!rows.HasRow(row))
        return;
    const QModelIndex index = rows.index(row, 0);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

QRect ListView::RowBounds(int row) const {
    return rows.HasRow(row) ? ContentRect(row).translated(-horizontalOffset(), -verticalOffset()) : QRect();
}

QSize ListView::CellSize() const {
    const int textHeight = fontMetrics().height();
    if (view == IconView)
        return iconSpacing;
    const QSize picture = ListPictureSize(smallPictures);
    const int height = std::max(textHeight + kRowPadding, picture.isValid() ? picture.height() + kPictureGap : 0);
    if (view == ReportView)
        return {std::max(1, header->length()), height};
    const int text = kSmallCellText * fontMetrics().averageCharWidth();
    return {(picture.isValid() ? picture.width() + 2 * kPictureGap : kPictureGap) + text, height};
}

int ListView::CellsAcross() const {
    const QSize cell = CellSize();
    switch (view) {
    case ReportView:
        return 1;
    case SmallListView:
        return std::max(1, viewport()->height() / cell.height());
    default:
        return std::max(1, viewport()->width() / cell.width());
    }
}

QRect ListView::ContentRect(int row) const {
    const QSize cell = CellSize();
    const int across = CellsAcross();
    if (view == SmallListView)
        return {QPoint(row / across * cell.width(), row % across * cell.height()), cell};
    return {QPoint(row % across * cell.width(), row / across * cell.height()), cell};
}

int ListView::RowAt(QPoint point) const {
    const QPoint place = point + QPoint(horizontalOffset(), verticalOffset());
    if (place.x() < 0 || place.y() < 0)
        return -1;
    const QSize cell = CellSize();
    const int across = CellsAcross();
    const int column = place.x() / cell.width();
    const int line = place.y() / cell.height();
    if (view == SmallListView ? line >= across : column >= across)
        return -1;
    const int row = view == SmallListView ? column * across + line : line * across + column;
    return rows.HasRow(row) ? row : -1;
}

void ListView::FirstAndLastVisible(int& first, int& last) const {
    const QSize cell = CellSize();
    const int across = CellsAcross();
    const int start = view == SmallListView ? horizontalOffset() / cell.width() : verticalOffset() / cell.height();
    const int end = view == SmallListView ? (horizontalOffset() + viewport()->width()) / cell.width()
                                          : (verticalOffset() + viewport()->height()) / cell.height();
    first = start * across;
    last = std::min((end + 1) * across, rows.RowCount()) - 1;
}

QRect ListView::visualRect(const QModelIndex& index) const {
    if (!index.isValid())
        return {};
    QRect bounds = RowBounds(index.row());
    if (view != ReportView)
        return bounds;
    bounds.setLeft(header->sectionViewportPosition(index.column()));
    bounds.setWidth(header->sectionSize(index.column()));
    const QSize picture = ListPictureSize(smallPictures);
    if (index.column() == 0 && picture.isValid())
        bounds.adjust(picture.width() + kPictureGap, 0, 0, 0);
    return bounds;
}

void ListView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (!index.isValid())
        return;
    updateGeometries();
    const QRect content = ContentRect(index.row());
    const auto reach = [](QScrollBar* bar, int start, int length, int page) {
        if (start < bar->value())
            bar->setValue(start);
        else if (start + length > bar->value() + page)
            bar->setValue(std::min(start, start + length - page));
    };
    if (hint == PositionAtTop)
        verticalScrollBar()->setValue(content.top());
    else if (view == SmallListView)
        reach(horizontalScrollBar(), content.left(), content.width(), viewport()->width());
    else
        reach(verticalScrollBar(), content.top(), content.height(), viewport()->height());
}

QModelIndex ListView::indexAt(const QPoint& point) const {
    const int row = RowAt(point);
    if (row < 0)
        return {};
    if (view != ReportView)
        return rows.index(row, 0);
    const int column = header->logicalIndexAt(point.x());
    return column < 0 ? QModelIndex() : rows.index(row, column);
}

void ListView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QList<int>&) {
    if (!isVisible())
        return;
    int first = 0;
    int last = -1;
    FirstAndLastVisible(first, last);
    first = std::max(first, topLeft.row());
    last = std::min(last, bottomRight.row());
    for (int row = first; row <= last; ++row) {
        const QRect bounds = RowBounds(row);
        viewport()->update(0, bounds.top(), viewport()->width(), bounds.height());
    }
}

void ListView::rowsAboutToBeRemoved(const QModelIndex&, int, int) {
    // The selection goes with its row; no neighbour takes it over.
    if (state() == EditingState)
        setState(NoState);
    scheduleDelayedItemsLayout();
}

void ListView::rowsInserted(const QModelIndex&, int, int) {
    scheduleDelayedItemsLayout();
}

void ListView::reset() {
    QAbstractItemView::reset();
    horizontalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(0);
}

void ListView::resizeEvent(QResizeEvent* event) {
    QAbstractItemView::resizeEvent(event);
    Arrange();
}

void ListView::changeEvent(QEvent* event) {
    QAbstractItemView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        Arrange();
}

void ListView::mousePressEvent(QMouseEvent* event) {
    if (!indexAt(event->position().toPoint()).isValid())
        clearSelection();
    QAbstractItemView::mousePressEvent(event);
}

void ListView::scrollContentsBy(int dx, int dy) {
    if (view == ReportView && dx != 0)
        header->setOffset(horizontalOffset());
    if (const double factor = devicePixelRatioF(); factor == std::floor(factor)) {
        scrollDirtyRegion(dx, dy);
        viewport()->scroll(dx, dy);
    } else {
        viewport()->update(); // what is moved would not land on whole pixels
    }
}

void ListView::PlaceHeader() {
    const bool shown = view == ReportView;
    const int height = shown ? header->sizeHint().height() : 0;
    if (viewportMargins() != QMargins(0, height, 0, 0))
        setViewportMargins(0, height, 0, 0);
    header->setVisible(shown);
    const QRect port = viewport()->geometry();
    header->setGeometry(port.left(), port.top() - height, port.width(), height);
    header->setOffset(shown ? horizontalOffset() : 0);
}

void ListView::updateGeometries() {
    const QSize cell = CellSize();
    const QSize page = viewport()->size();
    const int across = CellsAcross();
    const int lines = (rows.RowCount() + across - 1) / across;
    QSize content;
    switch (view) {
    case ReportView:
        content = {header->length(), lines * cell.height()};
        break;
    case SmallListView:
        content = {lines * cell.width(), 0};
        break;
    default:
        content = {0, lines * cell.height()};
    }
    horizontalScrollBar()->setSingleStep(view == SmallListView ? cell.width() : fontMetrics().averageCharWidth() * 4);
    horizontalScrollBar()->setPageStep(page.width());
    horizontalScrollBar()->setRange(0, std::max(0, content.width() - page.width()));
    verticalScrollBar()->setSingleStep(cell.height());
    verticalScrollBar()->setPageStep(page.height());
    verticalScrollBar()->setRange(0, std::max(0, content.height() - page.height()));
    QAbstractItemView::updateGeometries();
    const QRect port = viewport()->geometry();
    if (view == ReportView && header->width() != port.width())
        PlaceHeader();
}

QModelIndex ListView::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
    if (rows.RowCount() == 0)
        return {};
    const int present = currentIndex().row();
    if (present < 0)
        return rows.index(0, 0);
    const int across = CellsAcross();
    const bool byColumn = view == SmallListView;
    int step = 0;
    switch (action) {
    case MoveUp:
        step = byColumn ? -1 : -across;
        break;
    case MoveDown:
        step = byColumn ? 1 : across;
        break;
    case MoveLeft:
    case MovePrevious:
        step = view == ReportView && action == MoveLeft ? 0 : (byColumn && action == MoveLeft ? -across : -1);
        break;
    case MoveRight:
    case MoveNext:
        step = view == ReportView && action == MoveRight ? 0 : (byColumn && action == MoveRight ? across : 1);
        break;
    case MovePageUp:
        return rows.index(std::max(0, present - CountPerPage()), 0);
    case MovePageDown:
        return rows.index(std::min(rows.RowCount() - 1, present + CountPerPage()), 0);
    case MoveHome:
        return rows.index(0, 0);
    case MoveEnd:
        return rows.index(rows.RowCount() - 1, 0);
    }
    const int next = present + step;
    return rows.index(rows.HasRow(next) ? next : present, 0);
}

int ListView::horizontalOffset() const {
    return horizontalScrollBar()->value();
}

int ListView::verticalOffset() const {
    return verticalScrollBar()->value();
}

bool ListView::isIndexHidden(const QModelIndex& index) const {
    return view != ReportView && index.column() > 0;
}

void ListView::setSelection(const QRect& rectangle, QItemSelectionModel::SelectionFlags command) {
    const QModelIndex index = indexAt(rectangle.topLeft());
    if (index.isValid())
        selectionModel()->select(index, command | QItemSelectionModel::Rows);
}

QRegion ListView::visualRegionForSelection(const QItemSelection& selection) const {
    QRegion region;
    for (const QItemSelectionRange& range : selection)
        for (int row = range.top(); row <= range.bottom(); ++row) {
            QRect bounds = RowBounds(row);
            if (view == ReportView)
                bounds.setWidth(std::max(bounds.width(), viewport()->width()));
            region += bounds;
        }
    return region;
}
