#pragma once

#include "editor/dwg/model.h"

/// The table of dimension styles. It differs from the other tables by a second list of references, so the codec
/// carries it; these functions know the first list.
namespace dwg {

Carried makeDimensionStyleTable(const std::vector<HandleRef>& styles);

/// The styles in the table's order; none where the bits contradict the references.
std::vector<HandleRef> dimensionStyles(const Carried& table);

/// Adds a style behind those that the table has.
void addDimensionStyle(Carried& table, Handle style);

/// Takes styles out of the table, in both lists.
void removeDimensionStyle(Carried& table, Handle style);

} // namespace dwg
