#pragma once

#include "editor/sdk/db.h"

namespace editor {

enum class LayerState { Off, Frozen, Locked };

bool layerHas(AcDbObjectId layer, LayerState state);
/// eInvalidInput for freezing the current layer, eInvalidKey for what is no layer.
int setLayerState(AcDbObjectId layer, LayerState state, bool on);

} // namespace editor
