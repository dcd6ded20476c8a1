#include "editor/database/journal.h"

#include "editor/database/undo.h"

#include <algorithm>

namespace editor {

namespace {

const std::vector<dwg::Handle>* entitiesOf(const dwg::Object* object) {
    const auto* const block = object == nullptr ? nullptr : object->as<dwg::BlockHeader>();
    return block == nullptr ? nullptr : &block->entities;
}

bool sameContent(const dwg::Object& one, const dwg::Object& other) {
    return one.type == other.type && one.owner == other.owner && one.reactors == other.reactors &&
           one.extensionDictionary == other.extensionDictionary && one.extendedData == other.extendedData &&
           one.entity == other.entity && one.body == other.body && one.record == other.record;
}

} // namespace

Journal::Group& Journal::open() {
    if (current)
        return *current;
    if (done.empty())
        return current.emplace();
    undone.clear();
    current = std::move(done.back());
    done.pop_back();
    reopened = true;
    for (auto& [handle, image] : current->objects)
        expand(handle, image);
    return *current;
}

void Journal::touch(dwg::Handle object) {
    Group& group = open();
    const auto [place, isNew] = group.objects.try_emplace(object);
    if (!isNew)
        return;
    if (const dwg::Object* const before = database.drawing.find(object))
        place->second.object = std::make_unique<dwg::Object>(*before);
}

void Journal::touchErasure(dwg::Handle object) {
    open().erasures.try_emplace(object, database.isErased(object));
}

void Journal::touchHeader() {
    Group& group = open();
    if (!group.header)
        group.header = std::make_unique<dwg::HeaderVariables>(database.header);
}

void Journal::touchClasses() {
    Group& group = open();
    if (!group.classes)
        group.classes = std::make_unique<std::vector<dwg::ObjectClass>>(database.drawing.classes);
}

void Journal::begin(std::wstring name) {
    end();
    current.emplace();
    current->name = std::move(name);
}

// What was opened for writing and stayed as it was is no change. A long list of entities is kept from where it differs.
void Journal::settle(Group& group) const {
    std::erase_if(group.objects, [&](const auto& item) {
        const dwg::Object* const now = database.drawing.find(item.first);
        const auto& before = item.second.object;
        return now == nullptr ? before == nullptr : before != nullptr && sameContent(*before, *now);
    });
    std::erase_if(group.erasures, [&](const auto& item) { return database.isErased(item.first) == item.second; });
    if (group.header && *group.header == database.header)
        group.header.reset();
    if (group.classes && *group.classes == database.drawing.classes)
        group.classes.reset();
    for (auto& [handle, image] : group.objects) {
        const auto* const now = entitiesOf(database.drawing.find(handle));
        const auto* const before = entitiesOf(image.object.get());
        if (now == nullptr || before == nullptr)
            continue;
        image.sharedEntities = static_cast<std::size_t>(std::ranges::mismatch(*before, *now).in1 - before->begin());
        auto& kept = image.object->as<dwg::BlockHeader>()->entities;
        kept = std::vector(kept.begin() + static_cast<std::ptrdiff_t>(image.sharedEntities), kept.end());
    }
}

void Journal::expand(dwg::Handle handle, Image& image) const {
    if (image.sharedEntities == 0)
        return;
    const auto& now = *entitiesOf(database.drawing.find(handle));
    auto& kept = image.object->as<dwg::BlockHeader>()->entities;
    kept.insert(kept.begin(), now.begin(), now.begin() + static_cast<std::ptrdiff_t>(image.sharedEntities));
    image.sharedEntities = 0;
}

bool Journal::end() {
    if (!current)
        return false;
    settle(*current);
    const bool changed = !current->empty();
    if (changed) {
        done.push_back(std::move(*current));
        undone.clear();
        if (done.size() > undoGroupsKept)
            done.pop_front();
    }
    current.reset();
    reopened = false;
    return changed;
}

void Journal::merge(Group& into, Group&& later) {
    // What the earlier group remembers is older.
    into.objects.merge(later.objects);
    into.erasures.merge(later.erasures);
    if (!into.header)
        into.header = std::move(later.header);
    if (!into.classes)
        into.classes = std::move(later.classes);
}

void Journal::joinToLast() {
    const bool isLast = reopened;
    if (!end() || isLast)
        return;
    if (done.size() > 1)
        join(done.size() - 2, done[done.size() - 2].name);
    else
        done.clear(); // there is nothing to be taken back that this belongs to
}

void Journal::join(std::size_t from, std::wstring name) {
    end();
    if (from >= done.size())
        return;
    while (done.size() > from + 1) {
        Group later = std::move(done.back());
        done.pop_back();
        for (auto& [handle, image] : later.objects)
            expand(handle, image);
        // The lists that the earlier group shares are those from before the later one.
        exchange(later);
        Group& earlier = done.back();
        for (auto& [handle, image] : earlier.objects)
            expand(handle, image);
        exchange(later);
        merge(earlier, std::move(later));
        settle(earlier);
    }
    done.back().name = std::move(name);
}

void Journal::exchange(dwg::Handle handle, Image& image) {
    expand(handle, image);
    dwg::Object* const now = database.drawing.find(handle);
    if (now != nullptr && image.object != nullptr) {
        std::swap(*now, *image.object);
    } else if (now != nullptr) {
        image.object = database.takeOut(handle);
    } else if (image.object != nullptr) {
        database.putBack(std::move(*image.object));
        image.object.reset();
    }
}

void Journal::exchange(Group& group) {
    database.forgetUsedLayers();
    for (auto& [handle, image] : group.objects)
        exchange(handle, image);
    for (auto& [handle, wasErased] : group.erasures) {
        const bool isErased = database.isErased(handle);
        database.markErased(handle, wasErased);
        wasErased = isErased;
    }
    if (group.header)
        std::swap(*group.header, database.header);
    if (group.classes)
        std::swap(*group.classes, database.drawing.classes);
}

std::optional<std::wstring> Journal::undo() {
    end();
    if (done.empty())
        return std::nullopt;
    Group group = std::move(done.back());
    done.pop_back();
    exchange(group);
    settle(group);
    undone.push_back(std::move(group));
    return undone.back().name;
}

std::optional<std::wstring> Journal::redo() {
    end();
    if (undone.empty())
        return std::nullopt;
    Group group = std::move(undone.back());
    undone.pop_back();
    exchange(group);
    settle(group);
    done.push_back(std::move(group));
    return done.back().name;
}

void recordUndo(AcDbDatabase& database) {
    if (!database.impl()->journal)
        database.impl()->journal = std::make_shared<Journal>(*database.impl());
}

void beginUndoGroup(AcDbDatabase& database, std::wstring name) {
    if (auto* const journal = database.impl()->journal.get())
        journal->begin(std::move(name));
}

bool endUndoGroup(AcDbDatabase& database) {
    auto* const journal = database.impl()->journal.get();
    return journal != nullptr && journal->end();
}

void joinUndoGroups(AcDbDatabase& database, std::size_t from, std::wstring name) {
    if (auto* const journal = database.impl()->journal.get())
        journal->join(from, std::move(name));
}

std::size_t undoDepth(const AcDbDatabase& database) {
    const auto* const journal = database.impl()->journal.get();
    return journal == nullptr ? 0 : journal->depth();
}

std::optional<std::wstring> undoGroup(AcDbDatabase& database) {
    auto* const journal = database.impl()->journal.get();
    return journal == nullptr ? std::nullopt : journal->undo();
}

std::optional<std::wstring> redoGroup(AcDbDatabase& database) {
    auto* const journal = database.impl()->journal.get();
    return journal == nullptr ? std::nullopt : journal->redo();
}

} // namespace editor
