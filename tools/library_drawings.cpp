#include "tools/library_drawings.h"

#include "editor/dwg/image_section.h"
#include "editor/dwg/png_picture.h"
#include "editor/dwg/summary_record.h"
#include "editor/sdk/db.h"

#include <array>
#include <filesystem>
#include <stdexcept>
#include <unistd.h>

namespace tools {

namespace {

constexpr std::uint32_t julianDayOfEpoch = 2440588;
/// The most frequent size in real drawings; the picture is then most of a small drawing, as it is in real libraries.
constexpr int pictureWidth = 256, pictureHeight = 102;

struct Named {
    const char* name;
    dwg::Release release;
    AcDb::AcDbDwgVersion version;
};
constexpr std::array releases{
    Named{"2000", dwg::Release::r2000, AcDb::kDHL_1015}, Named{"2004", dwg::Release::r2004, AcDb::kDHL_1800},
    Named{"2007", dwg::Release::r2007, AcDb::kDHL_1021}, Named{"2010", dwg::Release::r2010, AcDb::kDHL_1024},
    Named{"2013", dwg::Release::r2013, AcDb::kDHL_1027}, Named{"2018", dwg::Release::r2018, AcDb::kDHL_1032},
};

const Named& entryOf(dwg::Release release) {
    for (const Named& named : releases)
        if (named.release == release)
            return named;
    throw std::runtime_error("a release that is not written");
}

/// As many bars as the kind says on white, each bar of one colour: a bitmap of one byte a pixel without file header.
dwg::Bytes pictureOf(int kind) {
    constexpr std::uint32_t head = 40, colours = 256, pixels = pictureWidth * pictureHeight;
    dwg::Bytes bytes;
    const auto put = [&](std::uint32_t value, int count) {
        for (; count > 0; --count, value >>= 8)
            bytes.push_back(static_cast<std::uint8_t>(value));
    };
    for (const std::uint32_t field : {head, std::uint32_t{pictureWidth}, std::uint32_t{pictureHeight}})
        put(field, 4);
    put(1, 2);
    put(8, 2);
    for (const std::uint32_t field : {0U, pixels, 0U, 0U, colours, 0U})
        put(field, 4);
    for (std::uint32_t colour = 0; colour < colours; ++colour)
        put(colour + 1 == colours ? 0xFFFFFF : colour * 0x010203 & 0xFFFFFF, 4);
    const int bars = 1 + kind % 7;
    for (int y = 0; y < pictureHeight; ++y)
        for (int x = 0; x < pictureWidth; ++x) {
            const bool onBar = y > 5 && y < pictureHeight - 6 && x / 32 >= 1 && x / 32 <= bars && x % 32 < 24;
            put(onBar ? static_cast<std::uint32_t>(kind * 18 % 252) : colours - 1, 1);
        }
    return bytes;
}

void append(AcDbBlockTableRecord& space, AcDbEntity* entity) {
    if (space.appendAcDbEntity(entity) != 0)
        throw std::runtime_error("an entity is refused");
    entity->close();
}

/// Bars and knobs, a few more with each kind.
void draw(AcDbDatabase& database, int kind) {
    AcDbBlockTable* table = nullptr;
    AcDbSymbolTableRecord* record = nullptr;
    if (database.getBlockTable(table) != 0 || table->getAt(ACDB_MODEL_SPACE, record, AcDb::kForWrite) != 0)
        throw std::runtime_error("no model space");
    auto& space = dynamic_cast<AcDbBlockTableRecord&>(*record);
    for (int bar = 0; bar <= kind; ++bar) {
        append(space, new AcDbLine({bar * 10.0, 0, 0}, {bar * 10.0, 60.0 + kind, 0}));
        append(space, new AcDbCircle({bar * 10.0, 30.0, 0}, {0, 0, 1}, 1.0 + bar * 0.25));
    }
    record->close();
    table->close();
}

/// A file that goes with the object.
class ShortLivedFile {
public:
    ShortLivedFile() : name((std::filesystem::temp_directory_path() / "library-XXXXXX").string()) {
        const int file = mkstemp(name.data());
        if (file < 0)
            throw std::runtime_error("no temporary file");
        close(file);
    }
    ~ShortLivedFile() { unlink(name.c_str()); }
    ShortLivedFile(const ShortLivedFile&) = delete;
    ShortLivedFile& operator=(const ShortLivedFile&) = delete;

    std::string name;
};

template <class T> T taken(dwg::Result<T> result) {
    if (!result)
        throw std::runtime_error(result.error().reason);
    return std::move(*result);
}

} // namespace

std::optional<dwg::Release> releaseByName(std::string_view name) {
    for (const Named& named : releases)
        if (named.name == name)
            return named.release;
    return std::nullopt;
}

const char* nameOf(dwg::Release release) {
    return entryOf(release).name;
}

dwg::Bytes drawnFile(dwg::Release release, int kind) {
    const ShortLivedFile saved;
    AcDbDatabase database(true, false);
    draw(database, kind);
    if (database.saveAs(std::filesystem::path(saved.name).wstring().c_str(), false, entryOf(release).version) != 0)
        throw std::runtime_error("a drawing can't be saved");
    const auto source = taken(dwg::openSource(saved.name));
    return taken(source->bytes(0, source->size()));
}

LibraryDrawing::LibraryDrawing(const dwg::Bytes& drawn, int kind) {
    const auto file = taken(dwg::DrawingFile::open(dwg::memorySource(drawn)));
    const dwg::Release release = file.release();
    drawing = taken(dwg::readDrawing(file));
    parts.header = taken(dwg::readHeaderVariables(file));
    if (release >= dwg::Release::r2004)
        parts.summary = taken(dwg::readSummaryInfo(file));
    dwg::Bytes picture = pictureOf(kind);
    if (release >= dwg::Release::r2013)
        parts.pictures = {{dwg::image_code::png, dwg::pngOfBitmap(picture).value()}};
    else
        parts.pictures = {{dwg::image_code::bitmap, std::move(picture)}};
}

dwg::Result<dwg::Bytes> LibraryDrawing::file(const std::wstring& comments, int day) {
    const dwg::DayAndTime date{julianDayOfEpoch + static_cast<std::uint32_t>(day), 43'200'000};
    parts.header.TDCREATE = parts.header.TDUPDATE = parts.summary.created = parts.summary.updated = date;
    parts.summary.texts.comments = comments;
    if (drawing.release < dwg::Release::r2004) {
        if (auto written = dwg::writeSummaryRecord(drawing, parts.summary.texts); !written)
            return written.error();
        parts.header.HANDSEED = drawing.handleSeed();
    }
    return dwg::writeDrawing(drawing, parts);
}

} // namespace tools
