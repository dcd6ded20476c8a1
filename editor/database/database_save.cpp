#include "editor/database/colours.h"
#include "editor/database/current_time.h"
#include "editor/database/database_state.h"
#include "editor/database/picture.h"
#include "editor/database/saving.h"
#include "editor/dwg/convert_drawing.h"
#include "editor/dwg/image_section.h"
#include "editor/dwg/png_picture.h"
#include "editor/dwg/rewrite_drawing.h"
#include "editor/dwg/summary_record.h"
#include "editor/dwg/write_drawing.h"

namespace {

std::optional<dwg::Release> releaseOf(AcDb::AcDbDwgVersion version) {
    switch (version) {
    case AcDb::kDHL_1015:
        return dwg::Release::r2000;
    case AcDb::kDHL_1800:
        return dwg::Release::r2004;
    case AcDb::kDHL_1021:
        return dwg::Release::r2007;
    case AcDb::kDHL_1024:
        return dwg::Release::r2010;
    case AcDb::kDHL_1027:
        return dwg::Release::r2013;
    case AcDb::kDHL_1032:
        return dwg::Release::r2018;
    }
    return std::nullopt;
}

/// What the file embeds: the given bitmap, else the pictures of the file that was read where they are kept, none
/// included, else what model space shows. From 2013 on a drawn picture is a PNG.
std::vector<dwg::Picture> picturesOf(const AcDbDatabase::Impl& database, dwg::Release release) {
    if (database.givenBitmap.empty() && database.retainPictures && database.origin.file)
        return database.pictures;
    const std::string bitmap =
        database.givenBitmap.empty() ? editor::pictureOfModelSpace(database.self) : database.givenBitmap;
    if (bitmap.empty())
        return {};
    dwg::Bytes bytes(bitmap.begin(), bitmap.end());
    if (release >= dwg::Release::r2013) {
        if (auto png = dwg::pngOfBitmap(bytes))
            return {{dwg::image_code::png, std::move(*png)}};
    }
    return {{dwg::image_code::bitmap, std::move(bytes)}};
}

/// Extents that were never set become those of what model space shows.
void setMissingExtents(const AcDbDatabase& database, dwg::HeaderVariables& header) {
    if (header.EXTMIN.x <= header.EXTMAX.x)
        return;
    const editor::Extents box = editor::wireframeOfModelSpace(database).extents();
    if (box.empty)
        return;
    header.EXTMIN = editor::fromPoint(box.lowest);
    header.EXTMAX = editor::fromPoint(box.highest);
}

/// Up to 2000 the summary lies among the objects, from 2004 on beside them.
void moveSummary(AcDbDatabase::Impl& database, dwg::Drawing& converted, dwg::DrawingParts& parts) {
    const bool wasRecord = database.drawing.release < dwg::Release::r2004;
    const bool becomesRecord = converted.release < dwg::Release::r2004;
    if (wasRecord) {
        parts.summary.texts = dwg::readSummaryRecord(database.drawing);
        parts.summary.created = parts.header.TDCREATE;
        parts.summary.updated = parts.header.TDUPDATE;
        parts.summary.editingTime = parts.header.TDINDWG;
        parts.summary.hyperlinkBase = parts.header.HYPERLINKBASE;
    }
    if (wasRecord && !becomesRecord)
        dwg::removeSummaryRecord(converted);
    // A drawing without a dictionary to hang it on has no summary.
    if (!wasRecord && becomesRecord && parts.summary.texts != dwg::SummaryTexts())
        (void)dwg::writeSummaryRecord(converted, parts.summary.texts);
}

/// The whole file of the drawing as it is now.
dwg::Result<dwg::Bytes> encode(AcDbDatabase::Impl& database, dwg::Release release, dwg::DrawingParts& parts) {
    database.leftOut.clear();
    if (release != database.drawing.release) {
        auto converted = dwg::convertDrawing(database.drawing, parts.header, release, editor::nearestIndexOf);
        parts.header = converted.header;
        moveSummary(database, converted.drawing, parts);
        parts.header.HANDSEED = converted.drawing.handleSeed();
        database.leftOut = std::move(converted.leftOut);
        if (database.origin.file && database.drawing.release >= dwg::Release::r2013 && release >= dwg::Release::r2013)
            parts.kept = database.origin.keptSections({dwg::section::binaryData});
        return dwg::writeDrawing(converted.drawing, parts);
    }
    if (database.origin.file && database.origin.file->release() == release && release >= dwg::Release::r2004) {
        parts.kept = database.origin.keptSections({});
        if (auto start = database.origin.file->source().bytes(0, dwg::fileStartLength))
            parts.start = std::move(*start);
    }
    return dwg::writeDrawing(database.drawing, parts);
}

/// The file that was read with what is new beside the objects.
dwg::Result<dwg::Bytes> rewrite(const AcDbDatabase::Impl& database, const std::vector<dwg::Picture>& pictures) {
    dwg::Replacements replacements;
    if (database.summary != database.origin.summary)
        replacements.summary = database.summary;
    if (pictures != database.pictures)
        replacements.pictures = pictures;
    return dwg::rewriteDrawing(*database.origin.file, replacements);
}

} // namespace

int AcDbDatabase::saveAs(const wchar_t* name, bool bakAndRename, AcDb::AcDbDwgVersion version) {
    if (name == nullptr || *name == L'\0')
        return Acad::eInvalidInput;
    if (!state->hasDrawing())
        return Acad::eNoDatabase;
    const auto release = releaseOf(version);
    if (!release)
        return Acad::eUnsupportedFileFormat;
    state->purgeErased();
    std::vector<dwg::Picture> pictures = picturesOf(*state, *release);
    dwg::DrawingParts parts;
    parts.header = state->header;
    parts.summary = state->summary;
    parts.pictures = pictures;
    parts.measurement = state->measurement;
    const bool isUntouched = *release == state->drawing.release && state->origin.holds(state->drawing, state->header);
    const bool isRewritten = isUntouched && *release >= dwg::Release::r2004;
    parts.header.HANDSEED = state->drawing.handleSeed();
    if (!isUntouched) {
        parts.header.TDUPDATE = parts.summary.updated = editor::currentDayAndTime();
        setMissingExtents(*this, parts.header);
    }
    const dwg::HeaderVariables header = isRewritten ? state->header : parts.header;
    auto bytes = isRewritten ? rewrite(*state, pictures) : encode(*state, *release, parts);
    if (!bytes)
        return bytes.error().kind == dwg::ErrorKind::unsupported ? Acad::eUnsupportedFileFormat : Acad::eFilerError;
    if (!editor::replaceFile(dwg::pathOf(name), *bytes, bakAndRename))
        return Acad::eFileAccessErr;
    state->file = name;
    state->header = header;
    state->pictures = std::move(pictures);
    state->givenBitmap.clear();
    state->summary = parts.summary;
    if (isRewritten) {
        if (auto file = dwg::DrawingFile::open(dwg::memorySource(std::move(*bytes)))) {
            state->origin.file = std::move(*file);
            state->origin.summary = state->summary;
        }
    }
    return eOk;
}
