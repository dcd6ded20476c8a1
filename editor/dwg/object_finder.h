#pragma once

#include "editor/dwg/drawing_file.h"
#include "editor/dwg/model.h"

namespace dwg {

/// Reads single objects of a drawing without reading the others: a few reads each, and unpacking of the pages that the
/// object lies on. Links are as stored. Several threads may use one finder; the file stays open as long as it lives.
class ObjectFinder {
public:
    /// Reads the object map, and the classes in R13 and R14, where records of values are objects of a class.
    static Result<ObjectFinder> open(const DrawingFile& file);

    /// `missing` for a handle that the map doesn't hold, `damaged` for a record that can't be read or is another's,
    /// `unsupported` for an object of a class where the classes weren't read.
    Result<Object> find(Handle handle) const;
    std::uint16_t codePage() const { return file.codePage(); }

private:
    explicit ObjectFinder(const DrawingFile& opened) : file(opened) {}
    Result<Bytes> recordAt(std::uint64_t offset) const;

    DrawingFile file;
    Bytes map;
    std::vector<ObjectClass> classes;
};

} // namespace dwg
