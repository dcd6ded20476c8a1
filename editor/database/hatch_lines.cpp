#include "editor/database/hatch_lines.h"

#include "editor/database/curves.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>

namespace editor {

namespace {

constexpr double fullTurn = 2 * std::numbers::pi;
constexpr int piecesOfTurn = 72;
constexpr double mostMeetings = 400'000; // of lines and edges of one family

double along(const dwg::Point2& point, const dwg::Point2& direction) {
    return point.x * direction.x + point.y * direction.y;
}

dwg::Point2 turned(const dwg::Point2& direction) {
    return {-direction.y, direction.x};
}

bool isFinite(const Contour& contour) {
    return std::ranges::all_of(contour, [](const dwg::Point2& point) { return std::isfinite(point.x + point.y); });
}

/// An arc of an ellipse from one parameter on over a sweep; `sign` -1 for one that runs clockwise.
void addArc(Contour& contour, const dwg::Point2& center, const dwg::Point2& major, const dwg::Point2& minor,
            double start, double sweep, double sign) {
    if (!std::isfinite(start) || !std::isfinite(sweep))
        return;
    const int pieces = std::max(2, static_cast<int>(std::ceil(std::abs(sweep) / fullTurn * piecesOfTurn)));
    for (int i = 0; i <= pieces; ++i) {
        const double angle = sign * (start + sweep * i / pieces), cosine = std::cos(angle), sine = std::sin(angle);
        contour.push_back({center.x + major.x * cosine + minor.x * sine, center.y + major.y * cosine + minor.y * sine});
    }
}

void addBulge(Contour& contour, const dwg::Point2& from, const dwg::Point2& to, double bulge) {
    const double dx = to.x - from.x, dy = to.y - from.y;
    if (bulge == 0 || !std::isfinite(bulge) || (dx == 0 && dy == 0)) {
        contour.push_back(from);
        return;
    }
    const double distance = (1 - bulge * bulge) / (4 * bulge);
    const dwg::Point2 center{(from.x + to.x) / 2 - dy * distance, (from.y + to.y) / 2 + dx * distance};
    const double radius = std::hypot(from.x - center.x, from.y - center.y);
    addArc(contour, center, {radius, 0}, {0, radius}, std::atan2(from.y - center.y, from.x - center.x),
           4 * std::atan(bulge), 1);
}

double sweepOf(double start, double end) {
    double sweep = std::fmod(end - start, fullTurn);
    if (sweep <= 0)
        sweep += fullTurn;
    return sweep;
}

void addEdge(Contour& contour, const dwg::Hatch::Edge& edge) {
    using Edge = dwg::Hatch::Edge;
    const double sign = edge.counterclockwise ? 1 : -1;
    if (edge.kind == Edge::line) {
        contour.push_back(edge.first);
        contour.push_back(edge.second);
    } else if (edge.kind == Edge::arc) {
        addArc(contour, edge.first, {edge.radiusOrRatio, 0}, {0, edge.radiusOrRatio}, edge.startAngle,
               sweepOf(edge.startAngle, edge.endAngle), sign);
    } else if (edge.kind == Edge::ellipse) {
        const dwg::Point2 minor = turned(edge.second);
        addArc(contour, edge.first, edge.second, {minor.x * edge.radiusOrRatio, minor.y * edge.radiusOrRatio},
               edge.startAngle, sweepOf(edge.startAngle, edge.endAngle), sign);
    } else {
        BSpline spline;
        spline.degree = edge.degree;
        spline.knots = edge.knots;
        for (const auto& control : edge.controlPoints) {
            spline.controlPoints.push_back({control.point.x, control.point.y, 0});
            if (edge.rational)
                spline.weights.push_back(control.weight);
        }
        for (const AcGePoint3d& point : pointsOfSpline(spline))
            contour.push_back({point.x, point.y});
    }
}

Contour contourOf(const dwg::Hatch::Path& path) {
    Contour contour;
    const std::size_t count = path.vertices.size();
    for (std::size_t i = 0; i < count; ++i)
        addBulge(contour, path.vertices[i].point, path.vertices[(i + 1) % count].point,
                 path.hasBulges ? path.vertices[i].bulge : 0);
    for (const dwg::Hatch::Edge& edge : path.edges)
        addEdge(contour, edge);
    return contour;
}

/// Where lines across a family meet the contours, line by line.
class Family {
public:
    /// `done` counts meetings and dashes of all families of a hatch.
    Family(const dwg::Hatch::PatternLine& of, const std::vector<Contour>& within, const HatchLimits& bounds,
           std::size_t& done)
        : line(of), contours(within), limits(bounds), work(done), direction{std::cos(of.angle), std::sin(of.angle)},
          across(turned(direction)), distance(along(of.offset, across)), start(along(of.base, across)) {}

