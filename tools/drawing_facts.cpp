// Prints what drawings say of themselves: one JSON object keyed by the paths as given.
//
//   drawing-facts FILE...
//   drawing-facts --entities FILE...
//
// A file that can't be read has "error" with kind, reason and offset beside what could be read of it; the others are
// still printed and the exit status is 1. With --entities each file is a line "# FILE", then a line for each of its
// entities, see entity_lines.h; errors and damage go to the standard error stream.

#include "editor/dwg/facts.h"
#include "editor/dwg/header_variables.h"
#include "editor/dwg/image_section.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/summary_info.h"
#include "tools/entity_lines.h"
#include "tools/json_writer.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
#include <span>

namespace {

using tools::JsonWriter;

void printPoint(JsonWriter& json, std::string_view name, dwg::Point2 point) {
    json.key(name).beginArray();
    json.value(point.x);
    json.value(point.y);
    json.endArray();
}

void printPoint(JsonWriter& json, std::string_view name, dwg::Point3 point) {
    json.key(name).beginArray();
    json.value(point.x);
    json.value(point.y);
    json.value(point.z);
    json.endArray();
}

void printTime(JsonWriter& json, std::string_view name, dwg::DayAndTime time) {
    json.key(name).beginArray();
    json.value(time.day);
    json.value(time.milliseconds);
    json.endArray();
}

void printImageSection(JsonWriter& json, const dwg::ImageSection& section) {
    json.key("imageSection").beginObject();
    json.member("address", section.address);
    json.key("entries").beginArray();
    for (const dwg::ImageEntry& entry : section.entries) {
        json.beginObject();
        json.member("code", std::uint32_t{entry.code});
        json.member("start", entry.start);
        json.member("size", entry.size);
        if (entry.measures) {
            json.member("width", entry.measures->width);
            json.member("height", entry.measures->height);
            if (entry.measures->bits)
                json.member("bits", std::uint32_t{*entry.measures->bits});
            if (entry.measures->coloursUsed)
                json.member("coloursUsed", *entry.measures->coloursUsed);
        }
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

void printHeader(JsonWriter& json, const dwg::HeaderVariables& variables) {
    json.key("header").beginObject();
    printPoint(json, "INSBASE", variables.INSBASE);
    json.member("USERR4", variables.USERR4);
    json.member("DIMSCALE", variables.DIMSCALE);
    printTime(json, "TDUCREATE", variables.TDCREATE);
    printTime(json, "TDUUPDATE", variables.TDUPDATE);
    printPoint(json, "EXTMIN", variables.EXTMIN);
    printPoint(json, "EXTMAX", variables.EXTMAX);
    json.member("LTSCALE", variables.LTSCALE);
    json.endObject();
}

void printSummary(JsonWriter& json, const dwg::SummaryInfo& info) {
    json.key("summary").beginObject();
    json.member("title", info.texts.title);
    json.member("subject", info.texts.subject);
    json.member("author", info.texts.author);
    json.member("keywords", info.texts.keywords);
    json.member("comments", info.texts.comments);
    json.member("lastsavedby", info.texts.lastSavedBy);
    printTime(json, "tdcreate", info.created);
    printTime(json, "tdupdate", info.updated);
    json.endObject();
}

/// Up to 2000 the index. From 2004 on a layer stores four bytes in its place, the highest telling what the others are
/// (c3 an index, c2 a true colour): they are printed, and 256 for the index.
void printColor(JsonWriter& json, dwg::Release release, const dwg::Color& color) {
    if (release < dwg::Release::r2004) {
        json.member("colour", std::int32_t{color.index});
        json.key("rgb").null();
        return;
    }
    json.member("colour", std::int32_t{256});
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%08x", dwg::packedColor(color));
    json.member("rgb", std::string_view(text.data()));
}

void printObjects(JsonWriter& json, const dwg::Drawing& drawing) {
    if (const auto view = dwg::activeView(drawing)) {
        json.key("activeView").beginObject();
        printPoint(json, "VIEWCTR", view->center);
        json.member("VIEWSIZE", view->height);
        json.member("aspect_ratio", view->aspectRatio);
        printPoint(json, "VIEWDIR", view->direction);
        printPoint(json, "view_target", view->target);
        json.member("VIEWTWIST", view->twist);
        json.member("view_width", view->width);
        json.endObject();
    }
    json.key("layers").beginArray();
    for (const dwg::LayerFacts& layer : dwg::layerFacts(drawing)) {
        json.beginObject();
        json.member("name", layer.name);
        printColor(json, drawing.release, layer.color);
        json.member("linetype", layer.linetype);
        json.endObject();
    }
    json.endArray();
    json.key("linetypes").beginArray();
    for (const std::wstring& name : dwg::linetypeNames(drawing))
        json.value(name);
    json.endArray();
    json.key("blocks").beginObject();
    for (const dwg::BlockFacts& block : dwg::blockFacts(drawing)) {
        json.key(tools::utf8(block.name)).beginObject();
        json.member("entities", std::uint64_t{block.entities});
        json.key("types").beginObject();
        for (const auto& [type, count] : block.types)
            json.member(type, std::uint64_t{count});
        json.endObject();
        json.key("layers").beginObject();
        for (const auto& [layer, count] : block.layers)
            json.member(tools::utf8(layer), std::uint64_t{count});
        json.endObject();
        json.endObject();
    }
    json.endObject();
}

/// Prints the members of one file; its error where it can't be read to the end.
dwg::Result<void> printFile(JsonWriter& json, const char* path) {
    const auto source = dwg::openSource(path);
    if (!source)
        return source.error();
    const auto magic = dwg::readMagic(**source);
    if (!magic)
        return magic.error();
    const auto file = dwg::DrawingFile::open(*source);
    if (!file && file.error().kind == dwg::ErrorKind::notADrawing)
        return file.error();
    json.member("magic", *magic);
    json.member("bytes", (*source)->size());
    if (dwg::releaseOf(*magic)) {
        const auto images = dwg::readImageSection(**source);
        if (!images)
            return images.error();
        if (*images)
            printImageSection(json, **images);
    }
    if (!file)
        return file.error();
    const auto variables = dwg::readHeaderVariables(*file);
    if (!variables)
        return variables.error();
    printHeader(json, *variables);
    const auto summary = dwg::readSummaryInfo(*file);
    if (summary)
        printSummary(json, *summary);
    else if (summary.error().kind != dwg::ErrorKind::missing)
        return summary.error();
    const auto drawing = dwg::readDrawing(*file);
    if (!drawing)
        return drawing.error();
    printObjects(json, *drawing);
    return {};
}

bool printEntities(const char* path) {
    const auto file = dwg::DrawingFile::open(std::filesystem::path(path));
    const auto drawing = file ? dwg::readDrawing(*file) : dwg::Result<dwg::Drawing>(file.error());
    if (!drawing) {
        std::fprintf(stderr, "%s: %s: %s\n", path, dwg::kindName(drawing.error().kind), drawing.error().reason.c_str());
        return false;
    }
    for (const dwg::Finding& finding : drawing->findings)
        std::fprintf(stderr, "%s: %s: %s\n", path, finding.place.c_str(), finding.reason.c_str());
    std::printf("# %s\n%s", path, tools::entityLines(*drawing).c_str());
    return true;
}

int printFacts(std::span<char*> paths) {
    bool failed = false;
    JsonWriter json;
    json.beginObject();
    std::set<std::string_view> printed;
    for (const char* const path : paths) {
        if (!printed.insert(path).second)
            continue;
        json.key(path).beginObject();
        if (const auto done = printFile(json, path); !done) {
            failed = true;
            json.key("error").beginObject();
            json.member("kind", dwg::kindName(done.error().kind));
            json.member("reason", done.error().reason);
            json.member("offset", done.error().offset);
            json.endObject();
        }
        json.endObject();
    }
    json.endObject();
    std::puts(json.text().c_str());
    return failed ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    std::span<char*> arguments(argv, static_cast<std::size_t>(argc));
    arguments = arguments.subspan(std::min<std::size_t>(1, arguments.size()));
    const bool entities = !arguments.empty() && std::string_view(arguments[0]) == "--entities";
    if (entities)
        arguments = arguments.subspan(1);
    if (arguments.empty()) {
        std::fputs("usage: drawing-facts [--entities] FILE...\n", stderr);
        return 2;
    }
    if (!entities)
        return printFacts(arguments);
    bool failed = false;
    for (const char* const path : arguments)
        failed |= !printEntities(path);
    return failed ? 1 : 0;
}
