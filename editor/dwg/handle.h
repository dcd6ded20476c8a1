#pragma once

#include <cstdint>

namespace dwg {

/// The name of an object in its drawing; 0 names nothing.
using Handle = std::uint64_t;

/// What a reference means for the object it names. 6, 8, 10 and 12 are spellings relative to the object that holds the
/// reference (next, previous, plus, minus an offset).
namespace handle_code {
constexpr std::uint8_t none = 0;
constexpr std::uint8_t softOwner = 2;
constexpr std::uint8_t hardOwner = 3;
constexpr std::uint8_t softPointer = 4;
constexpr std::uint8_t hardPointer = 5;
constexpr std::uint8_t next = 6;
constexpr std::uint8_t previous = 8;
constexpr std::uint8_t plusOffset = 10;
constexpr std::uint8_t minusOffset = 12;
} // namespace handle_code

/// A reference to an object. In a drawing in memory `value` is always the absolute handle; `code` stays as stored, so
/// that an object is written back as it was. As read by BitReader::h the value is still the stored number.
struct HandleRef {
    std::uint8_t code = handle_code::none;
    Handle value = 0;

    bool isNull() const { return value == 0; }
    bool isRelative() const { return code > handle_code::hardPointer; }
    bool operator==(const HandleRef&) const = default;
};

/// A stored reference of the object `own` with its value made absolute. A relative one that leaves the range of handles
/// becomes null.
HandleRef resolved(HandleRef stored, Handle own);

/// The reverse of resolved: a relative code whose spelling doesn't fit the value any more becomes a soft pointer.
HandleRef stored(HandleRef absolute, Handle own);

} // namespace dwg
