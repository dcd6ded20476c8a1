#include "editor/dwg/convert_drawing.h"

#include "editor/dwg/code_page.h"
#include "editor/dwg/convert_layouts.h"
#include "editor/dwg/recoding.h"
#include "editor/dwg/typed_values.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>

namespace dwg {

namespace {

class Converter {
public:
    Converter(const Drawing& from, Release to, const std::function<std::int16_t(std::uint32_t)>& nearest)
        : source(from), codePage(from.codePage), nearestIndex(nearest), recoding{from.release, to, from, nearest} {
        target.release = to;
        target.codePage = from.codePage;
        target.classes = from.classes;
        target.raiseHandleSeed(from.handleSeed());
    }

    ConvertedDrawing run(const HeaderVariables& header) {
        converted.reserve(source.objects().size());
        for (const auto& object : source.objects()) {
            if (convert(*object))
                continue;
            dropped.insert(object->handle);
            if (!isOfOlderReleasesOnly(*object))
                told.insert(object->handle);
        }
        dropWhatHangsOnTheDropped();
        for (Object& object : converted)
            if (!dropped.contains(object.handle))
                target.add(std::move(object));
        converted.clear();
        forgetTheDropped();
        ConvertedDrawing out{std::move(target), header, list()};
        convertHeader(out);
        if (source.release < Release::r2000 && out.drawing.release >= Release::r2000)
            addLayouts(out.drawing, out.header);
        out.header.HANDSEED = std::max(out.header.HANDSEED, out.drawing.handleSeed());
        countClasses(out.drawing);
        return out;
    }

private:
    /// False for an object that the release can't hold.
    bool convert(const Object& original) {
        if (isOfOlderReleasesOnly(original))
            return false;
        Object object = original;
        object.changed();
        object.closedTexts = false;
        // What lies in a section of its own is carried over from 2013 to 2018 and back only.
        if (source.release < Release::r2013 || target.release < Release::r2013)
            object.hasBinaryData = false;
        const bool isCarried = object.as<Carried>() != nullptr || object.as<OtherRecord>() != nullptr;
        if (isCarried && !recodeCarried(object, recoding))
            return false;
        if (auto* const record = object.as<DataRecord>()) {
            auto values = convertRecordValues(record->data, source.release, target.release, codePage, source.codePage);
            if (!values)
                return false;
            record->data = std::move(*values);
        }
        convertExtended(object);
        if (object.entity)
            convertEntity(*object.entity);
        if (auto* const layer = object.as<Layer>())
            convertColor(layer->color);
        if (auto* const insert = object.as<Insert>())
            insert->hasAttributes = !insert->attributes.parts.empty();
        if (auto* const linetype = object.as<Linetype>())
            convertTexts(*linetype);
        if (auto* const header = object.as<BlockHeader>())
            header->insertions.clear();
        converted.push_back(std::move(object));
        return true;
    }

    /// The table of viewport entities has no place from 2004 on.
    bool isOfOlderReleasesOnly(const Object& object) const {
        return target.release >= Release::r2004 &&
               (object.type == object_type::viewportEntityControl || object.type == object_type::viewportEntityHeader);
    }

    void convertExtended(Object& object) {
        std::vector<ExtendedData> kept;
        for (ExtendedData& values : object.extendedData) {
            auto data = convertExtendedData(values.data, source.release, target.release, codePage, source.codePage);
            if (!data)
                continue;
            values.data = std::move(*data);
            kept.push_back(std::move(values));
        }
        object.extendedData = std::move(kept);
    }

    void convertEntity(EntityData& entity) {
        entity.graphics.reset();
        convertColor(entity.color);
        if (!entity.extras)
            return;
        EntityExtras& extras = *entity.extras;
        if (target.release < Release::r2004) {
            entity.extras.reset();
        } else if (target.release < Release::r2007) {
            extras.materialFrom = ByWhat::layer;
            extras.shadow = 0;
        }
        if (entity.extras && target.release < Release::r2010)
            extras.fullStyle.value = extras.faceStyle.value = extras.edgeStyle.value = 0;
    }

    void convertColor(Color& color) const {
        if (target.release < Release::r2004 && color.hasRgb)
            color = {nearestIndex(color.rgb)};
    }

    /// 256 bytes up to 2004, from 2007 on 512 of wide characters where a dash has a text.
    void convertTexts(Linetype& linetype) const {
        constexpr std::size_t narrow = 256, wide = 512;
        const bool wasWide = source.release >= Release::r2007, becomesWide = target.release >= Release::r2007;
        const bool hasTexts = std::ranges::any_of(
            linetype.dashes, [](const Linetype::Dash& dash) { return (dash.flags & Linetype::hasText) != 0; });
        if (wasWide == becomesWide)
            return;
        std::vector<std::uint8_t> texts(becomesWide ? (hasTexts ? wide : 0) : narrow);
        for (std::size_t i = 0; hasTexts && i < narrow; ++i) {
            const std::size_t from = wasWide ? 2 * i : i, to = becomesWide ? 2 * i : i;
            if (from < linetype.texts.size())
                texts[to] = linetype.texts[from];
        }
        linetype.texts = std::move(texts);
    }

