#pragma once

#include "editor/dwg/source.h"

#include <cstddef>

/// Damage done to drawings in a way that can be repeated, and the reading of what is left.
namespace tools {

/// Damaged copies of one drawing: cuts at places spread over its length, then single bits flipped at places spread
/// over its length.
struct DamagePlan {
    std::size_t cuts = 200;
    std::size_t flips = 2000;

    std::size_t count() const { return cuts + flips; }
};

/// The copy of number `index` below plan.count(); always the same for the same input.
dwg::Bytes damagedCopy(const dwg::Bytes& whole, const DamagePlan& plan, std::size_t index);

/// Reads all that the codec reads of a drawing, and writes its objects again where it writes them. Gives the number of
/// values and errors met, so that nothing of it is left out by the compiler.
std::size_t readEverything(dwg::Bytes bytes);

} // namespace tools
