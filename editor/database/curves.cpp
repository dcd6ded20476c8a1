#include "editor/database/curves.h"

#include <algorithm>
#include <cmath>

namespace editor {

namespace {

constexpr std::size_t highestDegree = 25;
constexpr std::size_t piecesOfSpan = 12;
constexpr std::size_t mostPoints = 20'000;

/// A point times its weight.
struct Weighted {
    double x = 0, y = 0, z = 0, weight = 1;
};

Weighted between(const Weighted& a, const Weighted& b, double part) {
    const auto mix = [part](double from, double to) { return from + (to - from) * part; };
    return {mix(a.x, b.x), mix(a.y, b.y), mix(a.z, b.z), mix(a.weight, b.weight)};
}

bool fits(const BSpline& spline) {
    const std::size_t count = spline.controlPoints.size();
    return spline.degree >= 1 && spline.degree <= highestDegree && count > spline.degree &&
           spline.knots.size() == count + spline.degree + 1 && std::ranges::is_sorted(spline.knots) &&
           (spline.weights.empty() || spline.weights.size() == count);
}

/// The point at a parameter in the span from that knot on, by repeated division of its control points.
AcGePoint3d pointAt(const BSpline& spline, std::size_t span, double parameter) {
    const std::size_t degree = spline.degree;
    std::vector<Weighted> row(degree + 1);
    for (std::size_t i = 0; i <= degree; ++i) {
        const std::size_t at = span - degree + i;
        const AcGePoint3d& point = spline.controlPoints[at];
        const double weight = spline.weights.empty() ? 1 : spline.weights[at];
        row[i] = {point.x * weight, point.y * weight, point.z * weight, weight};
    }
    for (std::size_t level = 1; level <= degree; ++level) {
        for (std::size_t i = degree; i >= level; --i) {
            const double from = spline.knots[span - degree + i], to = spline.knots[span + 1 + i - level];
            row[i] = between(row[i - 1], row[i], to > from ? (parameter - from) / (to - from) : 0);
        }
    }
    const Weighted& end = row[degree];
    const double weight = end.weight == 0 ? 1 : end.weight;
    return {end.x / weight, end.y / weight, end.z / weight};
}

} // namespace

std::vector<AcGePoint3d> pointsOfSpline(const BSpline& spline) {
    if (!fits(spline))
        return spline.controlPoints;
    std::vector<AcGePoint3d> points;
    for (std::size_t span = spline.degree; span < spline.controlPoints.size(); ++span) {
        const double from = spline.knots[span], to = spline.knots[span + 1];
        if (!(to > from))
            continue;
        const std::size_t pieces = spline.degree == 1 || points.size() > mostPoints ? 1 : piecesOfSpan;
        for (std::size_t piece = points.empty() ? 0 : 1; piece <= pieces; ++piece)
            points.push_back(pointAt(spline, span, from + (to - from) * static_cast<double>(piece) / pieces));
    }
    return points.empty() ? spline.controlPoints : points;
}

std::vector<AcGePoint3d> pointsThrough(const std::vector<AcGePoint3d>& through, bool closed) {
    const std::size_t count = through.size();
    if (count < 3 || count > mostPoints)
        return through;
    // In each piece the curve leaves and reaches a point in the direction of its two neighbours.
    const auto at = [&](std::size_t index) { return through[closed ? index % count : std::min(index, count - 1)]; };
    std::vector<AcGePoint3d> points{through[0]};
    for (std::size_t i = 0; i + (closed ? 0 : 1) < count; ++i) {
        const AcGePoint3d before = i == 0 ? (closed ? through[count - 1] : through[0]) : through[i - 1];
        const AcGePoint3d from = at(i), to = at(i + 1), behind = at(i + 2);
        const AcGeVector3d leaving = (to - before) * 0.5, reaching = (behind - from) * 0.5;
        for (std::size_t piece = 1; piece <= piecesOfSpan; ++piece) {
            const double t = static_cast<double>(piece) / piecesOfSpan, square = t * t, cube = square * t;
            points.push_back(from + (to - from) * (3 * square - 2 * cube) + leaving * (cube - 2 * square + t) +
                             reaching * (cube - square));
        }
    }
    return points;
}

} // namespace editor
