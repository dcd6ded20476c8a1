#include "editor/dwg/recoding.h"

#include "editor/dwg/code_page.h"
#include "editor/dwg/recoding_fields.h"

#include <algorithm>
#include <string_view>

namespace dwg {

namespace {

using namespace recoding;

/// The three streams of a body, whether it is carried whole or behind a record's head.
struct Parts {
    Bits bits;
    std::vector<HandleRef> references;
    Bits texts;
};

Parts partsOf(const Object& object) {
    if (const auto* const carried = object.as<Carried>())
        return {carried->bits, carried->references, carried->texts};
    const auto& record = *object.as<OtherRecord>();
    return {record.rest, record.references, record.texts};
}

void setParts(Object& object, Parts parts) {
    if (auto* const carried = object.as<Carried>()) {
        *carried = {std::move(parts.bits), std::move(parts.references), std::move(parts.texts)};
        return;
    }
    auto& record = *object.as<OtherRecord>();
    record.rest = std::move(parts.bits);
    record.references = std::move(parts.references);
    record.texts = std::move(parts.texts);
}

template <class Fields> void eachColor(Fields&, const std::function<void(Color&)>&) {}

void eachColor(MultilineStyleFields& fields, const std::function<void(Color&)>& visit) {
    visit(fields.fill);
    for (MultilineStyleFields::Line& line : fields.lines)
        visit(line.color);
}

void eachColor(DimensionStyleFields& fields, const std::function<void(Color&)>& visit) {
    std::ranges::for_each(fields.colors, visit);
}

template <class Fields> void adapt(Fields&, const RecodingContext&) {}

constexpr std::uint16_t byLayerIndex = 0x7FFF, byBlockIndex = 0x7FFE;

/// Up to 2013 the linetypes of a multiline are told by their places in the table, then by references.
void adapt(MultilineStyleFields& fields, const RecodingContext& context) {
    const bool wasIndex = context.from <= Release::r2013, becomesIndex = context.to <= Release::r2013;
    const Object* const table = context.drawing.firstOfType(object_type::linetypeControl);
    const auto* const control = table == nullptr ? nullptr : table->as<TableControl>();
    if (control == nullptr || wasIndex == becomesIndex)
        return;
    const HandleRef byBlock = control->standing.empty() ? HandleRef{} : control->standing.front();
    const HandleRef byLayer = control->standing.size() < 2 ? HandleRef{} : control->standing[1];
    for (MultilineStyleFields::Line& line : fields.lines) {
        if (becomesIndex) {
            const auto found = std::ranges::find(control->records, line.linetype.value, &HandleRef::value);
            line.linetypeIndex = line.linetype.value == byBlock.value ? byBlockIndex : byLayerIndex;
            if (found != control->records.end())
                line.linetypeIndex = static_cast<std::uint16_t>(found - control->records.begin());
        } else if (line.linetypeIndex < control->records.size()) {
            line.linetype.value = control->records[line.linetypeIndex].value;
        } else {
            line.linetype.value = line.linetypeIndex == byBlockIndex ? byBlock.value : byLayer.value;
        }
    }
}

bool atEnd(const ObjectReader& s) {
    return !s.failed() && s.data.remaining() == 0 && s.texts.remaining() == 0 && s.handles.remaining() < 8;
}

template <class Fields> bool recode(Object& object, const RecodingContext& context) {
    const CodePage codePage(context.drawing.codePage);
    const Parts parts = partsOf(object);
    BitWriter references;
    for (const HandleRef reference : parts.references)
        references.h(stored(reference, object.handle));
    ObjectReader reader(context.from, object.handle, codePage);
    reader.data = BitReader(parts.bits.bytes, 0, parts.bits.count);
    reader.texts = BitReader(parts.texts.bytes, 0, parts.texts.count);
    reader.handles = BitReader(references.bytes(), 0, references.position());
    Fields fields;
    transferFields(reader, fields);
    if (!atEnd(reader))
        return false;
    adapt(fields, context);
    if (context.to < Release::r2004)
        eachColor(fields, [&context](Color& color) {
            if (color.hasRgb)
                color.index = context.nearestIndex(color.rgb);
        });

    ObjectWriter writer(context.to, object, codePage);
    writer.closedTexts = false;
    transferFields(writer, fields);
    Parts out{writer.data.bits(), {}, writer.texts.bits()};
    BitReader handles(writer.handles.bytes(), 0, writer.handles.position());
    while (handles.remaining() > 0)
        out.references.push_back(resolved(handles.h(), object.handle));
    setParts(object, std::move(out));
    return true;
}

bool isSameInAllReleases(const Object& object, std::wstring_view className) {
    constexpr std::uint16_t shape = 33, multiline = 47;
    if (object.type == shape || object.type == multiline)
        return true;
    constexpr std::wstring_view names[] = {L"IDBUFFER",         L"SORTENTSTABLE",    L"RASTERVARIABLES",
                                           L"IMAGEDEF_REACTOR", L"WIPEOUTVARIABLES", L"SPATIAL_FILTER"};
    return std::ranges::find(names, className) != std::end(names);
}

/// Classes whose bodies are the same bits from one release to another.
struct SameBits {
    std::wstring_view name;
    Release first, last;
};

// What drawings that one program saved in all releases show.
constexpr SameBits sameBits[] = {
    {L"DIMASSOC", Release::r2000, Release::r2004},
    {L"DIMASSOC", Release::r2007, Release::r2018},
    {L"LIGHT", Release::r2007, Release::r2018},
    {L"SUN", Release::r2004, Release::r2018},
    {L"MATERIAL", Release::r2000, Release::r2004},
    {L"MATERIAL", Release::r2007, Release::r2018},
    {L"ACDBDETAILVIEWSTYLE", Release::r2007, Release::r2013},
    {L"ACDBSECTIONVIEWSTYLE", Release::r2007, Release::r2013},
    {L"HELIX", Release::r2000, Release::r2010},
    {L"ARC_DIMENSION", Release::r2000, Release::r2004},
    {L"ARC_DIMENSION", Release::r2010, Release::r2018},
    {L"TABLESTYLE", Release::r2000, Release::r2004},
    {L"CELLSTYLEMAP", Release::r2000, Release::r2004},
    {L"ACDB_LEADEROBJECTCONTEXTDATA_CLASS", Release::r2000, Release::r2007},
    {L"ACDB_LEADEROBJECTCONTEXTDATA_CLASS", Release::r2010, Release::r2013},
};

/// What changed with 2018; all else is the same there as in 2013.
constexpr std::wstring_view changedIn2018[] = {L"ACDBDETAILVIEWSTYLE",
                                               L"ACDBSECTIONVIEWSTYLE",
                                               L"TABLESTYLE",
                                               L"CELLSTYLEMAP",
                                               L"ACAD_TABLE",
                                               L"TABLECONTENT",
                                               L"TABLEGEOMETRY",
                                               L"ACDB_LEADEROBJECTCONTEXTDATA_CLASS",
                                               L"ACDB_MTEXTOBJECTCONTEXTDATA_CLASS",
                                               L"ACDB_MTEXTATTRIBUTEOBJECTCONTEXTDATA_CLASS"};

bool hasSameBits(const Object& object, std::wstring_view className, const RecodingContext& context) {
    const auto within = [&](Release first, Release last) {
        return std::min(context.from, context.to) >= first && std::max(context.from, context.to) <= last;
    };
    if (isSameInAllReleases(object, className))
        return true;
    constexpr std::uint16_t region = 37, solidBody = 39, oleFrame = 74;
    if (object.type == oleFrame || object.type == object_type::ucs)
        return within(Release::r2000, Release::r2018);
    if (object.type >= region && object.type <= solidBody) {
        // The form of solids changes with nearly every release, and older programs don't know what newer ones store.
        const bool isNewer = context.from < context.to;
        return within(Release::r2013, Release::r2018) ||
               (isNewer && (within(Release::r2000, Release::r2004) || within(Release::r2007, Release::r2010)));
    }
    if (object.type >= object_type::firstClass && within(Release::r2013, Release::r2018))
        return std::ranges::find(changedIn2018, className) == std::end(changedIn2018);
    return std::ranges::any_of(
        sameBits, [&](const SameBits& same) { return same.name == className && within(same.first, same.last); });
}

bool recodeClass(Object& object, std::wstring_view name, const RecodingContext& context) {
    if (name == L"DICTIONARYVAR")
        return recode<DictionaryVariableFields>(object, context);
    if (name == L"IMAGE" || name == L"WIPEOUT")
        return recode<ImageFields>(object, context);
    if (name == L"IMAGEDEF")
        return recode<ImageDefinitionFields>(object, context);
    if (name == L"SCALE")
        return recode<ScaleFields>(object, context);
    return false;
}

} // namespace

bool recodeCarried(Object& object, const RecodingContext& context) {
    const ObjectClass* const objectClass = context.drawing.classOf(object);
    const std::wstring_view name = objectClass == nullptr ? std::wstring_view() : objectClass->dxfName;
    if (hasSameBits(object, name, context))
        return true;
    constexpr std::uint16_t tolerance = 46, group = 72;
    switch (object.type) {
    case object_type::dimensionStyle:
        return recode<DimensionStyleFields>(object, context);
    case object_type::dimensionStyleControl:
        return recode<DimensionStyleTableFields>(object, context);
    case object_type::multilineStyle:
        return recode<MultilineStyleFields>(object, context);
    case object_type::viewport:
        return recode<ViewportFields>(object, context);
    case object_type::view:
        return recode<ViewFields>(object, context);
    case tolerance:
        return recode<ToleranceFields>(object, context);
    case group:
        return recode<GroupFields>(object, context);
    default:
        return recodeClass(object, name, context);
    }
}

} // namespace dwg
