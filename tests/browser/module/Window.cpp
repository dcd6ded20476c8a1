#include "tests/browser/module/Window.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QHeaderView>
#include <QTest>

namespace tests {
namespace {

constexpr int kPatience = 30'000;
constexpr int kCountColumn = 1, kStatusColumn = 2;

QPoint RowPlace(QAbstractItemView& list, int row) {
    const QModelIndex index = list.model()->index(row, 0);
    list.scrollTo(index);
    return list.visualRect(index).topLeft() + QPoint(20, 8);
}

} // namespace

void Window::Press(const char* button) const {
    auto& pressed = Control<QAbstractButton>(button);
    QTest::mouseClick(&pressed, Qt::LeftButton, {}, {6, pressed.height() / 2});
}

void Window::Type(QWidget& control, const QString& text) const {
    control.setFocus();
    QTest::keyClicks(&control, text);
}

void Window::Set(const char* box, const QString& text) const {
    QLineEdit& edit = *Control<QComboBox>(box).lineEdit();
    edit.selectAll();
    Type(edit, text);
}

QString Window::Cell(const QAbstractItemView& list, int row, int column) {
    return list.model()->index(row, column).data().toString();
}

QString Window::Column(const QAbstractItemView& list, int column) {
    QString texts;
    for (int row = 0; row < Rows(list); ++row)
        texts += Cell(list, row, column) + ' ';
    return texts;
}

int Window::Selected(const QAbstractItemView& list) {
    const QModelIndexList rows = list.selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void Window::Click(QAbstractItemView& list, int row, Qt::KeyboardModifiers modifiers) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, RowPlace(list, row));
}

void Window::DoubleClick(QAbstractItemView& list, int row) {
    const QPoint place = RowPlace(list, row);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
}

void Window::ClickHeading(const QAbstractItemView& list, int column) {
    auto* const header = list.findChild<QHeaderView*>();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(column) + 8, header->height() / 2});
}

void Window::RightClick(QAbstractItemView& list) {
    const QPoint place(30, 30);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, list.viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(list.viewport(), &event);
}

bool Window::WaitLoaded(int blocks) const {
    return WaitFor([&] {
        const int current = Selected(Directories());
        return workerIsIdle() && current >= 0 && Blocks().isVisible() && Rows(Blocks()) == blocks &&
               Cell(Directories(), current, kCountColumn) == QString::number(blocks) &&
               Cell(Directories(), current, kStatusColumn).isEmpty();
    });
}

bool Window::WaitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, kPatience);
}

} // namespace tests
