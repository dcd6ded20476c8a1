#pragma once

#include "editor/dwg/model.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tests {

/// An entity of a real drawing as its file tells it, and where a scheme puts it.
struct PlainEntity {
    dwg::Handle handle = 0;
    std::wstring block, layer, linetype;
    int colour = 256;
    bool isText = false, isDimension = false;
    std::set<std::wstring> partLayers; ///< of attributes and vertices
};

struct PlainLayer {
    std::wstring name, linetype;
    int colour = 7;
};

/// What a file holds, read by the codec alone, and what mapping makes of it by the rules, worked out without the
/// engine: a whole drawing at once, by sets.
struct Expectation {
    std::vector<PlainLayer> layers;
    std::vector<PlainEntity> entities; ///< after `apply`: where they land
    std::vector<std::wstring> messages;
    std::set<std::wstring> layersAfter; ///< in upper case

    static Expectation read(const dwg::Drawing& drawing);
    /// Simple maps only: a From that ends in * stands for a beginning, any other for itself.
    void apply(int schemeType, const std::vector<std::pair<std::wstring, std::wstring>>& maps, bool byLayer);
};

} // namespace tests
