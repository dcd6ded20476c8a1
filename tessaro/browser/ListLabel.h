#pragma once

#include <QStyledItemDelegate>

/// Makes the edit box in which a row's first text is changed.
class ListLabel : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
