#include "editor/dwg/read_drawing.h"

#include "editor/dwg/classes.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/object_frame.h"
#include "editor/dwg/object_map.h"
#include "editor/dwg/objects_codec.h"
#include "editor/dwg/reading_limits.h"

#include <algorithm>

namespace dwg {

namespace {

constexpr std::size_t checkBytes = 2;

/// What an object takes beside its record, its texts and lists: itself, its body, places in indices and blocks.
constexpr std::size_t bytesOfObject = sizeof(Object) + 240;

class ObjectLoader {
public:
    ObjectLoader(ByteView file, Drawing& target, ReadingLimits& budget)
        : bytes(file), drawing(target), context(target), limits(budget), left(file.size()) {}

    bool isOverLimit() const { return overLimit; }

    /// False when reading on makes no sense.
    bool load(const ObjectPlaceInFile& place) {
        if (place.handle == 0 || drawing.find(place.handle) != nullptr)
            return skip(place, "is in the object map twice, or has no handle");
        if (place.offset >= bytes.size())
            return skip(place, "lies outside the file");
        const ByteView rest = bytes.subspan(place.offset);
        const auto frame = readObjectFrame(rest, drawing.release, rest.size());
        if (!frame)
            return skip(place, "is longer than the file");
        const std::size_t size = frame->size;
        const ByteView record = rest.subspan(frame->start, size);
        if (size > left) {
            skip(place, "overlaps others: together they are longer than the file");
            return false;
        }
        left -= size;
        check(place, rest.first(frame->start + size), rest.subspan(frame->start + size));
        return decode(place, record);
    }

private:
    bool skip(const ObjectPlaceInFile& place, const char* reason) {
        addFinding(drawing.findings, {objectPlace(place.handle), std::string(reason) + "; left out", place.offset});
        return true;
    }

    void check(const ObjectPlaceInFile& place, ByteView checked, ByteView behind) {
        if (behind.size() < checkBytes || (behind[0] | behind[1] << 8) != crc16(checked))
            addFinding(drawing.findings, {objectPlace(place.handle), "its check doesn't fit", place.offset});
    }

    bool decode(const ObjectPlaceInFile& place, ByteView record) {
        const std::size_t before = limits.left(drawing.findings);
        // The record is kept, and raw bytes of the body may be as many again.
        const std::size_t own = bytesOfObject + 2 * record.size();
        overLimit = before < own;
        if (overLimit)
            return false;
        std::size_t lists = before - own;
        context.memory = &lists;
        std::optional<Finding> finding;
        Result<Object> object = decodeObject(record, context, &finding);
        limits.take(before - lists);
        if (!object) {
            addFinding(drawing.findings, {objectPlace(place.handle), object.error().reason + "; left out",
                                          place.offset + object.error().offset});
            return true;
        }
        if (object->handle != place.handle)
            return skip(place, "bears another handle than in the object map");
        if (finding) {
            finding->offset += place.offset;
            addFinding(drawing.findings, std::move(*finding));
        }
        drawing.add(std::move(*object));
        return true;
    }

    ByteView bytes;
    Drawing& drawing;
    ObjectContext context;
    ReadingLimits& limits;
    bool overLimit = false;
    /// Records don't overlap, so this many bytes at most can still belong to one.
    std::size_t left;
};

/// The map itself isn't needed any longer then.
Result<std::vector<ObjectPlaceInFile>> readPlaces(const DrawingFile& file, const ReadingLimits& limits,
                                                  Findings& findings) {
    const Result<Bytes> map = file.section(section::handles, &findings);
    if (!map)
        return map.error();
    std::vector<ObjectPlaceInFile> places = readObjectMap(*map, findings, limits.places());
    // Pages may come in any order; a drawing takes objects in theirs without work.
    if (!std::ranges::is_sorted(places, {}, &ObjectPlaceInFile::handle))
        std::ranges::stable_sort(places, {}, &ObjectPlaceInFile::handle);
    return places;
}

} // namespace

Result<Drawing> readDrawing(const DrawingFile& file) {
    Drawing drawing;
    drawing.release = file.release();
    drawing.codePage = file.codePage();
    drawing.findings = file.findings();

    if (Result<Bytes> section = file.section(section::classes, &drawing.findings)) {
        Result<std::vector<ObjectClass>> classes = readClasses(std::move(*section), file.release(), file.maintenance(),
                                                               CodePage(drawing.codePage), drawing.findings);
        if (classes)
            drawing.classes = std::move(*classes);
        else
            addFinding(drawing.findings,
                       {std::string(section::classes), classes.error().reason, classes.error().offset});
    } else {
        addFinding(drawing.findings, {std::string(section::classes), section.error().reason, section.error().offset});
    }

    ReadingLimits limits(file.source().size());
    const auto places = readPlaces(file, limits, drawing.findings);
    if (!places)
        return places.error();
    const Result<Bytes> objects = file.section(section::objects, &drawing.findings);
    if (!objects)
        return objects.error();
    limits.take(objects->size() + places->size() * sizeof(ObjectPlaceInFile));
    ObjectLoader loader(*objects, drawing, limits);
    for (const ObjectPlaceInFile& place : *places) {
        if (!loader.load(place))
            break;
    }
    if (loader.isOverLimit())
        return Error{ErrorKind::tooLarge, "the objects take more memory than a file of this size may ask for", 0};
    resolveLinks(drawing);
    checkContent(drawing);
    return drawing;
}

} // namespace dwg
