#include "editor/dwg/default_drawing.h"

#include "editor/dwg/default_styles.h"
#include "editor/dwg/dimension_style_table.h"

#include <initializer_list>
#include <utility>

namespace dwg {

namespace {

using namespace default_handle;

HandleRef softOwner(Handle handle) {
    return {handle_code::softOwner, handle};
}

HandleRef hardOwner(Handle handle) {
    return {handle_code::hardOwner, handle};
}

HandleRef softPointer(Handle handle) {
    return {handle_code::softPointer, handle};
}

HandleRef hardPointer(Handle handle) {
    return {handle_code::hardPointer, handle};
}

class Builder {
public:
    Drawing drawing;

    Object& add(Handle handle, std::uint16_t type, Handle owner, Body body) {
        Object object;
        object.handle = handle;
        object.type = type;
        object.owner = softPointer(owner);
        object.body = std::move(body);
        return *drawing.add(std::move(object));
    }

    void addTable(Handle handle, std::uint16_t type, std::initializer_list<Handle> records,
                  std::initializer_list<Handle> standing = {}) {
        TableControl table;
        for (const Handle record : records)
            table.records.push_back(softOwner(record));
        for (const Handle record : standing)
            table.standing.push_back(hardOwner(record));
        add(handle, type, 0, std::move(table));
    }

    /// A dictionary is told of what becomes of it by the one it hangs on.
    Object& addDictionary(Handle handle, Handle owner, std::initializer_list<std::pair<const wchar_t*, Handle>> items) {
        Dictionary dictionary;
        for (const auto& [name, object] : items)
            dictionary.items.push_back({name, softOwner(object)});
        Object& object = add(handle, object_type::dictionary, owner, std::move(dictionary));
        if (owner != 0)
            object.reactors.push_back(softPointer(owner));
        return object;
    }

    void addFrame(Handle handle, std::uint16_t type, Handle record, Body body) {
        Object& object = add(handle, type, record, std::move(body));
        object.entity.emplace();
        object.entity->layer = hardPointer(layerZero);
        drawing.setOwner(object, record);
    }

