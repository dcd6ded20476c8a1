#include "tessaro/browser/EmptyHint.h"

#include "tessaro/browser/ListView.h"

#include <QEvent>

EmptyHint::EmptyHint(ListView& blocks, const ListView& directories)
    : QLabel(
          QStringLiteral("The catalogue is empty.\n\nPress \"Add\" and choose a folder that holds drawings. F1 shows "
                         "the guide."),
          blocks.viewport()),
      catalogue(directories) {
    constexpr int kMargin = 24;
    setObjectName(QStringLiteral("emptyHint"));
    setAccessibleDescription(QStringLiteral("What to do with an empty catalogue"));
    setWordWrap(true);
    setAlignment(Qt::AlignCenter);
    setMargin(kMargin);
    setForegroundRole(QPalette::PlaceholderText);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    blocks.viewport()->installEventFilter(this);
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(&directories.Rows(), signal, this, [this] { Refresh(); });
    connect(&directories.Rows(), &QAbstractItemModel::modelReset, this, [this] { Refresh(); });
    Refresh();
}

bool EmptyHint::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        Refresh();
    return QLabel::eventFilter(watched, event);
}

void EmptyHint::Refresh() {
    resize(parentWidget()->size());
    setVisible(catalogue.Rows().RowCount() == 0);
}
