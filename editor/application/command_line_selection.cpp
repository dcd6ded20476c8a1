#include "editor/application/command_line.h"
#include "editor/application/console.h"
#include "editor/application/drawing.h"
#include "editor/application/selecting.h"

#include <algorithm>
#include <unordered_set>

namespace editor {

// Two corners from left to right are a window, from right to left a crossing box, unless it was said which.
std::vector<AcDbObjectId> CommandLine::selectByBox(const AcGePoint3d& corner, std::optional<bool> crossing) {
    PromptOptions options;
    options.base = corner;
    options.rectangle = true;
    const AcGePoint3d opposite = *getPoint(L"Specify opposite corner: ", options).value;
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    return entitiesInBox(*database, corner, opposite, crossing.value_or(opposite.x < corner.x));
}

std::optional<std::vector<AcDbObjectId>> CommandLine::selectByKeyword(const std::wstring& keyword,
                                                                      AcDbDatabase& database) {
    if (keyword == L"ALL")
        return modelSpaceEntities(database);
    if (keyword == L"Previous")
        return previousSelection;
    if (keyword == L"Window" || keyword == L"Crossing")
        return selectByBox(*getPoint(L"Specify first corner: ").value, keyword == L"Crossing");
    const AcDbObjectId last = lastEntity(database);
    return last.isNull() ? std::vector<AcDbObjectId>() : std::vector{last};
}

std::vector<AcDbObjectId> CommandLine::getSelection(const std::wstring& prompt, bool single) {
    pausing = false;
    const Keywords keywords(single ? L"Last" : L"Last Previous ALL Window Crossing Remove Add");
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    std::vector<AcDbObjectId> selection;
    std::unordered_set<std::uint64_t> handles; // of the selection
    bool removes = false;
    struct Highlight {
        WindowServices* window;
        ~Highlight() {
            if (window != nullptr)
                window->highlight({});
        }
    };
    const Highlight highlight{window};
    while (true) {
        const Answer answer = ask(Prompt{Prompt::Kind::Selection, removes ? L"Remove objects: " : prompt, {}, false});
        std::vector<AcDbObjectId> found;
        if (const auto* const object = std::get_if<AcDbObjectId>(&answer)) {
            found.push_back(*object);
        } else if (const auto* const text = std::get_if<std::wstring>(&answer); text != nullptr && text->empty()) {
            break;
        } else if (const auto point = pointOf(answer); point && database != nullptr) {
            const auto hit = window != nullptr ? window->objectAt(*point) : AcDbObjectId();
            if (!hit.isNull())
                found.push_back(hit);
            else if (!single)
                found = selectByBox(*point, std::nullopt);
        } else {
            const auto keyword = text != nullptr ? keywords.match(*text) : std::nullopt;
            if (!keyword || database == nullptr) {
                console.printLine(L"*Invalid selection*");
                console.printLine(single ? L"Expects a point or Last"
                                         : L"Expects a point or Window/Last/Crossing/ALL/Previous/Add/Remove");
                continue;
            }
            if (*keyword == L"Remove" || *keyword == L"Add") {
                removes = *keyword == L"Remove";
                continue;
            }
            found = *selectByKeyword(*keyword, *database);
        }
        // What was erased since is no object any more.
        std::erase_if(found, [](const AcDbObjectId id) { return !isEntity(id); });
        const auto known = std::count_if(found.begin(), found.end(),
                                         [&](const AcDbObjectId id) { return handles.contains(id.handle); });
        std::wstring told = std::to_wstring(found.size()) + L" found";
        if (removes)
            told += L", " + std::to_wstring(known) + L" removed";
        else if (known > 0)
            told += L" (" + std::to_wstring(known) + L" duplicate)";
        for (const AcDbObjectId id : found) {
            if (removes)
                handles.erase(id.handle);
            else if (handles.insert(id.handle).second)
                selection.push_back(id);
        }
        std::erase_if(selection, [&](const AcDbObjectId id) { return !handles.contains(id.handle); });
        if (removes || selection.size() != found.size())
            told += L", " + std::to_wstring(selection.size()) + L" total";
        console.printLine(told);
        if (window != nullptr)
            window->highlight(selection);
        if (single && !selection.empty())
            break;
    }
    previousSelection = selection;
    return selection;
}

} // namespace editor
