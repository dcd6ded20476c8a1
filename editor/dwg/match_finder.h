#pragma once

#include "editor/dwg/source.h"

namespace dwg {

/// Finds earlier occurrences of what comes next, for the packings that replace them by copies. Positions are entered
/// in order; the work at each is bounded.
class MatchFinder {
public:
    struct Match {
        std::size_t length = 0;
        std::size_t distance = 0; ///< 1 is the byte just before
    };

    /// The bytes belong to the caller and outlive the finder.
    explicit MatchFinder(ByteView bytes);

    /// Makes all positions before `at` known.
    void enterUpTo(std::size_t at);
    /// The longest match for the bytes from `at` within `farthest` bytes back, the nearest among equals; a length of 0
    /// when there are not even three equal bytes. `at` itself must not have been entered.
    Match longest(std::size_t at, std::size_t farthest) const;

private:
    std::size_t slot(std::size_t at) const;

    ByteView content;
    std::size_t entered = 0;
    /// By hash the last position, and for each position the one before it of the same hash; both plus one, 0 for none.
    std::vector<std::uint32_t> heads, chain;
};

} // namespace dwg
