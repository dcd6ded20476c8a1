#pragma once

#include "editor/sdk/rx.h"

#include <cstdint>
#include <string>

namespace editor {

/// The run-time class of a fixed object type, made on demand; AcDbObject's for a type that this system has no name for.
/// Classes live as long as the process. Any thread.
const AcRxClass* classOfType(std::uint16_t type);

/// The run-time class of objects whose type is a class of the drawing, by that class's own name ("AcDbWipeout").
/// Dimensions (a name that ends in "Dimension") derive from AcDbDimension, other entities from AcDbEntity.
const AcRxClass* classOfName(const std::wstring& name, bool isEntity);

} // namespace editor
