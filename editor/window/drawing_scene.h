#pragma once

#include "editor/database/wireframe.h"

#include <QColor>
#include <QLineF>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>
#include <span>
#include <vector>

class QPainter;
class QPen;

namespace editor {

/// Where drawing units lie on a surface: y grows upwards in the drawing and downwards on the surface.
struct Projection {
    double scale = 1; ///< pixels a drawing unit
    QPointF centre;   ///< drawing coordinates at the middle of the surface
    QSizeF size;      ///< of the surface

    QPointF toSurface(double x, double y) const {
        return {size.width() / 2 + (x - centre.x()) * scale, size.height() / 2 - (y - centre.y()) * scale};
    }
    QPointF toDrawing(const QPointF& point) const {
        return {centre.x() + (point.x() - size.width() / 2) / scale,
                centre.y() - (point.y() - size.height() / 2) / scale};
    }
    /// What is seen, in drawing units.
    QRectF visible() const;
};

/// A wireframe made ready to be painted again and again: all points in one row, each stroke with its bounds, so that
/// what is out of sight costs a comparison.
class DrawingScene {
public:
    DrawingScene() = default;
    explicit DrawingScene(const Wireframe& wireframe);

    const Extents& extents() const { return box; }

    struct Style {
        QColor background;
        bool antialiased = true;
        /// Everything in this colour in place of its own.
        std::optional<QColor> only{};
    };
    void paint(QPainter& painter, const Projection& projection, const Style& style) const;
    /// Only what belongs to these objects.
    void paint(QPainter& painter, const Projection& projection, const Style& style,
               std::span<const AcDbObjectId> objects) const;
    /// The object that passes nearest to a point of the surface, at most `reach` pixels away; the one drawn last of
    /// several as near. Null without one.
    AcDbObjectId objectAt(const QPointF& point, const Projection& projection, double reach) const;

private:
    struct Run {
        std::size_t first = 0, count = 0;
        QRectF bounds;
        std::uint16_t colour = 7;
        bool filled = false;
        bool foreign = false;
        std::uint32_t pattern = 0;
        AcDbObjectId entity;
        bool edgeless = false;
        bool beyondStart = false, beyondEnd = false;

        bool looksLike(const Run& other) const {
            return colour == other.colour && foreign == other.foreign && pattern == other.pattern &&
                   filled == other.filled && edgeless == other.edgeless;
        }
    };
    struct Line {
        TextItem item;
        QRectF bounds;
        std::size_t first = 0; ///< the item that the line of text begins with
        /// Made when first painted: letters at the font's own size, width and place with that font in drawing units.
        mutable QPainterPath letters;
        mutable double width = -1;
        mutable AcGePoint3d place;
    };

    /// What all runs of one look share.
    void prepare(QPainter& painter, QPen& pen, const Projection& projection, const Run& run, const Style& style) const;
    void paintRun(QPainter& painter, const Projection& projection, const Run& run, std::vector<QPointF>& piece) const;
    void paintFarRun(QPainter& painter, const Projection& projection, const Run& run) const;
    QLineF segment(const Projection& projection, const Run& run, std::size_t index) const;
    /// Gives the items of a line their places, one behind the other.
    void setLine(std::size_t index) const;
    void paintLine(QPainter& painter, const Projection& projection, std::size_t index, const QColor& colour) const;
    QColor colourOf(std::uint16_t index, bool foreign, const Style& style) const;
    /// The dashes of a pattern in pixels; empty where they would be too small to see.
    QList<qreal> dashesOf(std::uint32_t pattern, double scale) const;

    std::vector<QPointF> points;
    std::vector<Run> runs;
    std::vector<Line> lines;
    std::vector<DashPattern> patterns;
    Extents box;
};

} // namespace editor
