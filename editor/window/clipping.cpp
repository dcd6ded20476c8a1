#include "editor/window/clipping.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace editor {

std::optional<QLineF> clippedLine(const QPointF& from, const QPointF& to, const QRectF& box, bool beyondStart,
                                  bool beyondEnd) {
    constexpr double endless = std::numeric_limits<double>::infinity();
    double first = beyondStart ? -endless : 0, last = beyondEnd ? endless : 1;
    // One side after the other takes off what lies outside of it.
    const auto cut = [&](double step, double room) {
        if (step == 0)
            return room >= 0;
        const double at = room / step;
        if (step < 0)
            first = std::max(first, at);
        else
            last = std::min(last, at);
        return first <= last;
    };
    const QPointF along = to - from;
    if (!cut(-along.x(), from.x() - box.left()) || !cut(along.x(), box.right() - from.x()) ||
        !cut(-along.y(), from.y() - box.top()) || !cut(along.y(), box.bottom() - from.y()))
        return std::nullopt;
    if (!std::isfinite(first) || !std::isfinite(last))
        return std::nullopt; // a line without a direction
    return QLineF(from + along * first, from + along * last);
}

std::vector<QPointF> clippedArea(std::span<const QPointF> run, const QRectF& box) {
    std::vector<QPointF> kept(run.begin(), run.end());
    // How far inside a point is of each side in turn.
    const auto cut = [&kept](const auto& inside) {
        const std::vector<QPointF> whole = std::move(kept);
        kept.clear();
        for (std::size_t i = 0; i < whole.size(); ++i) {
            const QPointF &from = whole[i], &to = whole[(i + 1) % whole.size()];
            const double first = inside(from), last = inside(to);
            if (first >= 0)
                kept.push_back(from);
            if ((first >= 0) != (last >= 0))
                kept.push_back(from + (to - from) * (first / (first - last)));
        }
    };
    cut([&](const QPointF& point) { return point.x() - box.left(); });
    cut([&](const QPointF& point) { return box.right() - point.x(); });
    cut([&](const QPointF& point) { return point.y() - box.top(); });
    cut([&](const QPointF& point) { return box.bottom() - point.y(); });
    return kept;
}

} // namespace editor
