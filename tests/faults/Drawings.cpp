#include "tests/faults/Drawings.h"

#include "tests/support/TemporaryFolder.h"

#include "tessaro/platform/Text.h"

#include <map>
#include <memory>
#include <stdexcept>

namespace faults {
namespace {

/// A 4 by 2 bitmap of 24 bits.
std::string Bitmap() {
    std::string bytes(40, '\0');
    bytes[0] = 40;
    bytes[4] = 4;
    bytes[8] = 2;
    bytes[12] = 1;
    bytes[14] = 24;
    return bytes + std::string(24, '\x55');
}

AcDbBlockTableRecord* ModelSpace(const AcDbBlockTable& table, AcDb::OpenMode mode) {
    AcDbSymbolTableRecord* record = nullptr;
    if (table.getAt(ACDB_MODEL_SPACE, record, mode) != 0)
        throw std::runtime_error("no model space");
    return dynamic_cast<AcDbBlockTableRecord*>(record);
}

void Draw(AcDbDatabase& database, AcDbEntity* entity) {
    AcDbBlockTable* table = nullptr;
    database.getBlockTable(table);
    auto* const space = ModelSpace(*table, AcDb::kForWrite);
    space->appendAcDbEntity(entity);
    entity->close();
    space->close();
    table->close();
}

void SetComments(AcDbDatabase& database, const wchar_t* text) {
    AcDbDatabaseSummaryInfo* made = nullptr;
    if (acdbGetSummaryInfo(&database, made) != 0)
        throw std::runtime_error("no summary");
    const std::unique_ptr<AcDbDatabaseSummaryInfo> summary(made);
    summary->setComments(text);
    acdbPutSummaryInfo(summary.get(), &database);
}

int CountEntities(AcDbDatabase& database) {
    AcDbBlockTable* table = nullptr;
    if (database.getBlockTable(table) != 0)
        return -1;
    auto* const space = ModelSpace(*table, AcDb::kForRead);
    AcDbBlockTableRecordIterator* made = nullptr;
    space->newIterator(made);
    const std::unique_ptr<AcDbBlockTableRecordIterator> walk(made);
    int count = 0;
    for (; !walk->done(); walk->step())
        ++count;
    space->close();
    table->close();
    return count;
}

} // namespace

void DrawCircle(AcDbDatabase& database) {
    Draw(database, new AcDbCircle({5, 5, 0}, {0, 0, 1}, 2));
}

const std::string& DrawingOf(const Release& release) {
    static std::map<std::string, std::string> made;
    std::string& bytes = made[release.name];
    if (!bytes.empty())
        return bytes;
    const tests::TemporaryFolder folder;
    AcDbDatabase database(true, false);
    Draw(database, new AcDbLine({0, 0, 0}, {10, 0, 0}));
    DrawCircle(database);
    SetComments(database, L"as drawn");
    database.setThumbnailBitmap(Bitmap());
    const auto file = folder.path() / "made.dwg";
    if (database.saveAs(file.wstring().c_str(), false, release.version) != 0)
        throw std::runtime_error("can't save");
    bytes = tests::readFile(file);
    return bytes;
}

std::string Describe(const std::filesystem::path& drawing) {
    AcDbDatabase database(false, false);
    if (database.readDwgFile(drawing.wstring().c_str()) != 0)
        return "unreadable";
    AcDbDatabaseSummaryInfo* made = nullptr;
    if (acdbGetSummaryInfo(&database, made) != 0)
        return "no summary";
    const std::unique_ptr<AcDbDatabaseSummaryInfo> summary(made);
    std::wstring comments;
    summary->getComments(comments);
    return platform::ToNarrow(comments) + ", " + std::to_string(CountEntities(database));
}

} // namespace faults
