// Objects of every release. The first byte chooses the release; then come records one after the other, each with its
// length ahead and a check behind as drawings have them. They are decoded, linked and encoded again; what was encoded
// is decoded to the same once more.

#include "editor/dwg/facts.h"
#include "editor/dwg/object_frame.h"
#include "editor/dwg/objects_codec.h"
#include "editor/dwg/read_drawing.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr std::size_t checkBytes = 2;

/// Classes of both kinds, among them those that are decoded.
std::vector<dwg::ObjectClass> classes() {
    std::vector<dwg::ObjectClass> list;
    const auto add = [&list](const wchar_t* name, std::uint16_t item) {
        const auto number = static_cast<std::uint16_t>(dwg::object_type::firstClass + list.size());
        list.push_back({number, 0, L"Own", L"AcDbOwn", name, false, item});
    };
    for (const wchar_t* const name : {L"ACDBDICTIONARYWDFLT", L"XRECORD", L"LAYOUT", L"ACDBPLACEHOLDER", L"OWNOBJECT"})
        add(name, dwg::ObjectClass::objectItem);
    for (const wchar_t* const name : {L"LWPOLYLINE", L"HATCH", L"OWNENTITY"})
        add(name, dwg::ObjectClass::entityItem);
    return list;
}

void decodeAll(dwg::Drawing& drawing, std::span<const std::uint8_t> rest) {
    const dwg::ObjectContext context(drawing);
    while (const auto frame = dwg::readObjectFrame(rest, drawing.release, rest.size())) {
        auto object = dwg::decodeObject(rest.subspan(frame->start, frame->size), context);
        if (object)
            drawing.add(std::move(*object));
        rest = rest.subspan(std::min(rest.size(), frame->start + frame->size + checkBytes));
    }
}

void encodeAgain(const dwg::Drawing& drawing) {
    const dwg::ObjectContext context(drawing);
    for (const auto& object : drawing.objects()) {
        const auto record = dwg::encodeObject(*object, context);
        if (!record)
            continue;
        const auto again = dwg::decodeObject(record->bytes, context);
        if (!again)
            std::abort();
        const auto once = dwg::encodeObject(*again, context);
        if (!once || once->bytes != record->bytes)
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    dwg::Drawing drawing;
    drawing.release = static_cast<dwg::Release>(data[0] % 8);
    drawing.classes = classes();
    decodeAll(drawing, {data + 1, size - 1});
    encodeAgain(drawing);
    dwg::resolveLinks(drawing);
    dwg::checkContent(drawing);
    dwg::activeView(drawing);
    dwg::layerFacts(drawing);
    dwg::blockFacts(drawing);
    dwg::linkEntities(drawing);
    return 0;
}
