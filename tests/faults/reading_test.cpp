// Folders that are scanned and drawings that are examined, with the real helper.
#include "tests/faults/CatalogueOperation.h"
#include "tests/faults/Drawings.h"
#include "tests/reading/DrawingBuilder.h"
#include "tests/support/RecorderWindow.h"
#include "tests/support/Sanitized.h"

#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Examine.h"
#include "tessaro/reading/Loader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <vector>

namespace {

using faults::CatalogueOperation;
using faults::Outcome;

constexpr std::int32_t kDone = 123;

/// A window takes new picture lists without an allocation that could fail, also where an examination ends by an
/// exception.
class Window : public tests::RecorderWindow {
public:
    void SetBlockImages(const ImageList* largeImages, const ImageList* smallImages) override {
        large = largeImages;
        small = smallImages;
    }
};

/// A catalogue of one folder of drawings and a window that is open on it.
class FolderOperation : public CatalogueOperation {
public:
    FolderOperation() {
        platform::SetMainThread();
        LocalPath = platform::FromNarrow(TESSARO_BIN_DIR);
        theBlockDlg = &window;
        dialogOpen = true;
    }

protected:
    /// What lies in the folder now; nothing of it may change.
    void WriteDrawings(const std::map<std::string, std::string>& wanted) {
        files = wanted;
        for (const auto& [name, bytes] : files)
            Write("doors/" + name, bytes);
    }
    void AddFolder(bool shown) {
        directory = new Directory;
        directory->path = Wide("doors");
        directory->cacheFile = Wide("path1_35.cache");
        directory->listIndex = window.InsertDirectoryRow(L"doors", directory);
        directories.push_back(directory);
        if (shown)
            currentDirectory = directory;
    }
    void CheckFiles() const {
        for (const auto& [name, bytes] : files)
            EXPECT_EQ(Bytes("doors/" + name), bytes) << name;
    }
    void CheckRecords() const {
        EXPECT_EQ(directory->largeImages->Count(), directory->smallImages->Count());
        for (const Block* block : directory->blocks) {
            EXPECT_GE(block->imageIndex, 0);
            EXPECT_LT(block->imageIndex, std::max(directory->imagesLoaded || currentDirectory == directory
                                                      ? directory->largeImages->Count()
                                                      : 1000,
                                                  1));
        }
    }

    Window window;
    Directory* directory = nullptr;
    std::map<std::string, std::string> files;
};

std::map<std::string, std::string> SomeDrawings() {
    return {{"a.dwg", faults::DrawingOf(faults::kReleases[0])}, {"b.dwg", faults::DrawingOf(faults::kReleases[4])}};
}

enum class Shown { no, yes };

/// A pass over a folder that the catalogue does not know yet.
class FirstScan : public FolderOperation {
public:
    explicit FirstScan(Shown wanted) : shown(wanted) {}

    void Prepare() override {
        WriteDrawings(SomeDrawings());
        AddFolder(shown == Shown::yes);
    }
    void Run() override { result = LoadDir(directory); }
    void Check(const Outcome& outcome) override {
        CheckFiles();
        CheckRecords();
        if (!outcome.fired()) {
            EXPECT_EQ(result, kDone);
        }
        directory->loaded = false;
        for (Block* block : directory->blocks)
            block->checked = block->cached = false;
        EXPECT_EQ(LoadDir(directory), kDone) << "the next pass goes through";
        EXPECT_EQ(directory->blocks.size(), 2u);
        CheckRecords();
    }

protected:
    std::int32_t result = -1;

private:
    const Shown shown;
};

/// A pass over a folder that has changed: one drawing is gone, one new, one another one.
class Rescan : public FirstScan {
public:
    explicit Rescan(Shown wanted) : FirstScan(wanted) {}

    void Prepare() override {
        FirstScan::Prepare();
        LoadDir(directory);
        SaveIfDirty(*directory);
        std::filesystem::remove(Folder() / "doors/a.dwg");
        WriteDrawings(
            {{"b.dwg", faults::DrawingOf(faults::kReleases[1])}, {"c.dwg", faults::DrawingOf(faults::kReleases[2])}});
        directory->loaded = false;
        for (Block* block : directory->blocks)
            block->checked = false;
    }
};

/// A folder that is up to date is shown.
class Fill : public FirstScan {
public:
    Fill() : FirstScan(Shown::yes) {}

