#include "tools/matrix_cases.h"

#include "editor/database/database_state.h"
#include "editor/dwg/facts.h"
#include "editor/dwg/objects_codec.h"
#include "editor/dwg/summary_record.h"
#include "tools/matrix_fields.h"

#include <algorithm>
#include <set>

namespace matrix {

const std::vector<Target> targets = {{AcDb::kDHL_1015, "2000"}, {AcDb::kDHL_1800, "2004"}, {AcDb::kDHL_1021, "2007"},
                                     {AcDb::kDHL_1024, "2010"}, {AcDb::kDHL_1027, "2013"}, {AcDb::kDHL_1032, "2018"}};

dwg::Result<dwg::Bits> fieldsOf(const dwg::Object& object, const dwg::Drawing& drawing) {
    dwg::Object own = object;
    own.entity = dwg::EntityData{};
    own.reactors.clear();
    own.extensionDictionary.value = 0;
    own.extendedData.clear();
    own.closedTexts = false;
    // An escape for a character that code pages lack may be spelt out in a wide text; it reads the same.
    if (auto* const text = own.as<dwg::MultilineText>())
        text->value = dwg::CodePage().decode(dwg::CodePage().encode(text->value));
    // The size of a leader's annotation is stored up to 2007 only.
    if (auto* const leader = own.as<dwg::Leader>())
        leader->boxHeight = leader->boxWidth = 0;
    if (dwg::OwnedChain* const chain = dwg::ownedChain(own))
        chain->first = chain->last = {};
    dwg::ObjectContext context(drawing);
    context.release = dwg::Release::r2000;
    return dwg::encodeObject(own, context);
}

namespace {

std::string narrow(const std::wstring& text) {
    return dwg::CodePage().encode(text);
}

class Comparison {
public:
    Comparison(const AcDbDatabase& original, const AcDbDatabase& copy, Outcome& result)
        : before(original.impl()->drawing), after(copy.impl()->drawing), outcome(result) {
        for (const dwg::LeftOut& left : original.impl()->leftOut) {
            outcome.leftOut[left.type] += left.handles.size();
            missing.insert(left.handles.begin(), left.handles.end());
        }
    }

    void run() {
        for (const dwg::Finding& finding : after.findings)
            differs(finding.place + ": " + finding.reason);
        compareLayers();
        if (dwg::linetypeNames(before) != dwg::linetypeNames(after))
            differs("linetypes");
        compareBlocks();
        for (const auto& object : before.objects())
            compareEntity(*object);
    }

private:
    void differs(const std::string& what) {
        constexpr std::size_t most = 20;
        if (outcome.differences.size() < most)
            outcome.differences.push_back(what);
    }

    void compareLayers() {
        const auto was = dwg::layerFacts(before), is = dwg::layerFacts(after);
        if (was.size() != is.size())
            return differs("number of layers");
        for (std::size_t i = 0; i < was.size(); ++i) {
            const bool losesColour = was[i].color.hasRgb && after.release < dwg::Release::r2004;
            const bool same = was[i].name == is[i].name && was[i].linetype == is[i].linetype &&
                              (losesColour || was[i].color == is[i].color);
            if (!same)
                differs("layer " + narrow(was[i].name));
        }
    }

    void compareBlocks() {
        for (const auto& object : before.objects()) {
            const auto* const block = object->as<dwg::BlockHeader>();
            if (block == nullptr)
                continue;
            const auto* const same = after.body<dwg::BlockHeader>({0, object->handle});
            if (same == nullptr || same->head.name != block->head.name) {
                differs("block record " + narrow(block->head.name));
                continue;
            }
            std::vector<dwg::Handle> expected;
            std::ranges::copy_if(block->entities, std::back_inserter(expected), [this](dwg::Handle handle) {
                return before.find(handle) != nullptr && !missing.contains(handle);
            });
            if (expected != same->entities)
                differs("entities of block record " + narrow(block->head.name));
        }
    }

