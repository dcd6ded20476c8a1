#include "editor/database/colours.h"
#include "editor/database/hatch_lines.h"
#include "editor/database/wireframe_builder.h"

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

constexpr int bandsOfGradient = 24;
constexpr std::size_t mostWork = 40'000'000; // of all patterns of a drawing

Rgb rgbOf(const dwg::Color& colour) {
    if (!colour.hasRgb)
        return colourOfIndex(static_cast<std::uint16_t>(std::abs(colour.index)));
    return {static_cast<std::uint8_t>(colour.rgb >> 16), static_cast<std::uint8_t>(colour.rgb >> 8),
            static_cast<std::uint8_t>(colour.rgb)};
}

std::uint16_t mixed(const Rgb& from, const Rgb& to, double part) {
    const auto mix = [part](std::uint8_t a, std::uint8_t b) {
        return static_cast<std::uint8_t>(std::lround(a + (b - a) * part));
    };
    return nearestIndex({mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue)});
}

} // namespace

void WireframeBuilder::draw(const dwg::Hatch& hatch, const Transform& to) {
    const Transform plane = to.after(planeToWorld(hatch.extrusion));
    const std::vector<Contour> contours = contoursOf(hatch);
    if (contours.empty())
        return;
    const auto place = [&](const dwg::Point2& point) { return plane.point({point.x, point.y, hatch.elevation}); };
    const auto fill = [&](const Contour& run) {
        std::vector<AcGePoint3d> points;
        std::ranges::transform(run, std::back_inserter(points), place);
        const std::size_t before = result.strokes.size();
        stroke(std::move(points), true);
        if (result.strokes.size() > before)
            result.strokes.back().edgeless = true;
    };
    if (hatch.gradient != 0 && !hatch.gradientColors.empty())
        return drawGradient(hatch, joined(contours), fill);
    if (hatch.solid)
        return fill(joined(contours));
    pattern = 0; // the dashes are the hatch's own
    HatchLimits hatchLimits;
    hatchLimits.work = std::min(hatchLimits.work, mostWork - std::min(mostWork, hatchWork));
    for (const auto& [from, end] : patternPieces(hatch, contours, hatchLimits, hatchWork)) {
        if (from == end)
            stroke({place(from)});
        else
            stroke({place(from), place(end)});
    }
}

// Bands of even colour across the gradient's direction; a cylinder's run there and back.
void WireframeBuilder::drawGradient(const dwg::Hatch& hatch, const Contour& run,
                                    const std::function<void(const Contour&)>& fill) {
    const dwg::Point2 direction{std::cos(hatch.gradientAngle), std::sin(hatch.gradientAngle)};
    const auto [least, most] = std::ranges::minmax(
        run, {}, [&](const dwg::Point2& point) { return point.x * direction.x + point.y * direction.y; });
    const auto along = [&](const dwg::Point2& point) { return point.x * direction.x + point.y * direction.y; };
    const double from = along(least), whole = along(most) - from;
    Rgb first = rgbOf(hatch.gradientColors.front().color), last = rgbOf(hatch.gradientColors.back().color);
    if (hatch.singleColor != 0 && hatch.gradientColors.size() == 1)
        last = {255, 255, 255};
    if (hatch.gradientName.starts_with(L"INV"))
        std::swap(first, last);
    const bool isLinear = hatch.gradientName.find(L"LINEAR") != std::wstring::npos;
    for (int band = 0; band < bandsOfGradient && whole > 0; ++band) {
        const double middle = (band + 0.5) / bandsOfGradient;
        colour = mixed(first, last, isLinear ? middle : 1 - std::abs(2 * middle - 1));
        // Each band reaches to the end, under those that follow: no seam is left between them.
        const Contour part = between(run, direction, from + whole * band / bandsOfGradient, from + whole);
        if (part.size() > 2)
            fill(part);
    }
}

} // namespace editor
