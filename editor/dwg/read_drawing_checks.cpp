#include "editor/dwg/facts.h"
#include "editor/dwg/read_drawing.h"
#include "editor/dwg/reading_limits.h"

#include <algorithm>

namespace dwg {

namespace {

/// Visits nodes depth first, without recursion, and tells the nodes that lead back to one on the way to them.
class RingFinder {
public:
    using Next = std::function<const std::vector<Handle>&(Handle)>;

    RingFinder(Next edges, std::function<void(Handle)> told) : next(std::move(edges)), tell(std::move(told)) {}

    void visit(Handle start) {
        if (!state.emplace(start, open).second)
            return;
        way.push_back({start, 0});
        while (!way.empty()) {
            const Handle node = way.back().node;
            const std::vector<Handle>& edges = next(node);
            if (way.back().edge == edges.size()) {
                state[node] = done;
                way.pop_back();
                continue;
            }
            const Handle target = edges[way.back().edge++];
            const auto [known, isNew] = state.emplace(target, open);
            if (isNew)
                way.push_back({target, 0});
            else if (known->second == open)
                tell(target);
        }
    }

private:
    enum State : std::uint8_t { open, done };
    struct Step {
        Handle node;
        std::size_t edge;
    };

    Next next;
    std::function<void(Handle)> tell;
    std::unordered_map<Handle, State> state;
    std::vector<Step> way;
};

void findRingsOfOwners(Drawing& drawing) {
    std::vector<Handle> owner;
    const auto ownerOf = [&](Handle handle) -> const std::vector<Handle>& {
        const Object* const object = drawing.find(handle);
        owner.clear();
        if (object != nullptr && !object->owner.isNull())
            owner.push_back(object->owner.value);
        return owner;
    };
    RingFinder finder(ownerOf, [&drawing](Handle handle) {
        addFinding(drawing.findings, {objectPlace(handle), "it is its own owner, by way of others or itself", 0});
    });
    // A ring consists of owners, and neighbours mostly have the same one.
    Handle last = 0;
    for (const auto& object : drawing.objects()) {
        if (object->owner.value == last)
            continue;
        last = object->owner.value;
        finder.visit(last);
    }
}

void findRingsOfBlocks(Drawing& drawing) {
    std::unordered_map<Handle, std::vector<Handle>> inserted;
    for (const auto& object : drawing.objects()) {
        const auto* const insert = object->as<Insert>();
        if (insert == nullptr)
            continue;
        std::vector<Handle>& blocks = inserted[object->owner.value];
        if (blocks.empty() || blocks.back() != insert->block.value)
            blocks.push_back(insert->block.value);
    }
    const std::vector<Handle> none;
    const auto insertedIn = [&](Handle block) -> const std::vector<Handle>& {
        const auto found = inserted.find(block);
        return found == inserted.end() ? none : found->second;
    };
    RingFinder finder(insertedIn, [&drawing](Handle handle) {
        addFinding(drawing.findings,
                   {objectPlace(handle), "the block is inserted in itself, by way of others or not", 0});
    });
    for (const auto& [block, blocks] : inserted)
        finder.visit(block);
}

void findOddNames(Drawing& drawing) {
    constexpr wchar_t firstPrintable = 0x20, deletion = 0x7F;
    const auto isControl = [](wchar_t character) { return character < firstPrintable || character == deletion; };
    for (const auto& object : drawing.objects()) {
        const RecordHead* const head = object->isEntity() ? nullptr : recordHead(*object);
        if (head != nullptr && std::ranges::any_of(head->name, isControl))
            addFinding(drawing.findings, {objectPlace(object->handle), "its name holds control characters", 0});
    }
}

} // namespace

void checkContent(Drawing& drawing) {
    findRingsOfOwners(drawing);
    findRingsOfBlocks(drawing);
    findOddNames(drawing);
}

} // namespace dwg
