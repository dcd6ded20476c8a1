#pragma once

#include <QLineF>
#include <QPointF>
#include <QRectF>

#include <optional>
#include <span>
#include <vector>

namespace editor {

/// The part of a straight piece that lies in the box. `beyondStart` and `beyondEnd`: the piece goes on without an end
/// there.
std::optional<QLineF> clippedLine(const QPointF& from, const QPointF& to, const QRectF& box, bool beyondStart = false,
                                  bool beyondEnd = false);

/// A closed run cut down to the box: it fills the same inside of it, by the even-odd rule, and has edges along it.
std::vector<QPointF> clippedArea(std::span<const QPointF> run, const QRectF& box);

} // namespace editor
