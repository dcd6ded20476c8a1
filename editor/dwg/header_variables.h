#pragma once

#include "editor/dwg/color.h"
#include "editor/dwg/day_and_time.h"
#include "editor/dwg/drawing_file.h"
#include "editor/dwg/handle.h"
#include "editor/dwg/point.h"

#include <string>

namespace dwg {

/// How a header variable is stored, and by what it is kept in memory. The kinds bear the names of the bit codes; TD is
/// a pair of BL, SEED a reference that stays in the data where others move to their own stream.
namespace header_kind {
struct B {
    using Type = bool;
};
struct RC {
    using Type = std::int16_t;
}; // some releases store the same variables as BS
struct BS {
    using Type = std::int16_t;
};
struct BL {
    using Type = std::int32_t;
};
struct BLL {
    using Type = std::uint64_t;
};
struct BD {
    using Type = double;
};
struct BD3 {
    using Type = Point3;
};
struct RD2 {
    using Type = Point2;
};
struct T {
    using Type = std::wstring;
};
struct TD {
    using Type = DayAndTime;
};
struct CMC {
    using Type = Color;
};
struct SEED {
    using Type = Handle;
};
struct H {
    using Type = HandleRef;
};
} // namespace header_kind

/// The variables that a drawing keeps for itself, of all releases. What a release doesn't store has the value of a new
/// drawing, in inches. The fields are listed, in their order and with their defaults, in header_fields.inc: INSBASE,
/// LTSCALE ..., and the references to tables (`layerControl`), dictionaries (`namedObjectsDictionary`) and block
/// records
/// (`modelSpace`).
struct HeaderVariables {
#define HEADER_FIELD(kind, name, first, last, ...) header_kind::kind::Type name = __VA_ARGS__;
#define HEADER_FIELD_AGAIN(kind, name, first, last)
#define HEADER_FIELD_WHEN(condition, kind, name, first, last, ...) header_kind::kind::Type name = __VA_ARGS__;
#include "editor/dwg/header_fields.inc"

    bool operator==(const HeaderVariables&) const = default;
};

/// Reads the header variables of a drawing of any release. Guards and checks that don't match are findings; a section
/// that ends within the variables is an error.
Result<HeaderVariables> readHeaderVariables(const DrawingFile& file, Findings* findings = nullptr);

/// The variables as the release stores them: the content of the section, without guards, length and check. Before 2007
/// text is encoded in the code page of this number.
Bytes writeHeaderVariables(const HeaderVariables& variables, std::uint16_t codePage, Release release = Release::r2000);

/// Visits what AC1015 stores as `visit(name, value)`, in order, for comparing and printing.
template <class Visitor> void visitHeaderVariables(const HeaderVariables& variables, Visitor&& visit) {
#define HEADER_FIELD(kind, name, first, last, ...)                                                                     \
    if (Release::first <= Release::r2000 && Release::r2000 <= Release::last)                                           \
        visit(#name, variables.name);
#define HEADER_FIELD_AGAIN(kind, name, first, last) HEADER_FIELD(kind, name, first, last)
#define HEADER_FIELD_WHEN(condition, kind, name, first, last, ...)                                                     \
    if (condition)                                                                                                     \
        visit(#name, variables.name);
#include "editor/dwg/header_fields.inc"
}

} // namespace dwg
