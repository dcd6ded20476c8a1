#include "tessaro/browser/ListLabel.h"

QWidget* ListLabel::createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QWidget* const editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (editor != nullptr)
        editor->setAccessibleName(QStringLiteral("Name of %1").arg(index.data(Qt::DisplayRole).toString()));
    return editor;
}