    void compareEntity(const dwg::Object& object) {
        if (!object.isEntity() || missing.contains(object.handle))
            return;
        const dwg::Object* const same = after.find(object.handle);
        const std::string place = dwg::typeName(before, object) + " " + dwg::objectPlace(object.handle);
        if (same == nullptr || !same->isEntity())
            return differs(place + " is missing");
        if (dwg::typeName(after, *same) != dwg::typeName(before, object))
            return differs(place + " has another type");
        if (dwg::recordName(after, same->entity->layer) != dwg::recordName(before, object.entity->layer))
            return differs(place + " lies on another layer");
        if (same->entity->linetypeFrom != object.entity->linetypeFrom ||
            dwg::recordName(after, same->entity->linetype) != dwg::recordName(before, object.entity->linetype))
            return differs(place + " has another linetype");
        if (object.as<dwg::Carried>() != nullptr)
            return;
        // What names an object that was left out names nothing.
        dwg::Object expected = object;
        dwg::mapReferences(expected, [this](dwg::Handle handle) { return missing.contains(handle) ? 0 : handle; });
        const auto was = fieldsOf(expected, before), is = fieldsOf(*same, after);
        ++outcome.compared;
        if (!was || !is || *was != *is)
            differs(place + " has other fields");
    }

    const dwg::Drawing& before;
    const dwg::Drawing& after;
    Outcome& outcome;
    std::set<dwg::Handle> missing;
};

} // namespace

Outcome saveAndCompare(const std::filesystem::path& drawing, const std::filesystem::path& copy, const Target& target) {
    Outcome outcome;
    AcDbDatabase original(false), saved(false);
    if (original.readDwgFile(drawing.wstring().c_str()) != eOk) {
        outcome.differences.push_back("can't be read");
        return outcome;
    }
    original.setRetainOriginalThumbnailBitmap(true);
    if (const int status = original.saveAs(copy.wstring().c_str(), false, target.version); status != eOk) {
        outcome.differences.push_back("can't be saved: status " + std::to_string(status));
        return outcome;
    }
    if (const int status = saved.readDwgFile(copy.wstring().c_str()); status != eOk) {
        outcome.differences.push_back("can't be read again: status " + std::to_string(status));
        return outcome;
    }
    if (saved.impl()->pictures != original.impl()->pictures)
        outcome.differences.push_back("pictures");
    Comparison(original, saved, outcome).run();
    return outcome;
}

Outcome rewriteAndCompare(const std::filesystem::path& drawing, const std::filesystem::path& copy) {
    Outcome outcome;
    AcDbDatabase original(false), changed(false), saved(false);
    if (original.readDwgFile(drawing.wstring().c_str()) != eOk ||
        changed.readDwgFile(drawing.wstring().c_str()) != eOk) {
        outcome.differences.push_back("can't be read");
        return outcome;
    }
    const dwg::Drawing& before = original.impl()->drawing;
    if (before.release < dwg::Release::r2000)
        return outcome;
    const Target& target = targets[static_cast<std::size_t>(before.release) - 2];
    constexpr const wchar_t* comments = L"A description that wasn't there, \u00e4\u4e2d";
    AcDbDatabaseSummaryInfo* info = nullptr;
    acdbGetSummaryInfo(&changed, info);
    info->setComments(comments);
    const int put = acdbPutSummaryInfo(info, &changed);
    delete info;
    changed.setRetainOriginalThumbnailBitmap(true);
    if (put != eOk || changed.saveAs(copy.wstring().c_str(), false, target.version) != eOk ||
        saved.readDwgFile(copy.wstring().c_str()) != eOk) {
        outcome.differences.push_back("the description can't be changed");
        return outcome;
    }
    const dwg::Drawing& after = saved.impl()->drawing;
    std::wstring found;
    acdbGetSummaryInfo(&saved, info);
    info->getComments(found);
    delete info;
    if (found != comments)
        outcome.differences.push_back("comments");
    if (saved.impl()->pictures != original.impl()->pictures)
        outcome.differences.push_back("pictures");
    dwg::HeaderVariables header = saved.impl()->header;
    header.HANDSEED = original.impl()->header.HANDSEED;
    if (header != original.impl()->header)
        outcome.differences.push_back("header variables");
    const bool isObject = before.release < dwg::Release::r2004;
    const dwg::Handle summary = isObject ? dwg::findSummaryRecord(after) : 0;
    const dwg::Object* const names = isObject ? after.namedObjects() : nullptr;
    for (const auto& object : before.objects()) {
        const dwg::Object* const same = after.find(object->handle);
        ++outcome.compared;
        if (same == nullptr || (same->record != object->record && object->handle != summary && same != names))
            outcome.differences.push_back(dwg::objectPlace(object->handle));
    }
    return outcome;
}

} // namespace matrix
