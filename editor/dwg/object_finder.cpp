#include "editor/dwg/object_finder.h"

#include "editor/dwg/classes.h"
#include "editor/dwg/object_frame.h"
#include "editor/dwg/object_map.h"
#include "editor/dwg/objects_codec.h"

#include <algorithm>

namespace dwg {

Result<ObjectFinder> ObjectFinder::open(const DrawingFile& file) {
    ObjectFinder finder(file);
    auto map = file.section(section::handles);
    if (!map)
        return map.error();
    finder.map = std::move(*map);
    if (file.release() >= Release::r2000)
        return finder;
    Findings findings;
    if (auto bytes = file.section(section::classes)) {
        if (auto classes =
                readClasses(std::move(*bytes), file.release(), file.maintenance(), CodePage(file.codePage()), findings))
            finder.classes = std::move(*classes);
    }
    return finder;
}

Result<Bytes> ObjectFinder::recordAt(std::uint64_t offset) const {
    // Most objects that are looked for are no longer.
    constexpr std::uint64_t firstRead = 256;
    const auto size = file.sectionSize(section::objects);
    if (!size)
        return size.error();
    if (offset >= *size)
        return Error{ErrorKind::damaged, "an object lies outside its section", offset};
    const std::uint64_t rest = *size - offset;
    auto bytes = file.sectionRange(section::objects, offset, std::min(rest, firstRead));
    if (!bytes)
        return bytes.error();
    const auto frame = readObjectFrame(*bytes, file.release(), rest);
    if (!frame)
        return Error{ErrorKind::damaged, "an object is longer than its section", offset};
    const std::uint64_t whole = frame->start + frame->size;
    if (whole > bytes->size()) {
        bytes = file.sectionRange(section::objects, offset, whole);
        if (!bytes)
            return bytes.error();
    }
    bytes->resize(whole);
    bytes->erase(bytes->begin(), bytes->begin() + static_cast<std::ptrdiff_t>(frame->start));
    return bytes;
}

Result<Object> ObjectFinder::find(Handle handle) const {
    const auto offset = findInObjectMap(map, handle);
    if (!offset)
        return Error{ErrorKind::missing, objectPlace(handle) + " isn't in the object map", 0};
    const auto record = recordAt(*offset);
    if (!record)
        return record.error();
    if (classes.empty() && recordType(*record, file.release()) >= object_type::firstClass)
        return Error{ErrorKind::unsupported, objectPlace(handle) + " is of a class", *offset};
    auto object = decodeObject(*record, ObjectContext(file.release(), file.codePage(), classes));
    if (object && object->handle != handle)
        return Error{ErrorKind::damaged, objectPlace(handle) + " bears another handle than in the object map", *offset};
    return object;
}

} // namespace dwg
