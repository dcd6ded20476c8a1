// From the first drawing's message to the dialog's first paint, the pictures left for later.
#include "bench/Harness.h"
#include "bench/browser/Application.h"
#include "bench/load/Library.h"

#include "tessaro/browser/BlockDlg.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"
#include "tests/support/TemporaryFolder.h"

#include <QTimer>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <zlib.h>

namespace {

constexpr double kFirstPaintBound = 3;
constexpr std::size_t kHeadSize = 16;

/// Closes the dialog when it has been painted for the first time, and keeps the moment.
class FirstPaint : public QObject {
public:
    explicit FirstPaint(BlockDlg& watched) : dialog(watched) { watched.installEventFilter(this); }
    double moment = 0;

private:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint && moment == 0)
            QTimer::singleShot(0, &dialog, [this] {
                moment = Seconds();
                dialog.reject();
            });
        return false;
    }
    BlockDlg& dialog;
};

/// Seconds of what the message does, reading the catalogue, and of the opening that follows.
double StartToFirstPaint() {
    const double start = Seconds();
    LoadIni();
    BlockDlg dialog;
    const FirstPaint painted(dialog);
    dialog.DoModal();
    WaitForLastClose();
    return painted.moment - start;
}

/// The Blocks as a scan leaves them; their drawings need not be read for it.
void FillRecords() {
    std::size_t folder = 0;
    for (Directory* directory : directories) {
        for (const auto& file : platform::ListFiles(platform::FromNarrow(LibraryFolders()[folder].native()), L"dwg")) {
            auto* const block = new Block;
            block->name = platform::SplitPath(file.name).name;
            block->description = L"left Chair, " + std::to_wstring(directory->blocks.size()) + L" mm";
            block->status = {file.status.size, file.status.created, file.status.modified};
            block->cachedStatus = block->status;
            block->created = block->modified = file.status.modified;
            block->checked = block->cached = true;
            block->imageIndex = static_cast<std::int32_t>(directory->blocks.size()) + 1;
            block->fileType = 16 + static_cast<std::int32_t>(directory->blocks.size()) % 5;
            directory->blocks.push_back(block);
        }
        ++folder;
    }
}

/// The stored catalogue of so many folders; read anew for each start.
class StoredCatalogue {
public:
    explicit StoredCatalogue(std::size_t folders) : catalogue(folders) {
        FillRecords();
        demandLoadCache = 1;
        SaveIni(true);
        container = tests::readFile(platform::ToNarrow(cachePath));
        LargeCatalogue::Forget();
    }

    bench::Run Start(std::vector<double>& times) const {
        return {[&times] { times.push_back(StartToFirstPaint()); }, LargeCatalogue::Forget};
    }
    /// Seconds that zlib takes for the stored bytes alone.
    double Inflating() const {
        std::uint32_t length = 0;
        std::memcpy(&length, container.data() + 8, sizeof length);
        std::vector<Bytef> plain(length);
        return bench::Median({[&] {
            uLongf count = plain.size();
            if (uncompress(plain.data(), &count, reinterpret_cast<const Bytef*>(container.data()) + kHeadSize,
                           container.size() - kHeadSize) != Z_OK)
                throw std::runtime_error("the main cache can't be inflated");
        }});
    }
    std::size_t Size() const { return container.size(); }

private:
    const LargeCatalogue catalogue;
    std::string container;
};

double MedianStart(const StoredCatalogue& stored) {
    std::vector<double> times;
    bench::Median(stored.Start(times));
    times.erase(times.begin()); // the first one warms up
    std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2), times.end());
    return times[times.size() / 2];
}

double EmptyStart() {
    return MedianStart(StoredCatalogue(0));
}

void Start(bench::Table& table) {
    Application::Get();
    const double empty = EmptyStart();
    const std::size_t all = LibraryFolders().size();
    for (const std::size_t folders : {all / 100, all / 10, all}) {
        if (folders == 0)
            continue;
        const StoredCatalogue stored(folders);
        const double more = MedianStart(stored) - empty, floor = stored.Inflating();
        const std::string drawings =
            std::to_string(static_cast<std::size_t>(DrawingCount()) * folders / all) + " drawings";
        table.Note("growth, first paint, " + drawings, more * 1e3, "ms");
        table.Note("growth, main cache, " + drawings, static_cast<double>(stored.Size()) / 1e6, "MB");
        if (folders != all)
            continue;
        table.Value("from the first drawing's message to the first paint with " + drawings +
                        ", less that with none, to inflating the main cache",
                    std::max(0.0, more) / floor, "times", kFirstPaintBound);
        table.Note("inflating the main cache", floor * 1e3, "ms");
    }
}

const bench::Rows start("start", Start);

} // namespace
