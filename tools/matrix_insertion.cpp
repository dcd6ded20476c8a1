#include "tools/matrix_cases.h"
#include "tools/matrix_fields.h"

#include "editor/database/database_state.h"
#include "editor/database/names.h"
#include "editor/dwg/facts.h"

#include <algorithm>
#include <set>

namespace matrix {

namespace {

constexpr const wchar_t* insertedName = L"Inserted into another";

/// What a definition draws: the entities of one block record that aren't among the missing.
std::vector<const dwg::Object*> entitiesOf(const dwg::Drawing& drawing, dwg::Handle block,
                                           const std::set<dwg::Handle>& missing) {
    std::vector<const dwg::Object*> entities;
    const auto* const header = drawing.body<dwg::BlockHeader>({0, block});
    if (header == nullptr)
        return entities;
    for (const dwg::Handle handle : header->entities) {
        const dwg::Object* const entity = drawing.find(handle);
        if (entity != nullptr && !missing.contains(handle))
            entities.push_back(entity);
    }
    return entities;
}

/// Fields without references, which lead to other handles in another drawing.
dwg::Result<dwg::Bits> comparableFields(dwg::Object object, const dwg::Drawing& drawing) {
    object.handle = 1;
    object.extendedData.clear();
    dwg::mapReferences(object, [](dwg::Handle) { return dwg::Handle{0}; });
    return fieldsOf(object, drawing);
}

bool isSameEntity(const dwg::Object& one, const dwg::Drawing& from, const dwg::Object& other,
                  const dwg::Drawing& into) {
    return dwg::typeName(from, one) == dwg::typeName(into, other) &&
           editor::sameName(dwg::recordName(from, one.entity->layer), dwg::recordName(into, other.entity->layer));
}

} // namespace

Outcome insertAndCompare(const std::filesystem::path& drawing, const std::filesystem::path& into,
                         const std::filesystem::path& copy, const Target& target) {
    Outcome outcome;
    const auto differs = [&outcome](std::string what) { outcome.differences.push_back(std::move(what)); };
    AcDbDatabase source(false), destination(into.empty()), read(false);
    AcDbObjectId id;
    if (source.readDwgFile(drawing.wstring().c_str()) != eOk)
        differs("can't be read");
    else if (!into.empty() && destination.readDwgFile(into.wstring().c_str()) != eOk)
        differs("the destination can't be read");
    else if (const int status = destination.insert(id, insertedName, &source); status != eOk)
        differs("can't be inserted: status " + std::to_string(status));
    if (!outcome.differences.empty())
        return outcome;
    const dwg::Drawing& before = source.impl()->drawing;
    std::set<dwg::Handle> missing;
    for (const dwg::LeftOut& left : destination.impl()->leftOut) {
        for (const dwg::Handle handle : left.handles) {
            if (const dwg::Object& object = *before.find(handle);
                object.isEntity() && object.owner.value == before.modelSpace()) {
                ++outcome.leftOut[left.type];
                missing.insert(handle);
            }
        }
    }
    if (const int status = destination.saveAs(copy.wstring().c_str(), false, target.version); status != eOk) {
        differs("can't be saved: status " + std::to_string(status));
        return outcome;
    }
    if (read.readDwgFile(copy.wstring().c_str()) != eOk) {
        differs("can't be read again");
        return outcome;
    }
    const dwg::Drawing& after = read.impl()->drawing;
    for (const dwg::Finding& finding : after.findings)
        differs(finding.place + ": " + finding.reason);
    const auto was = entitiesOf(before, before.modelSpace(), missing);
    const auto is = entitiesOf(after, read.impl()->findRecord(dwg::object_type::blockControl, insertedName), {});
    if (was.size() != is.size())
        differs(std::to_string(is.size()) + " entities, not " + std::to_string(was.size()));
    for (std::size_t i = 0; i < std::min(was.size(), is.size()) && outcome.differences.size() < 20; ++i) {
        const std::string place = dwg::typeName(before, *was[i]) + " " + dwg::objectPlace(was[i]->handle);
        if (!isSameEntity(*was[i], before, *is[i], after)) {
            differs(place + " has another type or layer");
        } else if (was[i]->as<dwg::Carried>() == nullptr) {
            const auto there = comparableFields(*was[i], before), here = comparableFields(*is[i], after);
            ++outcome.compared;
            if (!there || !here || *there != *here)
                differs(place + " has other fields");
        }
    }
    return outcome;
}

} // namespace matrix
