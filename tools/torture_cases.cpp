#include "tools/torture_cases.h"

#include "editor/dwg/convert_drawing.h"
#include "editor/dwg/facts.h"
#include "editor/dwg/header_variables.h"
#include "editor/dwg/image_section.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/rewrite_drawing.h"
#include "editor/dwg/summary_info.h"
#include "editor/dwg/summary_record.h"
#include "editor/dwg/template_section.h"
#include "editor/dwg/write_drawing.h"

#include <algorithm>

namespace tools {

namespace {

// A well-mixed number that depends on the index alone.
std::uint64_t mixed(std::uint64_t index) {
    index += 0x9E3779B97F4A7C15;
    index = (index ^ index >> 30) * 0xBF58476D1CE4E5B9;
    index = (index ^ index >> 27) * 0x94D049BB133111EB;
    return index ^ index >> 31;
}

/// In its own release where that is written, and in another.
std::size_t writeObjects(const dwg::DrawingFile& file, dwg::Drawing& drawing, const dwg::HeaderVariables& header) {
    const auto pictures = dwg::readPictures(file.source());
    dwg::DrawingParts parts;
    parts.header = header;
    if (pictures)
        parts.pictures = *pictures;
    const auto same = dwg::writeDrawing(drawing, parts);
    const dwg::Release other = drawing.release < dwg::Release::r2007 ? dwg::Release::r2018 : dwg::Release::r2000;
    auto converted = dwg::convertDrawing(drawing, header, other,
                                         [](std::uint32_t rgb) { return static_cast<std::int16_t>(rgb & 7); });
    parts.header = converted.header;
    const auto changed = dwg::writeDrawing(converted.drawing, parts);
    return (same ? same->size() : 1) + (changed ? changed->size() : 1) + converted.leftOut.size();
}

std::size_t readObjects(const dwg::DrawingFile& file, const dwg::Result<dwg::HeaderVariables>& header) {
    auto drawing = dwg::readDrawing(file);
    if (!drawing)
        return 1;
    std::size_t seen = drawing->objects().size() + drawing->findings.size();
    seen += dwg::activeView(*drawing).has_value();
    seen += dwg::layerFacts(*drawing).size() + dwg::linetypeNames(*drawing).size() + dwg::blockFacts(*drawing).size();
    seen += dwg::readSummaryRecord(*drawing).comments.size();
    if (header)
        seen += writeObjects(file, *drawing, *header);
    return seen;
}

} // namespace

dwg::Bytes damagedCopy(const dwg::Bytes& whole, const DamagePlan& plan, std::size_t index) {
    const std::size_t size = whole.size();
    if (index < plan.cuts)
        return dwg::Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size * index / plan.cuts));
    dwg::Bytes copy = whole;
    if (size == 0)
        return copy;
    // One place in each of as many stretches; every other one in the first 4 KiB, where the maps are found.
    const std::size_t flip = index - plan.cuts;
    const std::size_t range = flip % 2 == 0 ? size : std::min<std::size_t>(size, 4096);
    const std::size_t stretch = std::max<std::size_t>(range / plan.flips, 1);
    const std::size_t at = (flip * range / plan.flips + mixed(flip) % stretch) % range;
    copy[at] = static_cast<std::uint8_t>(copy[at] ^ 1u << (mixed(flip) >> 32) % 8);
    return copy;
}

std::size_t readEverything(dwg::Bytes bytes) {
    const dwg::SourcePtr source = dwg::memorySource(std::move(bytes));
    std::size_t seen = 0;
    const auto images = dwg::readImageSection(*source);
    seen += images && images->has_value() ? (*images)->entries.size() : 1;
    const auto file = dwg::DrawingFile::open(source);
    if (!file)
        return seen + 1;
    for (const std::string& name : file->sections()) {
        dwg::Findings findings;
        const auto section = file->section(name, &findings);
        seen += section ? section->size() + findings.size() : 1;
    }
    dwg::Findings findings;
    const auto header = dwg::readHeaderVariables(*file, &findings);
    seen += findings.size() + dwg::readSummaryInfo(*file).ok() + dwg::readMeasurement(*file).ok();
    seen += readObjects(*file, header);
    const auto rewritten = dwg::rewriteDrawing(*file, {.summary = dwg::SummaryInfo(), .pictures = std::nullopt});
    return seen + (rewritten ? rewritten->size() : 1);
}

} // namespace tools