    bool isDrawn() const {
        return std::isfinite(distance) && std::isfinite(start) && distance != 0 &&
               std::isfinite(along(line.base, direction)) && std::isfinite(along(line.offset, direction));
    }

    void add(std::vector<Piece>& pieces) {
        findMeetings(static_cast<double>(limits.lines));
        const double period = dashLength();
        for (auto& [number, meetings] : lines) {
            std::ranges::sort(meetings);
            const double shift =
                along(line.base, direction) + static_cast<double>(number) * along(line.offset, direction);
            const double height = start + static_cast<double>(number) * distance;
            for (std::size_t i = 0; i + 1 < meetings.size() && pieces.size() < limits.pieces && work < limits.work;
                 i += 2) {
                const double from = meetings[i], to = meetings[i + 1];
                const bool isWhole = !(period > 0) || !(to > from) ||
                                     (to - from) / period * static_cast<double>(line.dashes.size()) >
                                         static_cast<double>(limits.pieces - pieces.size());
                if (isWhole)
                    pieces.emplace_back(place(from, height), place(to, height));
                else
                    addDashes(pieces, from, to, shift, height, period);
            }
        }
    }

private:
    dwg::Point2 place(double u, double v) const {
        return {direction.x * u + across.x * v, direction.y * u + across.y * v};
    }

    // A meeting is in the line's own range: the end of an edge belongs to the edge that goes up from it.
    void findMeetings(double mostLines) {
        double lowest = std::numeric_limits<double>::infinity(), highest = -lowest, meetings = 0;
        for (const Contour& contour : contours) {
            double before = numberAt(contour.back());
            for (const dwg::Point2& point : contour) {
                const double at = numberAt(point);
                lowest = std::min(lowest, at);
                highest = std::max(highest, at);
                meetings += std::abs(at - before);
                before = at;
            }
        }
        constexpr double mostFar = 1e15;
        if (!(highest >= lowest) || !(std::abs(lowest) < mostFar) || !(std::abs(highest) < mostFar))
            return;
        const double step =
            std::max({1.0, std::ceil((highest - lowest) / mostLines), std::ceil(meetings / mostMeetings)});
        for (const Contour& contour : contours) {
            work += contour.size();
            for (std::size_t i = 0; i < contour.size(); ++i)
                addMeetings(numberAt(contour[i]), numberAt(contour[(i + 1) % contour.size()]), contour[i],
                            contour[(i + 1) % contour.size()], step);
        }
    }

    /// Which line of the family goes through a point, with the part on the way to the next one.
    double numberAt(const dwg::Point2& point) const { return (along(point, across) - start) / distance; }

