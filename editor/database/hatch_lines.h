#pragma once

#include "editor/dwg/entities_hatch.h"

#include <utility>
#include <vector>

namespace editor {

/// A closed contour in the plane of a hatch, curves broken into straight pieces; the way from its last point to its
/// first one belongs to it.
using Contour = std::vector<dwg::Point2>;

/// The contours that bound what a hatch fills: all of them, or by its style the outer ones only.
std::vector<Contour> contoursOf(const dwg::Hatch& hatch);

using Piece = std::pair<dwg::Point2, dwg::Point2>;

struct HatchLimits {
    std::size_t lines = 4'000;    ///< of one family; a closer one is drawn with lines left out
    std::size_t pieces = 60'000;  ///< of the hatch; where dashes would be more, lines are drawn through
    std::size_t work = 4'000'000; ///< meetings with the contours and dashes, behind which the rest isn't drawn
};

/// The lines of a hatch's pattern inside of its contours, by the even-odd rule. A dot is a piece without a length.
/// What was done of `limits.work` is added to `work`.
std::vector<Piece> patternPieces(const dwg::Hatch& hatch, const std::vector<Contour>& contours,
                                 const HatchLimits& limits, std::size_t& work);

/// The contours as one run of points: each closed, with the way back to the run's first point behind it, so that the
/// even-odd rule fills the same.
Contour joined(const std::vector<Contour>& contours);

/// The part of a run for the even-odd rule that lies between two lines across `direction` (a unit vector), `from` and
/// `to` measured along it. What is added along the two lines bounds nothing.
Contour between(const Contour& run, dwg::Point2 direction, double from, double to);

} // namespace editor
