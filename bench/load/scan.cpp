// The first scan of the large library to its parts, the pass over it behind a restart, what both take of memory, and
// how it grows with the library.
#include "bench/Floors.h"
#include "bench/Harness.h"
#include "bench/Subject.h"
#include "bench/load/Library.h"

#include "tessaro/catalogue/MainCache.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/reading/Examine.h"
#include "tessaro/reading/Loader.h"
#include "tests/support/RecorderWindow.h"

#include <algorithm>
#include <optional>
#include <string>

namespace {

using bench::Examined;
using bench::Subject;

constexpr double kFirstScanBound = 1.3, kRestartBound = 1.5, kMemoryBound = 300;
constexpr std::int32_t kWentThrough = 123;
constexpr int kRestartPasses = 3;

std::vector<Subject> SubjectsOf(const std::filesystem::path& folder) {
    std::vector<Subject> subjects;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        subjects.push_back(Examined(entry.path()));
    return subjects;
}

/// Reading with decoding, the helper and the rendering: the floors of an examination.
double FloorOf(std::vector<Subject>& subjects) {
    const double start = Seconds();
    for (Subject& subject : subjects) {
        bench::ReadBareDrawing(subject.native);
        Block block;
        MarkPoints points;
        LoadDrawing(subject.path, block, true, subject.preview ? &*subject.preview : nullptr, points);
        if (subject.preview)
            bench::Keep(DrawThumbnails(true, subject.fileType, *subject.preview, subject.isPng, points).small);
    }
    return Seconds() - start;
}

/// A window that is open on the catalogue, the first Directory shown.
class OpenWindow {
public:
    OpenWindow() {
        theBlockDlg = &window;
        dialogOpen = true;
        for (Directory* directory : directories)
            directory->listIndex = window.InsertDirectoryRow(directory->description, directory);
        currentDirectory = directories.front();
    }
    ~OpenWindow() {
        currentDirectory = nullptr;
        dialogOpen = false;
        theBlockDlg = nullptr;
    }
    OpenWindow(const OpenWindow&) = delete;
    OpenWindow& operator=(const OpenWindow&) = delete;

private:
    tests::RecorderWindow window;
};

/// Seconds of one call.
double TimeOfLoadDir(Directory* directory, bench::Table& table) {
    const double start = Seconds();
    if (LoadDir(directory) != kWentThrough)
        table.Value("a folder whose pass did not go through", 1, "folders", 0);
    return Seconds() - start;
}

bool IsCheckpoint(std::size_t folders) {
    const std::size_t all = directories.size();
    return folders == all || folders == all / 10 || folders == all / 100;
}

/// A line that dev/curves makes a picture of.
void NoteGrowth(bench::Table& table, const char* what, std::size_t folders, double value, const char* unit) {
    const std::size_t drawings = static_cast<std::size_t>(DrawingCount()) * folders / directories.size();
    table.Note("growth, " + std::string(what) + ", " + std::to_string(drawings) + " drawings", value, unit);
}

void FirstScan(bench::Table& table) {
    double work = 0, floor = 0, most = 0, before = MegabytesInMemory();
    std::size_t folders = 0;
    OnWorker([&] {
        for (Directory* directory : directories) {
            std::vector<Subject> subjects = SubjectsOf(LibraryFolders()[folders]);
            // In turn, so that what else the machine does falls on both.
            if (folders % 2 == 0)
                floor += FloorOf(subjects);
            work += TimeOfLoadDir(directory, table);
            if (folders % 2 == 1)
                floor += FloorOf(subjects);
            most = std::max(most, MegabytesInMemory());
            if (IsCheckpoint(++folders)) {
                NoteGrowth(table, "first scan", folders, work, "s");
                NoteGrowth(table, "memory", folders, most - before, "MB");
            }
        }
    });
    table.Value("first scan of " + std::to_string(DrawingCount()) + " drawings to its parts", work / floor, "times",
                kFirstScanBound);
    table.Note("first scan: over the passes", work, "s");
    table.Note("first scan: its parts", floor, "s");
    table.Value("first scan: most memory of the process", most, "MB", kMemoryBound);
}

/// As a new start finds it: from the cache, without pictures, all to be compared.
void Restart(bench::Table& table) {
    for (int pass = 0; pass < kRestartPasses; ++pass) {
        LargeCatalogue::Forget();
        demandLoadCache = 1;
        ReadMainCache();
        const OpenWindow open;
        double work = 0, floor = 0;
        std::size_t folders = 0;
        OnWorker([&] {
            for (Directory* directory : directories) {
                const std::string folder = LibraryFolders()[folders].native();
                const auto look = [&] {
                    const double start = Seconds();
                    bench::Keep(bench::ListAndLook(folder));
                    floor += Seconds() - start;
                };
                if (folders % 2 == 0)
                    look();
                work += TimeOfLoadDir(directory, table);
                if (folders % 2 == 1)
                    look();
                if (IsCheckpoint(++folders) && pass == kRestartPasses - 1)
                    NoteGrowth(table, "restart", folders, work, "s");
            }
        });
        if (pass == kRestartPasses - 1) {
            table.Value("unchanged pass behind a restart to readdir, sort and statx", work / floor, "times",
                        kRestartBound);
            table.Note("unchanged pass: over the passes", work, "s");
            table.Note("unchanged pass: readdir, sort and statx", floor, "s");
        }
    }
}

void Scan(bench::Table& table) {
    const LargeCatalogue catalogue(LibraryFolders().size());
    {
        const OpenWindow open;
        FirstScan(table);
    }
    WriteMainCache();
    Restart(table);
    table.Value("catalogue after both: memory of the process", MegabytesInMemory(), "MB", kMemoryBound);
}

const bench::Rows scan("scan", Scan);

} // namespace
