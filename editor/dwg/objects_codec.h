#pragma once

#include "editor/dwg/code_page.h"
#include "editor/dwg/model.h"

#include <span>

/// Objects to and from their records. A record is what an object map entry leads to, without the length ahead of it
/// and the check behind it. From 2010 on it begins with the size of the references, in bits and with what fills up the
/// last byte, which the length doesn't count.
namespace dwg {

/// What a record doesn't say itself.
struct ObjectContext {
    Release release = Release::r2000;
    CodePage codePage;
    const std::vector<ObjectClass>* classes = nullptr;
    /// In bytes, what lists of objects that are decoded may take all in all; a decoded object subtracts its own. Null
    /// for no limit but that of the record.
    std::size_t* memory = nullptr;

    explicit ObjectContext(const Drawing& drawing)
        : ObjectContext(drawing.release, drawing.codePage, drawing.classes) {}
    ObjectContext(Release stored, std::uint16_t page, const std::vector<ObjectClass>& known)
        : release(stored), codePage(page), classes(&known) {}
};

/// The type that a record begins with; 0 where it is too short for one.
std::uint16_t recordType(std::span<const std::uint8_t> record, Release release);

/// Decodes a record: data that all objects have, then the body, or Carried for a type that isn't decoded here. Raw
/// references are resolved; owners and chains as stored. `damaged` with the offset in bytes for a record that
/// contradicts itself. The result keeps a copy of the record.
///
/// A body that isn't understood (its fields don't end where the record says) is carried instead, so that nothing gets
/// lost; `finding` says so.
Result<Object> decodeObject(std::span<const std::uint8_t> record, const ObjectContext& context,
                            std::optional<Finding>* finding = nullptr);

/// Encodes an object from its fields, whatever its kept record. What fills up the last byte isn't part of the object
/// and may differ from the record that was read. `invalid` for lists that the format has no room for.
Result<Bits> encodeObject(const Object& object, const ObjectContext& context);

/// The bytes to store: the kept record, or the object encoded when there is none.
Result<std::vector<std::uint8_t>> objectRecord(const Object& object, const ObjectContext& context);

} // namespace dwg
