#include "bench/Harness.h"

#include "editor/application/editor.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/mapping/engine/Engine.h"
#include "tessaro/mapping/engine/MappingRun.h"
#include "tessaro/mapping/engine/Walk.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace {

constexpr int kMaps = 50;
constexpr const char* kNames[] = {"layers", "linetypes", "colours"};

std::filesystem::path LargeDrawing() {
    const auto shared = tests::sharedFolder("drawings");
    return shared.empty() ? shared : shared / "2018" / "Dynblocks.dwg";
}

std::unique_ptr<AcDbDatabase> Read(const std::filesystem::path& file) {
    auto database = std::make_unique<AcDbDatabase>(false);
    if (database->readDwgFile(file.wstring().c_str()) != eOk)
        throw std::runtime_error("the drawing can't be read");
    return database;
}

/// Fifty maps, of which the last takes what the others leave, so that each name is tried against them all.
MapScheme Scheme(int schemeType) {
    MapScheme scheme;
    scheme.schemeType = schemeType;
    for (int i = 1; i < kMaps; ++i)
        scheme.maps.SetAt(L"*" + std::to_wstring(1000 + i) + L"-?*", L"LAYER " + std::to_wstring(i));
    scheme.maps.SetAt(L"*", L"ALL");
    return scheme;
}

void Map(AcDbDatabase& side, MapScheme& scheme) {
    MappingRun run(side, scheme);
    const bool done = scheme.schemeType == 0   ? run.MapLayerScheme()
                      : scheme.schemeType == 1 ? run.MapLinetypeScheme()
                                               : run.MapColorScheme();
    if (!done)
        throw std::runtime_error("no layer table");
}

void MeasurePasses(bench::Table& table) {
    const auto file = LargeDrawing();
    if (file.empty()) {
        table.Note("passes: no shared drawings", 0, "");
        return;
    }
    std::unique_ptr<AcDbDatabase> side, read;
    const bench::Run reading{.timed = [&] { read = Read(file); }, .prepare = [&] { read.reset(); }};
    const double readingTime = bench::Median(reading);
    std::size_t entities = 0;
    ForEachEntity(*read, [&](const AcDbEntity&) { return ++entities > 0; });
    for (const int type : {0, 1, 2}) {
        constexpr double kPerEntity = 0.5e-6, kOfReading = 0.5;
        const int walks = type == 0 ? 1 : 2;
        const double bound = std::max(kOfReading, kPerEntity * static_cast<double>(entities) * walks / readingTime);
        MapScheme scheme = Scheme(type);
        table.Ratio(std::string("pass by ") + kNames[type] + " / reading", bound,
                    {.timed = [&] { Map(*side, scheme); }, .prepare = [&] { side = Read(file); }}, reading);
    }
}

void MeasurePlacement(bench::Table& table) {
    const auto file = LargeDrawing();
    if (file.empty()) {
        table.Note("placement: no shared drawings", 0, "");
        return;
    }
    editor::Editor host;
    const tests::TemporaryFolder folder;
    const auto current = folder.path() / "current.dwg";
    std::filesystem::copy_file(file.parent_path() / "circle.dwg", current);
    std::unique_ptr<AcDbDatabase> read;
    const bench::Run reading{.timed = [&] { read = Read(file); }, .prepare = [&] { read.reset(); }};
    for (const int type : {0, 1, 2}) {
        SetScheme(L"Scheme", new MapScheme(Scheme(type)));
        const auto prepare = [&] {
            if (host.documents().current() != nullptr)
                host.documents().close(*host.documents().current());
            if (host.documents().open(current.wstring()) != eOk)
                throw std::runtime_error("no current drawing");
        };
        const auto timed = [&] {
            if (!MapAndInsertDrawing(file.wstring(), L"LARGE", L"Scheme"))
                throw std::runtime_error("not placed");
        };
        table.Ratio(std::string("read, map by ") + kNames[type] + " and insert / reading", 3,
                    {.timed = timed, .prepare = prepare}, reading);
    }
    DeleteSchemes();
}

const bench::Rows passes("passes", MeasurePasses);
const bench::Rows placement("placement", MeasurePlacement);

} // namespace
