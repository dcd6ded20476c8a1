#include "tessaro/browser/CrispPicture.h"
#include "tessaro/browser/ListView.h"

#include <QHeaderView>
#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>

namespace {

constexpr int kTextMargin = 2;
constexpr int kIconTop = 3;
constexpr int kPictureMargin = 4;
constexpr int kRounding = 3;
constexpr int kTextLimit = 1000; ///< characters of a text that are looked at; no column shows as many

/// Between the background and the text, much nearer to the background.
QColor LineColour(const QPalette& palette) {
    const QColor ground = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const auto mix = [](int near, int far) { return near + (far - near) / 10; };
    return {mix(ground.red(), text.red()), mix(ground.green(), text.green()), mix(ground.blue(), text.blue())};
}

} // namespace

void ListView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    int first = 0;
    int last = -1;
    FirstAndLastVisible(first, last);
    for (int row = first; row <= last; ++row) {
        QRect bounds = RowBounds(row);
        if (view == ReportView)
            bounds.setWidth(std::max(bounds.width(), viewport()->width()));
        if (event->rect().intersects(bounds))
            PaintRow(painter, row, bounds);
    }
}

void ListView::PaintRow(QPainter& painter, int row, const QRect& bounds) {
    if (view == ReportView)
        PaintReportRow(painter, row, bounds);
    else
        PaintCell(painter, row, bounds);
}

bool ListView::IsRowSelected(int row) const {
    return selectionModel()->isRowSelected(row, {});
}

QColor ListView::TextColour(int row) const {
    const auto group = hasFocus() ? QPalette::Active : QPalette::Inactive;
    return palette().color(group, IsRowSelected(row) ? QPalette::HighlightedText : QPalette::Text);
}

void ListView::PaintSelection(QPainter& painter, int row, const QRect& bounds) {
    const auto group = hasFocus() ? QPalette::Active : QPalette::Inactive;
    if (IsRowSelected(row)) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(group, QPalette::Highlight));
        painter.drawRoundedRect(bounds, kRounding, kRounding);
        painter.restore();
    } else if (hasFocus() && currentIndex().row() == row) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = bounds;
        focus.backgroundColor = palette().color(QPalette::Base);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

void ListView::PaintPicture(QPainter& painter, int row, QPoint place) {
    DrawCrisp(painter, place, ListPicture(view == IconView ? largePictures : smallPictures, rows.Image(row)));
}

void ListView::PaintReportRow(QPainter& painter, int row, const QRect& bounds) {
    PaintSelection(painter, row, bounds.adjusted(1, 0, -1, -1));
    painter.setPen(QPen(LineColour(palette()), 0));
    painter.drawLine(bounds.bottomLeft(), bounds.bottomRight());
    const QSize picture = ListPictureSize(smallPictures);
    if (picture.isValid()) {
        const QRect first(header->sectionViewportPosition(0), bounds.top(), header->sectionSize(0), bounds.height());
        painter.save();
        painter.setClipRect(first, Qt::IntersectClip);
        PaintPicture(painter, row, {first.left() + 2, bounds.top() + (bounds.height() - picture.height()) / 2});
        painter.restore();
    }
    painter.setPen(TextColour(row));
    for (int column = 0; column < rows.columnCount(); ++column) {
        const QModelIndex index = rows.index(row, column);
        const QRect cell = visualRect(index).adjusted(kTextMargin, 0, -kTextMargin, 0);
        if (cell.width() <= 0)
            continue;
        painter.drawText(cell, index.data(Qt::TextAlignmentRole).toInt() | Qt::TextSingleLine,
                         Fitting(index.data(Qt::DisplayRole).toString(), cell.width()));
    }
}

void ListView::PaintCell(QPainter& painter, int row, const QRect& bounds) {
    PaintSelection(painter, row, bounds.adjusted(1, 1, -1, -1));
    QRect place;
    int alignment = Qt::AlignLeft | Qt::AlignVCenter;
    if (view == IconView) {
        const QSize picture = ListPictureSize(largePictures);
        PaintPicture(painter, row, {bounds.left() + (bounds.width() - picture.width()) / 2, bounds.top() + kIconTop});
        place = bounds.adjusted(kTextMargin, kIconTop + std::max(0, picture.height()), -kTextMargin, -1);
        alignment = Qt::AlignHCenter | Qt::AlignVCenter;
    } else {
        const QSize picture = ListPictureSize(smallPictures);
        PaintPicture(painter, row,
                     {bounds.left() + kPictureMargin, bounds.top() + (bounds.height() - picture.height()) / 2});
        place = bounds.adjusted(std::max(0, picture.width()) + 2 * kPictureMargin, 0, -kTextMargin, 0);
    }
    painter.setPen(TextColour(row));
    painter.drawText(place, alignment | Qt::TextSingleLine,
                     Fitting(rows.index(row, 0).data(Qt::DisplayRole).toString(), place.width()));
}

void ListView::FitColumn(int column) {
    int first = 0;
    int last = -1;
    FirstAndLastVisible(first, last);
    int text = 0;
    for (int row = first; row <= last; ++row)
        text = std::max(text, fontMetrics().horizontalAdvance(
                                  rows.index(row, column).data(Qt::DisplayRole).toString().left(kTextLimit)));
    // What stands in the cell beside its text: the picture of the first one.
    const int beside = last < first ? 0 : header->sectionSize(column) - visualRect(rows.index(first, column)).width();
    header->resizeSection(column, std::max(header->sectionSizeHint(column), text + beside + 2 * kTextMargin + 1));
}

QString ListView::Fitting(const QString& text, int width) const {
    return fontMetrics().elidedText(text.left(kTextLimit), Qt::ElideRight, width);
}
