// A large drawing read whole, cloned, written, and only looked into.

#include "bench/Harness.h"
#include "bench/drawings/LargeDrawing.h"

#include "editor/database/database_state.h"
#include "editor/dwg/header_variables.h"
#include "editor/dwg/quick_facts.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/summary_info.h"
#include "tests/support/TemporaryFolder.h"

#include <memory>

namespace {

constexpr double kMicroseconds = 1e6;
constexpr double kCloneBound = 1.5, kWriteBound = 2, kGlanceBound = 0.05;

/// What the bounds are for: the file's sections unpacked, all objects decoded and linked, header, summary, pictures.
bench::Run ReadWhole(const std::filesystem::path& file) {
    return {[file] {
        AcDbDatabase database(false);
        ReadInto(database, file);
    }};
}

void MeasureGlance(bench::Table& table, const std::filesystem::path& file) {
    const bench::Run glance{[&] {
        const auto opened = dwg::DrawingFile::open(file);
        const auto header = dwg::readHeaderVariables(*opened);
        const auto summary = dwg::readSummaryInfo(*opened);
        if (!header || !summary)
            throw std::runtime_error("header or summary can't be read");
    }};
    table.Ratio("header and summary / read whole", kGlanceBound, glance, ReadWhole(file));
}

void MeasureClone(bench::Table& table, const std::filesystem::path& file) {
    AcDbDatabase source(false);
    ReadInto(source, file);
    const tests::TemporaryFolder folder;
    const auto empty = folder.path() / "empty.dwg";
    AcDbDatabase().saveAs(empty.wstring().c_str(), false, AcDb::kDHL_1032);
    std::unique_ptr<AcDbDatabase> target;
    const auto insert = [&] {
        AcDbObjectId id;
        if (target->insert(id, L"Cloned", &source) != eOk)
            throw std::runtime_error("the drawing can't be inserted");
    };
    const bench::Run intoItsRelease{insert, [&] {
                                        target = std::make_unique<AcDbDatabase>(false);
                                        ReadInto(*target, empty);
                                    }};
    table.Ratio("clone of its model space into a drawing of its release / read whole", kCloneBound, intoItsRelease,
                ReadWhole(file));
    const bench::Run intoAnother{insert, [&] { target = std::make_unique<AcDbDatabase>(); }};
    table.Ratio("clone of its model space into a drawing of release 2000 / read whole", kCloneBound, intoAnother,
                ReadWhole(file));
}

void MeasureWriting(bench::Table& table, const std::filesystem::path& file) {
    AcDbDatabase database(false);
    ReadInto(database, file);
    database.setRetainOriginalThumbnailBitmap(true);
    const tests::TemporaryFolder folder;
    const auto copy = folder.path() / "copy.dwg";
    dwg::Drawing& drawing = database.impl()->drawing;
    const auto save = [&](AcDb::AcDbDwgVersion version) {
        if (database.saveAs(copy.wstring().c_str(), false, version) != eOk)
            throw std::runtime_error("the drawing can't be saved");
    };
    const bench::Run touched{[&] { save(AcDb::kDHL_1032); }, [&] { drawing.find(drawing.modelSpace())->changed(); }};
    table.Ratio("written with one object changed / read whole", kWriteBound, touched, ReadWhole(file));
    const bench::Run anew{[&] { save(AcDb::kDHL_1032); },
                          [&] {
                              for (const auto& object : drawing.objects())
                                  object->changed();
                          }};
    table.Ratio("written with every object changed / read whole", kWriteBound, anew, ReadWhole(file));
    // It is converted on the way, every object of it.
    const bench::Run converted{[&] { save(AcDb::kDHL_1024); }};
    table.Note("saved in release 2010 / read whole", bench::Median(converted) / bench::Median(ReadWhole(file)),
               "times");
}

void Measure(bench::Table& table) {
    const std::filesystem::path file = LargeDrawing();
    if (file.empty())
        return;
    AcDbDatabase database(false);
    ReadInto(database, file);
    const auto objects = static_cast<double>(database.impl()->drawing.objects().size());
    table.Note("objects of the drawing", objects, "objects");
    table.Note("read whole, an object", bench::Median(ReadWhole(file)) / objects * kMicroseconds, "us");
    MeasureGlance(table, file);
    MeasureClone(table, file);
    MeasureWriting(table, file);
}

const bench::Rows rows("whole", Measure);

} // namespace
