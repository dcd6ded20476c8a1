#include "tests/soak/Library.h"

#include "editor/sdk/db.h"
#include "tests/reading/DrawingBuilder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>

namespace {

constexpr unsigned kMostDrawings = 8;

std::vector<std::filesystem::path> DrawingsIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".dwg")
            files.push_back(entry.path());
    return files;
}

} // namespace

Library::Library(int folders, unsigned seed, bool placeable) : random(seed) {
    if (placeable)
        DrawSome();
    for (const auto& file : DrawingsIn(std::filesystem::path(TESSARO_SOURCE_DIR) / "fuzz" / "seeds" / "dwg"))
        real.push_back(tests::readFile(file));
    for (int folder = 0; folder < folders; ++folder)
        AddFolder();
}

std::wstring Library::Path(const std::string& name) const {
    return (root.path() / name).wstring();
}

void Library::DrawSome() {
    for (const auto version : {AcDb::kDHL_1015, AcDb::kDHL_1800, AcDb::kDHL_1024}) {
        AcDbDatabase database(true, false);
        AcDbBlockTable* table = nullptr;
        AcDbSymbolTableRecord* space = nullptr;
        database.getBlockTable(table);
        table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite);
        auto line =
            std::make_unique<AcDbLine>(AcGePoint3d{0, 0, 0}, AcGePoint3d{30.0 + static_cast<double>(version), 20, 0});
        dynamic_cast<AcDbBlockTableRecord&>(*space).appendAcDbEntity(line.get());
        line.release()->close();
        space->close();
        table->close();
        database.saveAs(Path("drawn").c_str(), false, version);
        drawn.push_back(tests::readFile(root.path() / "drawn"));
    }
    std::filesystem::remove(root.path() / "drawn");
}

std::string Library::RandomDrawing() {
    if (!drawn.empty() && random() % 2 == 0)
        return drawn[random() % drawn.size()];
    const unsigned kind = random() % 8;
    if (kind == 0)
        return std::string(random() % 300, 'x');
    if (kind == 1)
        return tests::DrawingBuilder("AC1032").entry(2, tests::plainBitmap(20, 16, 0)).bytes();
    if (kind == 2 && !real.empty())
        return real[random() % real.size()] + std::string(random() % 64, '\0');
    return DrawingWithPicture();
}

/// A drawing of long ago. One that replaced it without telling dates would keep its dates in the catalogue.
bool Library::IsReal(const std::filesystem::path& file) const {
    const std::string bytes = tests::readFile(file);
    return std::ranges::any_of(real, [&](const std::string& drawing) { return bytes.starts_with(drawing); });
}

/// What may replace another drawing: without a picture or a text of its own it would keep the old one's.
std::string Library::DrawingWithPicture() {
    const std::uint32_t colour = random() & 0xffffff;
    tests::DrawingBuilder drawing(random() % 2 == 0 ? "AC1018" : "AC1015");
    drawing.entry(1, "Drawing of the soak");
    if (random() % 2 == 0)
        drawing.entry(2, tests::plainBitmap(20, 16, colour));
    else
        drawing.entry(6, tests::plainPng(18, 18, colour));
    return drawing.bytes() + std::string(random() % 64, '\0');
}

void Library::Fill(const std::filesystem::path& folder) {
    for (unsigned drawing = 1 + random() % kMostDrawings; drawing > 0; --drawing)
        root.write(folder / ("drawing" + std::to_string(drawing) + ".dwg"), RandomDrawing());
}

std::wstring Library::AddFolder() {
    const std::filesystem::path folder = root.path() / ("library" + std::to_string(++lastNumber));
    Fill(folder);
    paths.push_back(folder.wstring());
    return paths.back();
}

void Library::ChangeSomething(bool withDeletes) {
    const std::filesystem::path folder = paths[random() % paths.size()];
    const auto files = DrawingsIn(folder);
    const unsigned kind = random() % 4;
    // A folder may have lost its last drawing to a description that could not be written.
    if (kind == 0 || files.empty()) {
        root.write(folder / ("added" + std::to_string(++lastNumber) + ".dwg"), RandomDrawing());
        return;
    }
    const std::filesystem::path& file = files[random() % files.size()];
    switch (kind) {
    case 1: // another length, since a change within the same second and of the same length goes unseen
        if (!IsReal(file))
            root.write(file, DrawingWithPicture() + std::string(400 + static_cast<std::size_t>(++lastNumber), '\0'));
        break;
    case 2:
        if (withDeletes && files.size() > 1)
            std::filesystem::remove(file);
        break;
    default:
        std::filesystem::rename(file, folder / ("renamed" + std::to_string(++lastNumber) + ".dwg"));
    }
}
