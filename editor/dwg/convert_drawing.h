#pragma once

#include "editor/dwg/header_variables.h"
#include "editor/dwg/model.h"

#include <functional>

namespace dwg {

/// Objects that a drawing of another release can't hold, by type.
struct LeftOut {
    std::string type;
    std::vector<Handle> handles;
    bool operator==(const LeftOut&) const = default;
};

struct ConvertedDrawing {
    Drawing drawing;
    HeaderVariables header;
    /// In the order of types. Dictionaries and records that merely hang on such an object are left out with it and not
    /// told.
    std::vector<LeftOut> leftOut;
};

/// A copy of a drawing in the form of another release, 2000 or later: every object with its handle, encoded anew when
/// it is written. What is only carried and can't be told in that release is left out, with what hangs on it, and no
/// reference leads to it any more. Pictures of entities are dropped, and so is what an older release has no room for.
///
/// `nearestIndex` gives the colour index next to a true colour.
ConvertedDrawing convertDrawing(const Drawing& drawing, const HeaderVariables& header, Release to,
                                const std::function<std::int16_t(std::uint32_t rgb)>& nearestIndex);

} // namespace dwg
