#pragma once

#include "editor/sdk/db.h"

#include <vector>

namespace editor {

enum class Explosion {
    Done,
    NotAReference,     ///< another kind of entity, or none at all
    ExternalReference, ///< its entities belong to another drawing
    Array,             ///< rows and columns of one insertion
    Indivisible,       ///< nothing in it can be told apart from the reference
    Refused,           ///< the reference is open elsewhere
};

/// Puts the entities of a block reference's definition in its place, each where the reference showed it and at the end
/// of the drawing order; `made` gets them in their order. Nested references stay references. Attributes become texts of
/// their values, invisible ones and the definitions that asked for them are left out, constant definitions become
/// texts. Layers, colours and linetypes stay those of the definition's entities.
///
/// What can't be carried over by itself (a type that isn't decoded, a nested reference that would be sheared) stays
/// together in one reference to a new anonymous definition, so that the drawing looks the same.
Explosion explodeReference(AcDbObjectId reference, std::vector<AcDbObjectId>& made);

} // namespace editor
