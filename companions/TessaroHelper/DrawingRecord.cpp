#include "companions/TessaroHelper/DrawingRecord.h"

#include "companions/TessaroHelper/Dates.h"
#include "editor/dwg/quick_facts.h"
#include "editor/dwg/summary_info.h"

#include <filesystem>

namespace helper {
namespace {

/// One record: the view fills the whole picture.
std::vector<double> viewRecord(const dwg::Point3& insertionPoint, const dwg::ViewFacts& view) {
    return {insertionPoint.x,
            insertionPoint.y,
            insertionPoint.z,
            0,
            0,
            1,
            1,
            view.target.x,
            view.target.y,
            view.target.z,
            view.direction.x,
            view.direction.y,
            view.direction.z,
            view.width,
            view.height,
            view.twist,
            view.center.x,
            view.center.y};
}

} // namespace

std::optional<DrawingRecord> readDrawingRecord(const std::wstring& path, bool wantView) {
    const std::filesystem::path file = dwg::pathOf(path);
    const auto drawing = dwg::DrawingFile::open(file);
    if (!drawing)
        return std::nullopt;
    const auto variables = dwg::readHeaderVariables(*drawing);
    if (!variables)
        return std::nullopt;

    DrawingRecord record;
    const HelperDate fallback = dateOfFile(file);
    record.created = localDate(variables->TDCREATE).value_or(fallback);
    record.updated = localDate(variables->TDUPDATE).value_or(fallback);
    if (drawing->release() >= dwg::Release::r2004) {
        if (const auto summary = dwg::readSummaryInfo(*drawing))
            record.comments = summary->texts.comments;
        if (!wantView)
            return record;
    }
    const auto objects = dwg::ObjectFinder::open(*drawing);
    if (!objects)
        return record;
    if (drawing->release() < dwg::Release::r2004)
        record.comments = dwg::findSummaryTexts(*objects, *variables).value_or(dwg::SummaryTexts{}).comments;
    if (!wantView)
        return record;
    if (const auto view = dwg::findActiveView(*objects, *variables))
        record.view = viewRecord(variables->INSBASE, *view);
    return record;
}

} // namespace helper
