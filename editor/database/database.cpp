#include "editor/database/current_time.h"
#include "editor/database/database_state.h"
#include "editor/database/working_database.h"
#include "editor/dwg/default_drawing.h"
#include "editor/dwg/default_header.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/summary_record.h"
#include "editor/dwg/template_section.h"

using namespace dwg::object_type;

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool) : state(std::make_unique<Impl>(*this)) {
    if (!buildDefaultDrawing)
        return;
    state->drawing = dwg::makeDefaultDrawing();
    state->header = dwg::makeDefaultHeader(editor::currentDayAndTime());
    state->adopt();
}

AcDbDatabase::~AcDbDatabase() {
    editor::forgetWorkingDatabase(this);
}

namespace {

int statusOf(const dwg::Error& error) {
    switch (error.kind) {
    case dwg::ErrorKind::io:
        return Acad::eFileAccessErr;
    case dwg::ErrorKind::notADrawing:
        return Acad::eBadDwgHeader;
    case dwg::ErrorKind::unsupported:
        return Acad::eUnsupportedFileFormat;
    default:
        return Acad::eFilerError;
    }
}

} // namespace

int AcDbDatabase::readDwgFile(const wchar_t* name, int, bool, const wchar_t*) {
    if (name == nullptr || *name == L'\0')
        return Acad::eInvalidInput;
    const std::filesystem::path path = dwg::pathOf(name);
    std::error_code failure;
    if (!std::filesystem::exists(path, failure))
        return Acad::eFileNotFound;
    state->file = name;
    const auto opened = dwg::openSource(path);
    if (!opened)
        return statusOf(opened.error());
    auto content = (*opened)->bytes(0, (*opened)->size());
    if (!content)
        return statusOf(content.error());
    const auto file = dwg::DrawingFile::open(dwg::memorySource(std::move(*content)));
    if (!file)
        return statusOf(file.error());
    auto drawing = dwg::readDrawing(*file);
    if (!drawing)
        return statusOf(drawing.error());
    auto header = dwg::readHeaderVariables(*file, &drawing->findings);
    if (!header)
        return statusOf(header.error());
    auto pictures = dwg::readPictures(file->source());
    auto summary = dwg::readSummaryInfo(*file, &drawing->findings);
    state->drawing = std::move(*drawing);
    state->header = std::move(*header);
    state->pictures = pictures ? std::move(*pictures) : std::vector<dwg::Picture>();
    state->summary = summary ? std::move(*summary) : dwg::SummaryInfo();
    const auto measurement = dwg::readMeasurement(*file);
    state->measurement = measurement ? *measurement : std::uint16_t{0};
    state->drawing.raiseHandleSeed(state->header.HANDSEED);
    state->origin = {*file,
                     state->header,
                     state->summary,
                     state->drawing.classes,
                     state->drawing.objects().size(),
                     dwg::findSummaryRecord(state->drawing) != 0};
    state->adopt();
    return eOk;
}

void AcDbDatabase::setRetainOriginalThumbnailBitmap(bool retain) {
    state->retainPictures = retain;
}

void AcDbDatabase::setThumbnailBitmap(const std::string& bitmap) {
    state->givenBitmap = bitmap;
}

namespace {

template <class T> int openTable(AcDbDatabase::Impl& database, std::uint16_t type, T*& table, AcDb::OpenMode mode) {
    table = nullptr;
    const dwg::Object* const object = database.table(type);
    return object == nullptr ? Acad::eNoDatabase : database.openAs(table, object->handle, mode);
}

} // namespace

int AcDbDatabase::getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
    return openTable(*state, blockControl, table, mode);
}

int AcDbDatabase::getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode) {
    return openTable(*state, layerControl, table, mode);
}

int AcDbDatabase::getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode) {
    return openTable(*state, linetypeControl, table, mode);
}

AcDbObjectId AcDbDatabase::clayer() const {
    return state->hasDrawing() ? state->id(state->header.CLAYER.value) : AcDbObjectId{};
}

int AcDbDatabase::setClayer(AcDbObjectId layer) {
    if (layer.isNull())
        return Acad::eNullObjectId;
    if (layer.database != this)
        return Acad::eInvalidInput;
    if (state->isErased(layer.handle))
        return Acad::eWasErased;
    const auto* const record = state->drawing.body<dwg::Layer>({0, layer.handle});
    if (record == nullptr)
        return Acad::eInvalidKey;
    // Nothing can be drawn on a frozen layer.
    if ((record->flags & dwg::Layer::frozen) != 0)
        return Acad::eInvalidInput;
    state->changeHeader();
    state->header.CLAYER.value = layer.handle;
    return eOk;
}

double AcDbDatabase::userr4() const {
    return state->header.USERR4;
}

int AcDbDatabase::setUserr4(double value) {
    state->changeHeader();
    state->header.USERR4 = value;
    return eOk;
}

double AcDbDatabase::dimscale() const {
    return state->header.DIMSCALE;
}

int AcDbDatabase::setDimscale(double value) {
    if (!(value >= 0))
        return Acad::eOutOfRange;
    state->changeHeader();
    state->header.DIMSCALE = value;
    return eOk;
}

AcGePoint3d AcDbDatabase::insbase() const {
    return editor::toPoint(state->header.INSBASE);
}

int AcDbDatabase::setInsbase(const AcGePoint3d& point) {
    state->changeHeader();
    state->header.INSBASE = editor::fromPoint(point);
    return eOk;
}

int AcDbDatabase::luprec() const {
    return state->header.LUPREC;
}

int AcDbDatabase::getFilename(std::wstring& name) const {
    name = state->file;
    return name.empty() ? Acad::eNoDatabase : eOk;
}
