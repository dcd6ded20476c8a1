#include "tessaro/browser/printing/PrintProgress.h"

#include <QCoreApplication>
#include <QProgressBar>
#include <QVBoxLayout>

PrintProgress::PrintProgress(QWidget* owner, int range)
    : QDialog(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowStaysOnTopHint),
      bar(new QProgressBar(this)) {
    setObjectName(QStringLiteral("printProgress"));
    setWindowTitle(QStringLiteral("Print Progress"));
    setModal(false);
    bar->setObjectName(QStringLiteral("progress"));
    bar->setAccessibleName(windowTitle());
    // An empty range would show as one of unknown length.
    bar->setRange(0, std::max(1, range));
    bar->setValue(0);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(bar);
    setFixedSize(sizeHint().expandedTo({320, 0}));
    const QPoint middle = owner->frameGeometry().center();
    move(middle.x() - width() / 2, middle.y() - height() / 2);
    show();
    // A window is first seen when the window system has answered; keys and clicks keep waiting.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void PrintProgress::SetPosition(int position) {
    bar->setValue(std::min(position, bar->maximum()));
    bar->repaint();
}