    void Prepare() override {
        FirstScan::Prepare();
        LoadDir(directory);
    }
    void Check(const Outcome& outcome) override {
        if (!outcome.raised) {
            EXPECT_EQ(window.BlockRowCount(), 2);
        }
        FirstScan::Check(outcome);
    }
};

struct Kind {
    const char* name;
    std::map<std::string, std::string> files;
    int fileType;
};

std::vector<Kind> Kinds() {
    const std::string bitmap = tests::plainBitmap(20, 10, 0x4080C0);
    return {
        {"Release2000", {{"a.dwg", faults::DrawingOf(faults::kReleases[0])}}, 16},
        {"Release2007", {{"a.dwg", faults::DrawingOf(faults::kReleases[2])}}, 18},
        {"Release2013", {{"a.dwg", faults::DrawingOf(faults::kReleases[4])}}, 20},
        {"R14WithALine",
         {{"a.dwg", tests::DrawingBuilder("AC1014").entry(1, std::string(1, '\0')).entry(2, bitmap)},
          {"VEXLIB/a.lsa", "from the sibling\r\nnot this\r\n"}},
         15},
        {"R12WithABitmapBeside", {{"a.dwg", "AC1009"}, {"a.bmp", tests::bitmapFile(bitmap)}}, 13},
        {"Png", {{"a.dwg", tests::DrawingBuilder("AC1027").entry(6, tests::plainPng(20, 10, 0x4080C0))}}, 20},
    };
}

class Examination : public FolderOperation {
public:
    explicit Examination(const Kind& examined) : kind(examined) {}

    void Prepare() override {
        WriteDrawings(kind.files);
        AddFolder(false);
        block = new Block;
        block->name = L"a";
        directory->blocks.push_back(block);
        directory->imagesLoaded = true;
    }
    void Run() override { ExamineDrawing(*directory, *block); }
    void Check(const Outcome& outcome) override {
        CheckFiles();
        CheckRecords();
        EXPECT_EQ(outcome.messages, 0) << "nothing is told here";
        ExamineDrawing(*directory, *block);
        EXPECT_EQ(block->fileType, kind.fileType) << "the next one finds all";
        EXPECT_NE(block->imageIndex, 0);
        CheckRecords();
    }

private:
    const Kind kind;
    Block* block = nullptr;
};

class ExaminationUnderFaults : public testing::TestWithParam<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(Kinds, ExaminationUnderFaults, testing::Range(std::size_t{0}, std::size_t{6}),
                         [](const testing::TestParamInfo<std::size_t>& kind) {
                             return std::string(Kinds().at(kind.param).name);
                         });

} // namespace

TEST(ScanUnderFaults, AFirstScanLeavesTheDrawingsAndTheNextPassGoesThrough) {
    faults::WalkFaults([] { return std::make_unique<FirstScan>(Shown::no); });
}

TEST(ScanUnderFaults, AFirstScanOfTheShownFolderToo) {
    faults::WalkFaults([] { return std::make_unique<FirstScan>(Shown::yes); });
}

TEST(ScanUnderFaults, ARescanLeavesTheDrawingsAndTheNextPassGoesThrough) {
    faults::WalkFaults([] { return std::make_unique<Rescan>(Shown::no); });
}

TEST(ScanUnderFaults, ARescanOfTheShownFolderToo) {
    faults::WalkFaults([] { return std::make_unique<Rescan>(Shown::yes); });
}

TEST(ScanUnderFaults, AFolderThatIsUpToDateIsShownWhole) {
    if (tests::isSanitized)
        GTEST_SKIP() << "no file is touched, and a sanitizer refuses no memory";
    faults::WalkFaults([] { return std::make_unique<Fill>(); });
}

TEST_P(ExaminationUnderFaults, LeavesTheDrawingAndTheNextOneFindsAll) {
    static const std::vector<Kind> kinds = Kinds();
    faults::WalkFaults([] { return std::make_unique<Examination>(kinds[GetParam()]); });
}
