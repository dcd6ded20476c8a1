#include "editor/database/current_time.h"
#include "editor/database/database_state.h"
#include "editor/database/picture.h"
#include "editor/database/saving.h"
#include "editor/dwg/image_section.h"
#include "editor/dwg/write_drawing.h"

namespace {

/// What the file embeds: the given bitmap, else the pictures of the file that was read where they are kept, else what
/// model space shows.
std::vector<dwg::Picture> picturesOf(const AcDbDatabase::Impl& database) {
    if (database.givenBitmap.empty() && database.retainPictures && !database.pictures.empty())
        return database.pictures;
    const std::string bitmap =
        database.givenBitmap.empty() ? editor::pictureOfModelSpace(database.self) : database.givenBitmap;
    if (bitmap.empty())
        return {};
    return {{dwg::image_code::bitmap, dwg::Bytes(bitmap.begin(), bitmap.end())}};
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

} // namespace

int AcDbDatabase::saveAs(const wchar_t* name, bool bakAndRename, AcDb::AcDbDwgVersion version) {
    if (name == nullptr || *name == L'\0')
        return Acad::eInvalidInput;
    if (!state->hasDrawing())
        return Acad::eNoDatabase;
    if (version != AcDb::kDHL_1015)
        return Acad::eUnsupportedFileFormat;
    state->purgeErased();
    dwg::HeaderVariables header = state->header;
    header.TDUPDATE = editor::currentDayAndTime();
    header.HANDSEED = state->drawing.handleSeed();
    setMissingExtents(*this, header);
    std::vector<dwg::Picture> pictures = picturesOf(*state);
    const auto bytes = dwg::writeDrawing(state->drawing, header, pictures, state->measurement);
    if (!bytes)
        return bytes.error().kind == dwg::ErrorKind::unsupported ? Acad::eUnsupportedFileFormat : Acad::eFilerError;
    if (!editor::replaceFile(dwg::pathOf(name), *bytes, bakAndRename))
        return Acad::eFileAccessErr;
    state->file = name;
    state->header = header;
    state->pictures = std::move(pictures);
    state->givenBitmap.clear();
    return eOk;
}