    void dropWhatHangsOnTheDropped() {
        if (dropped.empty())
            return;
        std::unordered_map<Handle, std::vector<const Object*>> owned;
        for (const Object& object : converted)
            owned[object.owner.value].push_back(&object);
        std::vector<Handle> owners(dropped.begin(), dropped.end());
        while (!owners.empty()) {
            const auto members = owned.find(owners.back());
            owners.pop_back();
            if (members == owned.end())
                continue;
            for (const Object* const member : members->second) {
                if (!dropped.insert(member->handle).second)
                    continue;
                owners.push_back(member->handle);
                if (member->isEntity())
                    told.insert(member->handle);
            }
        }
    }

    static void eraseNull(std::vector<HandleRef>& references) {
        std::erase_if(references, [](const HandleRef& reference) { return reference.isNull(); });
    }

    void forgetTheDropped() {
        if (dropped.empty())
            return;
        for (const auto& object : target.objects()) {
            mapReferences(*object, [this](Handle handle) { return dropped.contains(handle) ? Handle{0} : handle; });
            eraseNull(object->reactors);
            if (auto* const table = object->as<TableControl>())
                eraseNull(table->records);
            if (auto* const blocks = object->as<BlockControl>())
                eraseNull(blocks->records);
            if (auto* const dictionary = object->as<Dictionary>())
                std::erase_if(dictionary->items, [](const Dictionary::Item& item) { return item.object.isNull(); });
            if (auto* const layout = object->as<Layout>())
                eraseNull(layout->viewports);
            if (auto* const insert = object->as<Insert>())
                insert->hasAttributes = !insert->attributes.parts.empty();
            std::erase_if(object->extendedData, [](const ExtendedData& values) { return values.application.isNull(); });
        }
    }

    std::vector<LeftOut> list() const {
        std::map<std::string, std::vector<Handle>> byType;
        for (const auto& object : source.objects())
            if (told.contains(object->handle))
                byType[typeName(source, *object)].push_back(object->handle);
        std::vector<LeftOut> out;
        for (auto& [type, handles] : byType)
            out.push_back({type, std::move(handles)});
        return out;
    }

    void convertHeader(ConvertedDrawing& out) const {
        HeaderVariables& header = out.header;
        if (out.drawing.release < Release::r2004)
            addViewportTable(out.drawing, header);
        const auto adapt = [&](auto& value) {
            using Value = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Value, HandleRef>) {
                if (!value.isNull() && out.drawing.find(value) == nullptr)
                    value.value = 0;
            } else if constexpr (std::is_same_v<Value, Color>) {
                convertColor(value);
            }
        };
#define HEADER_FIELD(kind, name, first, last, ...) adapt(header.name);
#define HEADER_FIELD_AGAIN(kind, name, first, last)
#define HEADER_FIELD_WHEN(condition, kind, name, first, last, ...) adapt(header.name);
#include "editor/dwg/header_fields.inc"
    }

    static void addViewportTable(Drawing& drawing, HeaderVariables& header) {
        if (drawing.firstOfType(object_type::viewportEntityControl) != nullptr)
            return;
        Object table;
        table.handle = drawing.newHandle();
        table.type = object_type::viewportEntityControl;
        table.body = TableControl{};
        header.viewportEntityControl = {handle_code::hardOwner, table.handle};
        drawing.add(std::move(table));
    }

    static void countClasses(Drawing& drawing) {
        std::unordered_map<std::uint16_t, std::uint32_t> counts;
        for (const auto& object : drawing.objects())
            ++counts[object->type];
        for (ObjectClass& one : drawing.classes)
            one.instances = counts[one.number];
    }

    const Drawing& source;
    CodePage codePage;
    const std::function<std::int16_t(std::uint32_t)>& nearestIndex;
    RecodingContext recoding;
    Drawing target;
    std::vector<Object> converted;
    std::unordered_set<Handle> dropped;
    /// Those of the dropped that are told: not what merely hangs on another without being drawn.
    std::unordered_set<Handle> told;
};

} // namespace

ConvertedDrawing convertDrawing(const Drawing& drawing, const HeaderVariables& header, Release to,
                                const std::function<std::int16_t(std::uint32_t rgb)>& nearestIndex) {
    return Converter(drawing, to, nearestIndex).run(header);
}

} // namespace dwg
