#pragma once

#include "editor/sdk/db.h"

#include <string>

/// The id of the linetype "CONTINUOUS"; null where the drawing has none.
AcDbObjectId ContinuousLinetype(AcDbDatabase& database);
/// Adds a layer of colour 7 to a table that is open for write. Null where the table refuses the name.
AcDbObjectId AddLayer(AcDbLayerTable& layers, const std::wstring& name, AcDbObjectId linetype);
