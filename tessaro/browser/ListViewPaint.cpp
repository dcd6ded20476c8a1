#include "tessaro/browser/ListView.h"

#include <QHeaderView>
#include <QPaintEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace {

constexpr int kTextMargin = 2;
constexpr int kIconTop = 3;
constexpr int kPictureMargin = 4;
constexpr int kRounding = 3;

} // namespace

void ListView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    int first = 0;
    int last = -1;
    FirstAndLastVisible(first, last);
    for (int row = first; row <= last; ++row) {
        QRect bounds = RowBounds(row);
        if (view == ReportView) {
            bounds.setWidth(std::max(bounds.width(), viewport()->width()));
            if (event->rect().intersects(bounds))
                PaintReportRow(painter, row, bounds);
        } else if (event->rect().intersects(bounds)) {
            PaintCell(painter, row, bounds);
        }
    }
}

bool ListView::IsRowSelected(int row) const {
    return selectionModel()->isRowSelected(row, {});
}

QColor ListView::TextColour(int row) const {
    const auto group = hasFocus() ? QPalette::Active : QPalette::Inactive;
    return palette().color(group, IsRowSelected(row) ? QPalette::HighlightedText : QPalette::Text);
}

void ListView::PaintSelection(QPainter& painter, int row, const QRect& bounds) {
    if (!IsRowSelected(row))
        return;
    const auto group = hasFocus() ? QPalette::Active : QPalette::Inactive;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(group, QPalette::Highlight));
    painter.drawRoundedRect(bounds, kRounding, kRounding);
    painter.restore();
}

void ListView::PaintPicture(QPainter& painter, int row, const QRect& place) {
    PictureCache& pictures = view == IconView ? largePictures : smallPictures;
    const QPixmap picture = pictures.Picture(rows.Image(row));
    if (picture.isNull())
        return;
    painter.drawPixmap(place.topLeft(), picture);
}

void ListView::PaintReportRow(QPainter& painter, int row, const QRect& bounds) {
    PaintSelection(painter, row, bounds.adjusted(1, 0, -1, -1));
    painter.setPen(palette().color(QPalette::AlternateBase).darker(104));
    painter.drawLine(bounds.bottomLeft(), bounds.bottomRight());
    const QSize picture = smallPictures.Size();
    if (picture.isValid()) {
        const QRect first(header->sectionViewportPosition(0), bounds.top(), header->sectionSize(0), bounds.height());
        painter.save();
        painter.setClipRect(first, Qt::IntersectClip);
        PaintPicture(painter, row,
                     {QPoint(first.left() + 2, bounds.top() + (bounds.height() - picture.height()) / 2), picture});
        painter.restore();
    }
    painter.setPen(TextColour(row));
    for (int column = 0; column < rows.columnCount(); ++column) {
        const QModelIndex index = rows.index(row, column);
        const QRect cell = visualRect(index).adjusted(kTextMargin, 0, -kTextMargin, 0);
        if (cell.width() <= 0)
            continue;
        const QString text = index.data(Qt::DisplayRole).toString();
        painter.drawText(cell, index.data(Qt::TextAlignmentRole).toInt() | Qt::TextSingleLine,
                         fontMetrics().elidedText(text, Qt::ElideRight, cell.width()));
    }
}

void ListView::PaintCell(QPainter& painter, int row, const QRect& bounds) {
    const QString text = rows.index(row, 0).data(Qt::DisplayRole).toString();
    PaintSelection(painter, row, bounds.adjusted(1, 1, -1, -1));
    QRect place;
    int alignment = Qt::AlignLeft | Qt::AlignVCenter;
    if (view == IconView) {
        const QSize picture = largePictures.Size();
        PaintPicture(
            painter, row,
            {QPoint(bounds.left() + (bounds.width() - picture.width()) / 2, bounds.top() + kIconTop), picture});
        place = bounds.adjusted(kTextMargin, kIconTop + std::max(0, picture.height()), -kTextMargin, -1);
        alignment = Qt::AlignHCenter | Qt::AlignVCenter;
    } else {
        const QSize picture = smallPictures.Size();
        PaintPicture(
            painter, row,
            {QPoint(bounds.left() + kPictureMargin, bounds.top() + (bounds.height() - picture.height()) / 2), picture});
        place = bounds.adjusted(std::max(0, picture.width()) + 2 * kPictureMargin, 0, -kTextMargin, 0);
    }
    painter.setPen(TextColour(row));
    painter.drawText(place, alignment | Qt::TextSingleLine,
                     fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
}
