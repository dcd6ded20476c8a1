#include "tests/browser/portrait/Dialogs.h"

#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QMenu>
#include <QTimer>

#include <cstdlib>
#include <functional>

namespace {

constexpr int kPatience = 30'000, kPeriod = 20; ///< milliseconds

/// Has the dialog of that name opened, takes its picture when it is up, and dismisses it.
bool Grab(const std::function<void()>& open, const QString& name, const QString& file) {
    bool done = false;
    QElapsedTimer waiting;
    waiting.start();
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog != nullptr && dialog->objectName() == name) {
            look.stop();
            done = dialog->grab().save(file);
            dialog->reject();
        } else if (waiting.elapsed() > kPatience) {
            std::exit(1);
        }
    });
    look.start(kPeriod);
    open();
    return done;
}

/// Picks the entry of the menu that opens next.
void Pick(const QString& entry) {
    QTimer::singleShot(0, qApp, [entry] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr)
            return;
        menu->close();
        for (QAction* action : menu->actions())
            if (action->text() == entry)
                action->trigger();
    });
}

} // namespace

bool GrabDialogs(BlockDlg& browser, const QString& out) {
    BlockDlgControls& controls = browser.Controls();
    bool done = Grab([&] { controls.preferences->click(); }, QStringLiteral("Prefs"), out + "/preferences.png");
    const auto properties = [&] {
        Pick(QStringLiteral("Properties"));
        emit controls.directoryList->customContextMenuRequested({5, 5});
    };
    done = Grab(properties, QStringLiteral("DirProps"), out + "/properties.png") && done;
    controls.blockList->SelectRow(2);
    return Grab([&] { controls.editDescription->click(); }, QStringLiteral("EditDesc"), out + "/description.png") &&
           done;
}