    void addSpace(const wchar_t* name, Handle record, Handle begin, Handle end, Handle layout) {
        BlockHeader header;
        header.head.name = name;
        header.begin = hardOwner(begin);
        header.end = hardOwner(end);
        header.layout = hardPointer(layout);
        add(record, object_type::blockHeader, blockTable, std::move(header));
        addFrame(begin, object_type::block, record, BlockBegin{name});
        addFrame(end, object_type::endBlock, record, BlockEnd{});
    }
};

RecordHead head(const wchar_t* name) {
    RecordHead made;
    made.name = name;
    return made;
}

void addTables(Builder& builder) {
    BlockControl blocks;
    blocks.modelSpace = hardOwner(modelSpace);
    blocks.paperSpace = hardOwner(paperSpace);
    builder.add(blockTable, object_type::blockControl, 0, std::move(blocks));
    builder.addTable(layerTable, object_type::layerControl, {layerZero});
    builder.addTable(styleTable, object_type::styleControl, {standardStyle});
    builder.addTable(linetypeTable, object_type::linetypeControl, {continuous}, {byBlock, byLayer});
    builder.addTable(viewTable, object_type::viewControl, {});
    builder.addTable(ucsTable, object_type::ucsControl, {});
    builder.addTable(viewportTable, object_type::viewportControl, {activeViewport});
    builder.addTable(applicationTable, object_type::applicationControl, {application});
    builder.add(dimensionStyleTable, object_type::dimensionStyleControl, 0,
                makeDimensionStyleTable({softOwner(standardDimensionStyle)}));
    builder.addTable(viewportEntityTable, object_type::viewportEntityControl, {});
}

void addRecords(Builder& builder) {
    Layer layer;
    layer.head = head(L"0");
    layer.plotStyle = hardPointer(normalPlotStyle);
    layer.linetype = hardPointer(continuous);
    constexpr std::uint16_t defaultLineweight = 31 << 5;
    layer.flags = Layer::plotted | defaultLineweight;
    builder.add(layerZero, object_type::layer, layerTable, std::move(layer));

    TextStyle style;
    style.head = head(L"Standard");
    style.lastHeight = 0.2;
    style.fontFile = L"txt";
    builder.add(standardStyle, object_type::style, styleTable, std::move(style));

    builder.add(application, object_type::application, applicationTable, ApplicationRecord{head(L"ACAD")});

    const auto addLinetype = [&](Handle handle, const wchar_t* name, const wchar_t* description) {
        Linetype linetype;
        linetype.head = head(name);
        linetype.description = description;
        builder.add(handle, object_type::linetype, linetypeTable, std::move(linetype));
    };
    addLinetype(byBlock, L"ByBlock", L"");
    addLinetype(byLayer, L"ByLayer", L"");
    addLinetype(continuous, L"Continuous", L"Solid line");

    OtherRecord dimensions = makeStandardDimensionStyle(hardPointer(standardStyle));
    builder.add(standardDimensionStyle, object_type::dimensionStyle, dimensionStyleTable, std::move(dimensions));

    // A view of 9 units' height on the limits of a new drawing.
    ViewportRecord viewport;
    viewport.head = head(L"*Active");
    viewport.height = 9;
    viewport.width = 9 * 16.0 / 9.0;
    viewport.center = {6, 4.5};
    viewport.gridSpacing = viewport.snapSpacing = {0.5, 0.5};
    builder.add(activeViewport, object_type::viewportRecord, viewportTable, std::move(viewport));
}

Layout layoutOf(const wchar_t* name, std::uint32_t tab, Handle space) {
    Layout layout;
    layout.name = name;
    layout.tabOrder = tab;
    // Bit 0: the linetype scale counts in paper units.
    layout.flags = 1;
    layout.limitsMaximum = {12, 9};
    layout.blockRecord = softPointer(space);
    layout.plot.printer = L"none_device";
    layout.plot.paperSize = L"Letter_(8.50_x_11.00_Inches)";
    // Bits of both: plotted with lineweights and plot styles, the picture prepared first; model space is marked so.
    constexpr std::uint16_t common = 0x2B0;
    constexpr std::uint16_t modelType = 0x400;
    layout.plot.flags = static_cast<std::uint16_t>(tab == 0 ? common | modelType : common);
    layout.plot.paperWidth = 215.9;
    layout.plot.paperHeight = 279.4;
    constexpr std::uint16_t layoutArea = 5;
    layout.plot.plotType = tab == 0 ? 0 : layoutArea;
    constexpr std::uint16_t oneToOne = 16;
    layout.plot.scaleType = tab == 0 ? 0 : oneToOne;
    // Nothing drawn yet: extents are turned inside out.
    layout.extentsMinimum = {1e20, 1e20, 1e20};
    layout.extentsMaximum = {-1e20, -1e20, -1e20};
    return layout;
}

void addDictionaries(Builder& builder) {
    builder.addDictionary(namedObjects, 0,
                          {{L"ACAD_GROUP", groups},
                           {L"ACAD_LAYOUT", layouts},
                           {L"ACAD_MLINESTYLE", multilineStyles},
                           {L"ACAD_PLOTSETTINGS", plotSettings},
                           {L"ACAD_PLOTSTYLENAME", plotStyles}});
    builder.addDictionary(groups, namedObjects, {});
    builder.addDictionary(plotSettings, namedObjects, {});
    builder.addDictionary(layouts, namedObjects, {{L"Layout1", paperLayout}, {L"Model", modelLayout}});
    builder.addDictionary(multilineStyles, namedObjects, {{L"Standard", standardMultilineStyle}});

    const std::uint16_t withDefault =
        builder.drawing.classNumber({0, 0, L"ObjectDBX Classes", L"AcDbDictionaryWithDefault", L"ACDBDICTIONARYWDFLT",
                                     false, ObjectClass::objectItem});
    Object& styles = builder.addDictionary(plotStyles, namedObjects, {{L"Normal", normalPlotStyle}});
    styles.type = withDefault;
    styles.as<Dictionary>()->hasDefault = true;
    styles.as<Dictionary>()->byDefault = hardPointer(normalPlotStyle);

    const auto addMember = [&](Handle handle, std::uint16_t type, Handle dictionary, Body body) {
        builder.add(handle, type, dictionary, std::move(body)).reactors.push_back(softPointer(dictionary));
    };
    addMember(normalPlotStyle, object_type::placeholder, plotStyles, Placeholder{});
    addMember(standardMultilineStyle, object_type::multilineStyle, multilineStyles, makeStandardMultilineStyle());
    addMember(paperLayout, object_type::layout, layouts, layoutOf(L"Layout1", 1, paperSpace));
    addMember(modelLayout, object_type::layout, layouts, layoutOf(L"Model", 0, modelSpace));
}

} // namespace

Drawing makeDefaultDrawing() {
    Builder builder;
    addTables(builder);
    addRecords(builder);
    addDictionaries(builder);
    builder.addSpace(L"*Model_Space", modelSpace, modelBegin, modelEnd, modelLayout);
    builder.addSpace(L"*Paper_Space", paperSpace, paperBegin, paperEnd, paperLayout);
    builder.drawing.raiseHandleSeed(firstFree);
    return std::move(builder.drawing);
}

} // namespace dwg
