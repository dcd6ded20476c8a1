#include "editor/dwg/rewrite_drawing.h"

#include "editor/dwg/container_writer.h"

#include <algorithm>

namespace dwg {

namespace {

void put(FileContent& content, std::string_view name, Bytes bytes) {
    std::erase_if(content.sections, [&](const SectionBytes& section) { return section.name == name; });
    if (!bytes.empty())
        content.sections.push_back({std::string(name), std::move(bytes)});
}

} // namespace

Result<Bytes> rewriteDrawing(const DrawingFile& file, const Replacements& replacements) {
    if (file.release() < Release::r2004)
        return Error{ErrorKind::unsupported, "drawings of this release have no sections to replace", 0};
    FileContent content;
    content.release = file.release();
    auto start = file.source().bytes(0, fileStartLength);
    if (!start)
        return start.error();
    content.start = std::move(*start);
    for (const std::string& name : file.sections()) {
        if (name == section::preview)
            continue;
        auto bytes = file.section(name);
        if (!bytes)
            return bytes.error();
        content.sections.push_back({name, std::move(*bytes)});
    }
    if (replacements.summary)
        put(content, section::summaryInfo, writeSummaryInfo(*replacements.summary, file.release(), file.codePage()));
    if (replacements.pictures && !replacements.pictures->empty()) {
        put(content, section::preview, writeImageSection(*replacements.pictures, 0));
    } else if (!replacements.pictures) {
        auto images = readImageSectionBytes(file.source());
        if (!images)
            return images.error();
        put(content, section::preview, std::move(*images));
    }
    setSectionPlace(content.start, section::preview, 0);
    return writeFile(content);
}

} // namespace dwg
