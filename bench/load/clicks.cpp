// Clicks on directories while the library is scanned for the first time.
#include "bench/Harness.h"
#include "bench/browser/Application.h"
#include "bench/load/Library.h"

#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/UserInterface.h"
#include "tessaro/reading/Loader.h"

#include <QTimer>

#include <algorithm>
#include <random>

namespace {

constexpr int kClicks = 1000;
constexpr double kLatencyBound = 50; ///< milliseconds
constexpr int kPause = 25;           ///< milliseconds between the end of a click and the next one

/// Waiting shown to the user inside a click is the saving or loading of a picture file; nothing else shows any.
class Waits : public platform::UserInterface {
public:
    platform::MessageAnswer MessageBox(const std::wstring& text, const std::wstring&, platform::MessageButtons,
                                       platform::MessageIcon) override {
        complaints.push_back(text);
        return platform::MessageAnswer::Ok;
    }
    void BeginWaitCursor() override {
        if (depth++ == 0)
            began = Seconds();
    }
    void EndWaitCursor() override {
        if (--depth == 0)
            waited += Seconds() - began;
    }
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override { return {}; }
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return {}; }
    void ShowHelp(const std::wstring&) override {}

    double waited = 0;
    std::vector<std::wstring> complaints;

private:
    int depth = 0;
    double began = 0;
};

/// Clicks, waits until the event loop has nothing left to do, and clicks again.
class Clicker : public QObject {
public:
    Clicker(BlockDlg& clicked, Waits& shown) : dialog(clicked), waits(shown) {}

    void Begin() {
        QTimer::singleShot(kPause, this, [this] { Click(); });
    }
    std::vector<double> latencies; ///< milliseconds
    int whileScanning = 0;

private:
    void Click() {
        if (std::ranges::any_of(directories, [](const Directory* directory) { return !directory->loaded; }))
            ++whileScanning;
        const int rows = dialog.DirectoryRowCount();
        waits.waited = 0;
        began = Seconds();
        dialog.SelectDirectoryRow(static_cast<int>(random() % static_cast<unsigned>(rows)));
        inPictures = waits.waited;
        // Comes when the loop has nothing else to do.
        QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::LowEventPriority);
    }
    bool event(QEvent* event) override {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        latencies.push_back((Seconds() - began - inPictures) * 1e3);
        if (latencies.size() < kClicks)
            Begin();
        else
            dialog.reject();
        return true;
    }

    BlockDlg& dialog;
    Waits& waits;
    std::mt19937 random{20};
    double began = 0, inPictures = 0;
};

void Clicks(bench::Table& table) {
    Application::Get();
    const LargeCatalogue catalogue(LibraryFolders().size());
    Waits waits;
    std::vector<double> latencies;
    int whileScanning = 0;
    {
        BlockDlg dialog;
        platform::SetUserInterface(&waits);
        Clicker clicker(dialog, waits);
        QTimer::singleShot(0, &dialog, [&] { clicker.Begin(); });
        dialog.DoModal();
        WaitForLastClose();
        latencies = clicker.latencies;
        whileScanning = clicker.whileScanning;
    }
    platform::SetUserInterface(nullptr);
    std::ranges::sort(latencies);
    /// The latency that so many of a thousand clicks keep to.
    const auto keptBy = [&](std::size_t thousandths) { return latencies[latencies.size() * thousandths / 1000 - 1]; };
    table.Value("clicks that found nothing left to scan", kClicks - whileScanning, "clicks",
                DrawingCount() >= 100'000 ? 0 : kClicks);
    table.Note("click while scanning: half of the clicks", keptBy(500), "ms");
    table.Note("click while scanning: 99 % of the clicks", keptBy(990), "ms");
    table.Value("click while scanning: 99.9 % of " + std::to_string(kClicks) + " clicks", keptBy(999), "ms",
                kLatencyBound);
    table.Note("click while scanning: the longest", latencies.back(), "ms");
    table.Value("messages meanwhile", static_cast<double>(waits.complaints.size()), "messages", 0);
}

const bench::Rows clicks("clicks", Clicks);

} // namespace