    void addMeetings(double first, double last, const dwg::Point2& from, const dwg::Point2& to, double step) {
        if (first == last)
            return;
        const double low = std::min(first, last), high = std::max(first, last);
        const double lowest = std::ceil(low / step);
        const auto count = static_cast<std::size_t>(std::max(0.0, std::ceil(high / step) - lowest));
        for (std::size_t index = 0; index < count; ++index) {
            const double number = (lowest + static_cast<double>(index)) * step;
            const double part = (number - first) / (last - first);
            ++work;
            lines[static_cast<long long>(number)].push_back(along(from, direction) +
                                                            (along(to, direction) - along(from, direction)) * part);
        }
    }

    double dashLength() const {
        double length = 0;
        for (const double dash : line.dashes)
            length += std::abs(dash);
        return std::isfinite(length) ? length : 0;
    }

    void addDashes(std::vector<Piece>& pieces, double from, double to, double shift, double height, double period) {
        const double first = shift + std::floor((from - shift) / period) * period;
        const auto count = static_cast<std::size_t>(std::max(0.0, std::ceil((to - first) / period)));
        for (std::size_t index = 0; index < count && work < limits.work; ++index) {
            work += line.dashes.size();
            const double begin = first + static_cast<double>(index) * period;
            double at = begin;
            for (const double dash : line.dashes) {
                const double end = at + std::abs(dash);
                if (dash >= 0 && end >= from && at <= to)
                    pieces.emplace_back(place(std::max(at, from), height), place(std::min(end, to), height));
                at = end;
            }
        }
    }

    const dwg::Hatch::PatternLine& line;
    const std::vector<Contour>& contours;
    const HatchLimits& limits;
    std::size_t& work;
    const dwg::Point2 direction, across;
    const double distance, start;
    std::map<long long, std::vector<double>> lines;
};

} // namespace

std::vector<Contour> contoursOf(const dwg::Hatch& hatch) {
    constexpr std::uint32_t external = 1, outermost = 16; // bits of a path's flags
    const std::uint32_t wanted = hatch.style == 0 ? ~0U : hatch.style == 1 ? external | outermost : external;
    const bool hasWanted =
        std::ranges::any_of(hatch.paths, [&](const dwg::Hatch::Path& path) { return (path.flags & wanted) != 0; });
    std::vector<Contour> contours;
    for (const dwg::Hatch::Path& path : hatch.paths) {
        if (hatch.style != 0 && hasWanted && (path.flags & wanted) == 0)
            continue;
        Contour contour = contourOf(path);
        if (contour.size() > 2 && isFinite(contour))
            contours.push_back(std::move(contour));
    }
    return contours;
}

std::vector<Piece> patternPieces(const dwg::Hatch& hatch, const std::vector<Contour>& contours,
                                 const HatchLimits& limits, std::size_t& work) {
    std::vector<Piece> pieces;
    std::size_t done = 0;
    for (const dwg::Hatch::PatternLine& line : hatch.lines) {
        if (Family family(line, contours, limits, done); family.isDrawn() && done < limits.work)
            family.add(pieces);
    }
    work += done;
    return pieces;
}

Contour joined(const std::vector<Contour>& contours) {
    Contour run;
    for (const Contour& contour : contours) {
        run.insert(run.end(), contour.begin(), contour.end());
        run.push_back(contour.front());
        if (contour != contours.front())
            run.push_back(run.front());
    }
    return run;
}

Contour between(const Contour& run, dwg::Point2 direction, double from, double to) {
    const auto cut = [&](const Contour& whole, double limit, double sign) {
        Contour kept;
        for (std::size_t i = 0; i < whole.size(); ++i) {
            const dwg::Point2 &start = whole[i], &end = whole[(i + 1) % whole.size()];
            const double first = sign * (along(start, direction) - limit),
                         last = sign * (along(end, direction) - limit);
            if (first >= 0)
                kept.push_back(start);
            if ((first >= 0) != (last >= 0)) {
                const double part = first / (first - last);
                kept.push_back({start.x + (end.x - start.x) * part, start.y + (end.y - start.y) * part});
            }
        }
        return kept;
    };
    return cut(cut(run, from, 1), to, -1);
}

} // namespace editor
