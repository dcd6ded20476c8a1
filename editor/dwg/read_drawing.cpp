#include "editor/dwg/read_drawing.h"

#include "editor/dwg/classes.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/object_frame.h"
#include "editor/dwg/object_map.h"
#include "editor/dwg/objects_codec.h"

namespace dwg {

namespace {

constexpr std::size_t checkBytes = 2;

class ObjectLoader {
public:
    ObjectLoader(ByteView file, Drawing& target) : bytes(file), drawing(target), context(target), left(file.size()) {}

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
        decode(place, record);
        return true;
    }

private:
    bool skip(const ObjectPlaceInFile& place, const char* reason) {
        drawing.findings.push_back({objectPlace(place.handle), std::string(reason) + "; left out", place.offset});
        return true;
    }

    void check(const ObjectPlaceInFile& place, ByteView checked, ByteView behind) {
        if (behind.size() < checkBytes || (behind[0] | behind[1] << 8) != crc16(checked))
            drawing.findings.push_back({objectPlace(place.handle), "its check doesn't fit", place.offset});
    }

    void decode(const ObjectPlaceInFile& place, ByteView record) {
        std::optional<Finding> finding;
        Result<Object> object = decodeObject(record, context, &finding);
        if (!object) {
            drawing.findings.push_back({objectPlace(place.handle), object.error().reason + "; left out",
                                        place.offset + object.error().offset});
            return;
        }
        if (object->handle != place.handle) {
            skip(place, "bears another handle than in the object map");
            return;
        }
        if (finding) {
            finding->offset += place.offset;
            drawing.findings.push_back(std::move(*finding));
        }
        drawing.add(std::move(*object));
    }

    ByteView bytes;
    Drawing& drawing;
    ObjectContext context;
    /// Records don't overlap, so this many bytes at most can still belong to one.
    std::size_t left;
};

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
            drawing.findings.push_back({std::string(section::classes), classes.error().reason, classes.error().offset});
    } else {
        drawing.findings.push_back({std::string(section::classes), section.error().reason, section.error().offset});
    }

    const Result<Bytes> map = file.section(section::handles, &drawing.findings);
    if (!map)
        return map.error();
    const Result<Bytes> objects = file.section(section::objects, &drawing.findings);
    if (!objects)
        return objects.error();
    ObjectLoader loader(*objects, drawing);
    for (const ObjectPlaceInFile& place : readObjectMap(*map, drawing.findings)) {
        if (!loader.load(place))
            break;
    }
    resolveLinks(drawing);
    return drawing;
}

} // namespace dwg
