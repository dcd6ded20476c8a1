// The dialog as a whole: opening it, and the rows that the worker fills while it is open.
#include "bench/Harness.h"
#include "bench/browser/Application.h"
#include "bench/browser/Catalogue.h"
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/reading/Loader.h"

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <array>

namespace {

/// Notes when the window has been painted for the first time, and closes it then.
class FirstPaint : public QObject {
public:
    explicit FirstPaint(BlockDlg& watched) : dialog(watched) {
        time.start();
        watched.installEventFilter(this);
    }
    double seconds = 0;

private:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint && seconds == 0)
            QTimer::singleShot(0, &dialog, [this] {
                seconds = static_cast<double>(time.nsecsElapsed()) / 1e9;
                dialog.reject();
            });
        return false;
    }
    BlockDlg& dialog;
    QElapsedTimer time;
};

/// Milliseconds until the first paint on 200 Directories of that many Blocks each; the middle of seven.
double OpenTime(int blocks) {
    std::array<double, 7> times{};
    Catalogue catalogue;
    for (int directory = 0; directory < 200; ++directory)
        catalogue.Add(blocks, directory == 0);
    for (double& time : times) {
        BlockDlg dialog;
        const FirstPaint painted(dialog);
        dialog.DoModal();
        WaitForLastClose();
        time = painted.seconds * 1e3;
    }
    std::nth_element(times.begin(), times.begin() + 3, times.end());
    return times[3];
}

void Open(bench::Table& table) {
    Application::Get();
    OpenTime(1);
    const double few = OpenTime(1);
    const double many = OpenTime(500);
    table.Note("open the dialog with 200 directories and 200 blocks", few, "ms");
    table.Value("open the dialog with 200 directories and 100,000 blocks, more than with 200", many - few, "ms", 20);
}

void Batches(bench::Table& table) {
    Application& application = Application::Get();
    Catalogue catalogue;
    Directory* const directory = catalogue.Add(20'000, true);
    directory->loaded = false;
    BlockDlg dialog;
    double longest = 0;
    int fewest = 20'000, before = 0;
    application.onService = [&](double seconds) {
        const int rows = dialog.BlockRowCount();
        if (seconds < 0) {
            before = rows;
            return;
        }
        if (closeArmed)
            longest = std::max(longest, seconds);
        if (rows > before && rows < 20'000)
            fewest = std::min(fewest, rows - before);
    };
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (dialog.BlockRowCount() == 20'000 && dialog.Controls().blockList->isVisible() && closeArmed)
            dialog.reject();
    });
    watch.start(50);
    dialog.DoModal();
    application.onService = nullptr;
    WaitForLastClose();
    table.Value("fill 20,000 rows: longest hold of the main thread", longest * 1e3, "ms", 10);
    table.Value("fill 20,000 rows: 256 against the rows of the smallest batch", 256.0 / fewest, "times", 1);
}

const bench::Rows open("open", Open);
const bench::Rows batches("batches", Batches);

} // namespace
