#pragma once

#include "editor/dwg/model.h"

#include <functional>

/// Bodies that are carried as bits, taken apart and put together as another release stores them.
namespace dwg {

/// What recoding needs to know of the drawing around.
struct RecodingContext {
    Release from = Release::r2000, to = Release::r2000;
    const Drawing& drawing;
    /// The colour index next to a true colour, for releases that have no other.
    std::function<std::int16_t(std::uint32_t rgb)> nearestIndex;
};

/// Gives a carried body, or the carried rest of a table's record, the form of the release `to`. False, with the object
/// unchanged, where its type isn't known here or it isn't as its type should be. Objects with a decoded body need none.
bool recodeCarried(Object& object, const RecodingContext& context);

} // namespace dwg
