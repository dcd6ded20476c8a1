// The larger picture of one block: Alt and a click, or the space bar, on the block list.
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/browser/QuickPic.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/placement/OwnBlock.h"

#include <QGuiApplication>
#include <QKeyEvent>

namespace {

/// Watches the block list for the space bar.
class SpaceBar : public QObject {
public:
    SpaceBar(ListView& list, std::function<void()> pressed) : QObject(&list), action(std::move(pressed)) {
        list.installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress)
            return QObject::eventFilter(watched, event);
        const auto* const key = static_cast<const QKeyEvent*>(event);
        if (key->key() != Qt::Key_Space || key->modifiers() != Qt::NoModifier || key->isAutoRepeat())
            return false;
        action();
        return true;
    }

private:
    const std::function<void()> action;
};

bool IsAltDown() {
    return QGuiApplication::queryKeyboardModifiers().testFlag(Qt::AltModifier);
}

} // namespace

void BlockDlg::ConnectQuickPic() {
    connect(controls->blockList, &QAbstractItemView::clicked, this, [this] {
        if (IsAltDown())
            Handle([this] { OpenQuickPic(); });
    });
    new SpaceBar(*controls->blockList, [this] { Handle([this] { OpenQuickPic(); }); });
}

void BlockDlg::OpenQuickPic() {
    const int row = SelectedBlockRow();
    const Directory* const directory = currentDirectory;
    if (row < 0 || directory == nullptr)
        return;
    auto* const block = static_cast<Block*>(controls->blockList->Rows().Data(row));
    // A row may still be of the directory before, whose names lead to other drawings here.
    if (!IsBlockOf(directory, block))
        return;
    quickPic = std::make_unique<QuickPic>(this, *this);
    try {
        quickPic->Show(*directory, *block);
    } catch (...) {
        quickPic.reset(); // What holds the mouse must not stand in the way of the message.
        throw;
    }
}
