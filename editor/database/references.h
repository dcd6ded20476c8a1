#pragma once

#include "editor/dwg/model.h"

#include <utility>

namespace editor {

/// Calls `visit` with the handle of each reference that an object holds (owner, reactors, layer ... and those of its
/// body). The object doesn't change.
template <class Visit> void visitReferences(const dwg::Object& object, Visit&& visit) {
    // Mapping every reference to itself is visiting it; only the kept record has to be put aside.
    auto& changeable = const_cast<dwg::Object&>(object);
    auto record = std::move(changeable.record);
    dwg::mapReferences(changeable, [&](dwg::Handle handle) {
        if (handle != 0)
            visit(handle);
        return handle;
    });
    changeable.record = std::move(record);
}

} // namespace editor
