#include "tests/soak/SavedDrawing.h"

#include "editor/dwg/read_drawing.h"

namespace {

std::string DanglingIn(dwg::Drawing& drawing) {
    std::string dangling;
    for (const auto& object : drawing.objects())
        dwg::mapReferences(*object, [&](dwg::Handle handle) {
            if (handle != 0 && drawing.find(handle) == nullptr && dangling.empty())
                dangling = dwg::objectPlace(object->handle) + " refers to " + dwg::objectPlace(handle) +
                           ", which is not there";
            return handle;
        });
    return dangling;
}

} // namespace

std::string BrokenInDrawing(const std::filesystem::path& file) {
    const auto opened = dwg::DrawingFile::open(file);
    if (!opened)
        return "the saved drawing can't be opened";
    auto drawing = dwg::readDrawing(*opened);
    if (!drawing)
        return "the saved drawing can't be read";
    if (!drawing->findings.empty())
        return drawing->findings.front().place + ": " + drawing->findings.front().reason;
    return DanglingIn(*drawing);
}
