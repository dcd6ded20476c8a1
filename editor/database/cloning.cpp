#include "editor/database/cloning.h"

#include "editor/database/names.h"

#include <algorithm>

namespace editor {

using namespace dwg::object_type;

namespace {

const dwg::Dictionary::Item* itemOf(const dwg::Dictionary& dictionary, dwg::Handle object) {
    const auto found = std::ranges::find_if(dictionary.items, [&](const auto& i) { return i.object.value == object; });
    return found == dictionary.items.end() ? nullptr : &*found;
}

const dwg::Dictionary::Item* itemNamed(const dwg::Dictionary& dictionary, const std::wstring& name) {
    const auto found = std::ranges::find_if(dictionary.items, [&](const auto& i) { return sameName(i.name, name); });
    return found == dictionary.items.end() ? nullptr : &*found;
}

bool isNamedObjects(const dwg::Object& object) {
    return object.as<dwg::Dictionary>() != nullptr && object.owner.isNull();
}

} // namespace

void Cloner::planModelSpace(dwg::Handle block, std::wstring_view name) {
    definition = block;
    definitionName = name;
    map[source.modelSpace()] = block;
    map[source.paperSpace()] = 0;
    const auto* const space = source.drawing.body<dwg::BlockHeader>({0, source.modelSpace()});
    if (space == nullptr)
        return;
    for (const dwg::Handle handle : space->entities) {
        const dwg::Object* const entity = source.live(handle);
        const dwg::Handle copy = entity == nullptr ? 0 : plan(*entity);
        if (copy != 0)
            definitionEntities.push_back(copy);
    }
    // The list grows while the copies find out what else they need.
    for (std::size_t next = 0; next < planned.size(); ++next) {
        const Planned item = planned[next];
        copies.push_back(copyOf(*item.object, item.copy));
    }
    for (std::size_t i = 0; i < copies.size(); ++i)
        setReactors(copies[i], *planned[i].object);
}

dwg::Handle Cloner::plan(const dwg::Object& object) {
    if (object.type >= firstClass && source.drawing.classOf(object) == nullptr)
        return map[object.handle] = 0;
    const dwg::Handle copy = target.drawing.newHandle();
    map[object.handle] = copy;
    planned.push_back({&object, copy});
    plannedSources.insert(object.handle);
    const auto planPart = [&](dwg::Handle handle) {
        const dwg::Object* const part = source.live(handle);
        if (part != nullptr && part->isEntity() && !map.contains(handle))
            plan(*part);
    };
    if (const dwg::OwnedChain* const chain = dwg::ownedChain(object)) {
        std::ranges::for_each(chain->parts, planPart);
        // Anything else there may have parts of its own, and an end that leads on.
        if (source.drawing.body<dwg::SequenceEnd>(chain->sequenceEnd) != nullptr)
            planPart(chain->sequenceEnd.value);
    }
    if (const auto* const block = object.as<dwg::BlockHeader>()) {
        planPart(block->begin.value);
        planPart(block->end.value);
        std::ranges::for_each(block->entities, planPart);
    }
    return copy;
}

dwg::Handle Cloner::mapped(dwg::Handle handle) {
    const auto known = map.find(handle);
    if (known != map.end())
        return known->second;
    const dwg::Object* const object = source.live(handle);
    // Known before it is decided, so that a ring of owners ends.
    map[handle] = 0;
    constexpr int deepest = 100;
    if (object == nullptr || depth == deepest)
        return 0;
    ++depth;
    const dwg::Handle decided = decide(*object);
    --depth;
    return map[handle] = decided;
}

dwg::Handle Cloner::decide(const dwg::Object& object) {
    // Entities that are copied were planned together with their definition.
    if (object.isEntity() || object.as<dwg::Layout>() != nullptr)
        return 0;
    if (const dwg::RecordHead* const head = recordHead(object))
        return decideRecord(object, head->name);
    if (isNamedObjects(object)) {
        const dwg::Object* const names = target.drawing.namedObjects();
        return names == nullptr ? 0 : names->handle;
    }
    if (object.owner.isNull()) {
        const dwg::Object* const table = target.drawing.firstOfType(object.type);
        return table != nullptr && table->owner.isNull() && table->as<dwg::Dictionary>() == nullptr ? table->handle : 0;
    }
    if (plannedSources.contains(object.owner.value))
        return plan(object);
    const dwg::Object* const owner = source.live(object.owner.value);
    return owner != nullptr && owner->as<dwg::Dictionary>() != nullptr ? decideOwned(object, *owner) : 0;
}

dwg::Handle Cloner::decideRecord(const dwg::Object& object, const std::wstring& name) {
    const auto tableType = static_cast<std::uint16_t>(object.type - 1);
    if (target.table(tableType) == nullptr || object.type == viewportRecord)
        return 0;
    const auto* const block = object.as<dwg::BlockHeader>();
    if (block != nullptr && !block->layout.isNull())
        return 0;
    if (block == nullptr || !block->anonymous) {
        if (block != nullptr && sameName(name, definitionName)) {
            circular = true;
            return definition;
        }
        const dwg::Handle existing = existingRecord(object, tableType, name);
        if (existing != 0) {
            if (block != nullptr)
                existingBlocks.push_back(existing);
            return existing;
        }
    }
    const dwg::Handle copy = plan(object);
    tableEntries.push_back({tableType, copy});
    return copy;
}

dwg::Handle Cloner::existingRecord(const dwg::Object& object, std::uint16_t tableType, const std::wstring& name) const {
    const auto* const style = object.as<dwg::TextStyle>();
    if (style == nullptr || !style->isShapeFile)
        return target.findRecord(tableType, name);
    // Shape files have no name of their own.
    for (const dwg::Handle handle : AcDbDatabase::Impl::records(*target.table(tableType))) {
        const dwg::Object* const record = target.live(handle);
        const auto* const other = record == nullptr ? nullptr : record->as<dwg::TextStyle>();
        if (other != nullptr && other->isShapeFile && sameName(other->fontFile, style->fontFile))
            return handle;
    }
    return 0;
}

dwg::Handle Cloner::decideOwned(const dwg::Object& object, const dwg::Object& owner) {
    const dwg::Dictionary::Item* const item = itemOf(*owner.as<dwg::Dictionary>(), object.handle);
    const dwg::Handle counterpart = item == nullptr ? 0 : mapped(owner.handle);
    if (counterpart == 0)
        return 0;
    if (plannedSources.contains(object.handle))
        return map[object.handle];
    const dwg::Object* const present = target.live(counterpart);
    const auto* const dictionary = present == nullptr ? nullptr : present->as<dwg::Dictionary>();
    const dwg::Dictionary::Item* const existing = dictionary == nullptr ? nullptr : itemNamed(*dictionary, item->name);
    if (existing != nullptr && target.live(existing->object.value) != nullptr)
        return existing->object.value;
    const dwg::Handle copy = plan(object);
    if (copy != 0)
        dictionaryEntries.push_back({counterpart, item->name, copy});
    // What hangs on a copied dictionary enters it only when something needs it.
    if (object.as<dwg::Dictionary>() != nullptr)
        emptied.insert(copy);
    return copy;
}

dwg::Object Cloner::copyOf(const dwg::Object& object, dwg::Handle handle) {
    dwg::Object copy = object;
    copy.handle = handle;
    if (object.type >= firstClass)
        copy.type = target.drawing.classNumber(*source.drawing.classOf(object));
    copy.reactors.clear();
    if (auto* const dictionary = copy.as<dwg::Dictionary>(); dictionary != nullptr && emptied.contains(handle))
        dictionary->items.clear();
    if (auto* const block = copy.as<dwg::BlockHeader>())
        block->insertions.clear();
    dwg::mapReferences(copy, [this](dwg::Handle reference) { return reference == 0 ? 0 : mapped(reference); });
    if (auto* const dictionary = copy.as<dwg::Dictionary>())
        std::erase_if(dictionary->items, [](const auto& item) { return item.object.isNull(); });
    std::erase_if(copy.extendedData, [](const dwg::ExtendedData& data) { return data.application.isNull(); });
    if (copy.isEntity() && copy.entity->layer.isNull())
        copy.entity->layer.value = target.findRecord(layerControl, L"0");
    return copy;
}

void Cloner::setReactors(dwg::Object& copy, const dwg::Object& original) const {
    for (const dwg::HandleRef reactor : original.reactors) {
        const auto known = map.find(reactor.value);
        if (known != map.end() && known->second != 0)
            copy.reactors.push_back({reactor.code, known->second});
    }
}

std::vector<dwg::Handle> Cloner::commit() {
    for (dwg::Object& copy : copies)
        target.add(std::move(copy));
    for (const dwg::Handle entity : definitionEntities)
        target.drawing.setOwner(*target.drawing.find(entity), definition);
    for (const TableEntry& entry : tableEntries)
        target.enter(*target.table(entry.tableType), entry.record);
    for (const DictionaryEntry& entry : dictionaryEntries) {
        dwg::Object* const object = target.change(entry.dictionary);
        auto* const dictionary = object == nullptr ? nullptr : object->as<dwg::Dictionary>();
        if (dictionary == nullptr)
            continue;
        const std::uint8_t code =
            dictionary->hardOwner != 0 ? dwg::handle_code::hardOwner : dwg::handle_code::softOwner;
        dictionary->items.push_back({entry.name, {code, entry.object}});
        object->changed();
    }
    return definitionEntities;
}

} // namespace editor
