#pragma once

#include "editor/database/database_state.h"
#include "editor/sdk/db.h"

#include <memory>
#include <string>
#include <vector>

namespace tests {

/// An entity of any decoded kind, for drawings that tests make.
struct NewEntity : AcDbEntity {
    NewEntity(std::uint16_t type, dwg::Body body) : AcDbEntity(Impl::freshEntity(desc(), type, std::move(body))) {}
};

/// The block definition of that name, 0 without one.
AcDbObjectId blockNamed(AcDbDatabase& database, const wchar_t* name);
AcDbObjectId layerNamed(AcDbDatabase& database, const wchar_t* name);
/// Appends an entity to a block record and closes both. Gives the entity.
AcDbObjectId append(AcDbObjectId block, AcDbEntity* entity, const wchar_t* layer = nullptr);
AcDbObjectId appendToModel(AcDbDatabase& database, AcDbEntity* entity, const wchar_t* layer = nullptr);
AcDbObjectId addLayer(AcDbDatabase& database, const wchar_t* name, std::uint16_t colour = 7);
/// An empty definition.
AcDbObjectId addBlock(AcDbDatabase& database, const wchar_t* name);
/// The entities of a block record in their order.
std::vector<AcDbObjectId> entitiesOf(AcDbObjectId block);
std::vector<std::wstring> namesOf(AcDbSymbolTable& table);
/// Opens for write, erases, closes; the status of the erasing.
int erase(AcDbObjectId object);
const dwg::Object& objectOf(AcDbObjectId id);
std::wstring wide(const std::string& text);

} // namespace tests
