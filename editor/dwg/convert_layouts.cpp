#include "editor/dwg/convert_layouts.h"

#include "editor/dwg/default_drawing.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace dwg {

namespace {

using namespace default_handle;

struct Entry {
    const wchar_t* name;
    Handle inDefault;
    HandleRef HeaderVariables::*variable;
};

constexpr std::array<Entry, 3> entries = {
    {{L"ACAD_LAYOUT", layouts, &HeaderVariables::layoutDictionary},
     {L"ACAD_PLOTSETTINGS", plotSettings, &HeaderVariables::plotSettingsDictionary},
     {L"ACAD_PLOTSTYLENAME", plotStyles, &HeaderVariables::plotStyleDictionary}}};

bool hasLayouts(const Dictionary& names) {
    return std::ranges::any_of(names.items, [](const Dictionary::Item& item) { return item.name == entries[0].name; });
}

} // namespace

void addLayouts(Drawing& drawing, HeaderVariables& header) {
    Object* const names = drawing.namedObjects();
    auto* const dictionary = names == nullptr ? nullptr : names->as<Dictionary>();
    if (dictionary == nullptr || hasLayouts(*dictionary) ||
        drawing.body<BlockHeader>({0, drawing.modelSpace()}) == nullptr ||
        drawing.body<BlockHeader>({0, drawing.paperSpace()}) == nullptr)
        return;
    const Drawing model = makeDefaultDrawing();
    std::unordered_map<Handle, Handle> handles = {
        {namedObjects, names->handle}, {modelSpace, drawing.modelSpace()}, {paperSpace, drawing.paperSpace()}};
    constexpr std::array parts = {layouts, plotSettings, plotStyles, normalPlotStyle, paperLayout, modelLayout};
    for (const Handle part : parts)
        handles[part] = drawing.newHandle();
    for (const Handle part : parts) {
        Object object = *model.find(part);
        object.handle = handles[part];
        if (const ObjectClass* const own = model.classOf(object))
            object.type = drawing.classNumber(*own);
        mapReferences(object, [&handles](Handle handle) {
            const auto found = handles.find(handle);
            return found == handles.end() ? Handle{0} : found->second;
        });
        drawing.add(std::move(object));
    }
    for (const Entry& entry : entries) {
        const Handle handle = handles[entry.inDefault];
        std::erase_if(dictionary->items, [&entry](const Dictionary::Item& item) { return item.name == entry.name; });
        dictionary->items.push_back({entry.name, {handle_code::softOwner, handle}});
        header.*entry.variable = {handle_code::hardPointer, handle};
    }
    names->changed();
    for (const auto& [space, layout] : {std::pair(modelSpace, modelLayout), std::pair(paperSpace, paperLayout)}) {
        drawing.body<BlockHeader>({0, handles[space]})->layout.value = handles[layout];
        drawing.find(handles[space])->changed();
    }
    for (const auto& object : drawing.objects()) {
        if (auto* const layer = object->as<Layer>(); layer != nullptr && layer->plotStyle.isNull()) {
            layer->plotStyle.value = handles[normalPlotStyle];
            object->changed();
        }
    }
}

} // namespace dwg
