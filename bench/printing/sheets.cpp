// A catalogue of 2,000 blocks into a PDF of 600 dots per inch, in both layouts, against the previews alone.

#include "bench/Harness.h"
#include "tessaro/browser/painting/PaintPreview.h"
#include "tessaro/browser/painting/PrintCatalogue.h"
#include "tessaro/browser/printing/QtPrinterContext.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"
#include "tests/support/TemporaryFolder.h"

#include <QApplication>
#include <QPrinter>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace {

constexpr int kBlocks = 2000;
constexpr int kFewBlocks = 200;
constexpr double kTimeBound = 1.5;
constexpr double kMemoryBound = 16; // MB
constexpr std::int64_t kScale = 2;
constexpr int kPreviewsOnAPage = 16;

class AllRows : public PrintWindow {
public:
    explicit AllRows(Directory& directory) : pictures(*directory.largeImages) {
        for (Block* block : directory.blocks)
            rows.push_back({block, block->imageIndex});
    }
    std::vector<PrintRow> rows;

    int RowCount() const override { return static_cast<int>(rows.size()); }
    PrintRow Row(int row) const override { return rows[static_cast<std::size_t>(row)]; }
    const ImageList* Pictures() const override { return &pictures; }
    void OpenProgress(int) override {}
    void SetProgress(int) override {}
    void CloseProgress() override {}

private:
    const ImageList& pictures;
};

/// The sample library's drawings under 2,000 names.
class Library {
public:
    Library() {
        const std::string samples = (folder.path() / "samples").string();
        if (std::system(("'" TESSARO_BIN_DIR "/tessaro-samples' '" + samples + "' furniture > /dev/null").c_str()) != 0)
            throw std::runtime_error("no samples");
        std::vector<std::filesystem::path> drawings;
        for (const auto& file : std::filesystem::directory_iterator(samples + "/furniture"))
            drawings.push_back(file.path());
        std::sort(drawings.begin(), drawings.end());
        for (int i = 0; i < kBlocks; ++i) {
            auto* const block = new Block;
            block->name = platform::Format(L"Block-%04d", i);
            block->description = L"A block of the sample library with a description of some words";
            block->fileType = 16;
            block->imageIndex = 1;
            directory.blocks.push_back(block);
            std::filesystem::create_hard_link(drawings[static_cast<std::size_t>(i) % drawings.size()],
                                              folder.path() / (platform::ToNarrow(block->name) + ".dwg"));
        }
        directory.path = platform::FromNarrow(folder.path().string());
    }

    const tests::TemporaryFolder folder;
    Directory directory;
};

class PdfPrinter : public QPrinter {
public:
    explicit PdfPrinter(const std::filesystem::path& file) : QPrinter(HighResolution) {
        setOutputFormat(PdfFormat);
        setOutputFileName(QString::fromStdString(file.string()));
        setResolution(600);
    }
};

void Print(Library& library, int count, int type) {
    printType = type;
    currentDirectory = &library.directory;
    AllRows rows(library.directory);
    rows.rows.resize(static_cast<std::size_t>(count));
    PdfPrinter printer(library.folder.path() / "sheet.pdf");
    QtPrinterContext dc(printer);
    PrintCatalogue(dc, rows);
    currentDirectory = nullptr;
}

void PaintAll(Library& library) {
    PdfPrinter printer(library.folder.path() / "floor.pdf");
    QtPrinterContext dc(printer);
    dc.StartDoc(L"floor");
    int number = 0;
    for (Block* block : library.directory.blocks) {
        if (number++ % kPreviewsOnAPage == 0)
            dc.StartPage();
        if (!PaintPreview(library.directory, *block, dc, 1, 1, kScale, false))
            throw std::runtime_error("no preview of " + platform::ToNarrow(block->name));
    }
    dc.EndDoc();
}

/// The most memory that the process has had, in MB.
double PeakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:"))
            return std::atof(line.c_str() + 6) / 1024;
    }
    return 0;
}

void Measure(bench::Table& table) {
    static int count = 1;
    static char name[] = "bench_printing";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    platform::SetMainThread();
    LocalPath = moduleFolder = platform::FromNarrow(TESSARO_BIN_DIR);
    versionText = L"3.9.10";
    Library library;

    for (const int type : {0, 1})
        Print(library, kFewBlocks, type);
    const double few = PeakMemory();
    for (const int type : {0, 1})
        Print(library, kBlocks, type);
    table.Value("peak memory of 2,000 blocks over that of 200", PeakMemory() - few, "MB", kMemoryBound);

    const bench::Run floor{[&] { PaintAll(library); }};
    table.Ratio("2,000 blocks as rows, times their previews", kTimeBound, {[&] { Print(library, kBlocks, 0); }}, floor);
    table.Ratio("2,000 blocks as a grid, times their previews", kTimeBound, {[&] { Print(library, kBlocks, 1); }},
                floor);
}

const bench::Rows rows("sheets", Measure);

} // namespace
