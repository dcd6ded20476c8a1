#include "editor/dwg/template_section.h"

#include "editor/dwg/byte_cursor.h"

namespace dwg {

Result<std::uint16_t> readMeasurement(const DrawingFile& file) {
    const auto bytes = file.section(section::templateSection);
    if (!bytes)
        return bytes.error();
    ByteCursor cursor(*bytes);
    const std::size_t units = cursor.u16(); // of the template's description
    cursor.skip(file.release() >= Release::r2007 ? units * 2 : units);
    const std::uint16_t measurement = cursor.u16();
    if (cursor.failed())
        return Error{ErrorKind::truncated, "AcDb:Template ends within its description", 0};
    return measurement;
}

} // namespace dwg
