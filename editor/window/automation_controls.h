#pragma once

#include <QModelIndex>
#include <QString>

class QAbstractItemView;
class QAction;
class QWidget;

/// Finding the controls of a window.
namespace editor {

/// A caption without its ampersands and line breaks.
QString plainCaption(QString text);
/// The visible control of that object name; null without one.
QWidget* controlNamed(QWidget& window, const QString& name);
/// The visible control of that object name, else the visible button with that caption.
QWidget* controlOrButton(QWidget& window, const QString& name);
/// An entry of an open popup menu, or of the window's menu bar; null without one.
QAction* menuEntry(QWidget& window, const QString& caption);
/// What a control says: the text of a label, button, box or edit, or the rows of a list, one a line.
QString controlText(const QWidget& control);
/// The row whose text in its first column is this one; invalid without one.
QModelIndex rowOf(const QAbstractItemView& list, const QString& text);

} // namespace editor
