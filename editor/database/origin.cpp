#include "editor/database/origin.h"

#include "editor/dwg/summary_record.h"

#include <algorithm>

namespace editor {

bool Origin::holds(const dwg::Drawing& drawing, const dwg::HeaderVariables& current) const {
    if (!file || drawing.release != file->release() || drawing.classes != classes || current != header)
        return false;
    // Whatever is new or changed has no record. Up to 2000 the summary is an object, and the dictionary names it.
    const bool isObject = drawing.release < dwg::Release::r2004;
    const dwg::Handle summaryRecord = isObject ? dwg::findSummaryRecord(drawing) : 0;
    const dwg::Object* const names = isObject ? drawing.namedObjects() : nullptr;
    const std::size_t others = drawing.objects().size() - (summaryRecord != 0 ? 1 : 0);
    if (others != objects - (isObject && hadSummaryRecord ? 1 : 0))
        return false;
    return std::ranges::none_of(drawing.objects(), [&](const auto& object) {
        return object->record.empty() && object->handle != summaryRecord && object.get() != names;
    });
}

std::vector<dwg::SectionBytes> Origin::keptSections(const std::vector<std::string_view>& names) const {
    constexpr std::string_view written[] = {
        dwg::section::header,  dwg::section::classes,     dwg::section::handles,         dwg::section::objects,
        dwg::section::preview, dwg::section::summaryInfo, dwg::section::objectFreeSpace, dwg::section::auxHeader};
    std::vector<dwg::SectionBytes> kept;
    for (const std::string& name : file->sections()) {
        if (std::ranges::find(written, name) != std::end(written))
            continue;
        if (!names.empty() && std::ranges::find(names, name) == names.end())
            continue;
        if (auto bytes = file->section(name))
            kept.push_back({name, std::move(*bytes)});
    }
    return kept;
}

} // namespace editor
