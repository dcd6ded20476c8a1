#pragma once

#include "editor/sdk/db.h"

#include <cstdint>
#include <string>
#include <vector>

namespace editor {

/// A linetype at the scale of an entity: lengths in drawing units, drawn and left out in turn, a drawn one first. A
/// drawn length of 0 is a dot. Empty for a continuous line.
using DashPattern = std::vector<double>;

/// One run of straight pieces in world coordinates; curves are already broken into pieces. A single point is a mark.
struct Stroke {
    std::vector<AcGePoint3d> points;
    /// 1 to 255, BYLAYER and BYBLOCK already resolved.
    std::uint16_t colour = 7;
    /// The inside of the closed run is filled.
    bool filled = false;
    /// The entity of the drawn block record that it comes from: an insert for all that its definition draws.
    AcDbObjectId entity;
    /// It belongs to another drawing, which an external reference shows.
    bool foreign = false;
    /// Index into Wireframe::patterns.
    std::uint32_t pattern = 0;
    /// Nothing is drawn along a filled run. It may hold several contours, each closed and followed by the way back to
    /// the run's first point, that the even-odd rule fills.
    bool edgeless = false;
    /// The straight piece of two points goes on without an end behind the second point, and ahead of the first one.
    bool beyondEnd = false, beyondStart = false;
};

/// One line of text. `position` is the left end of its baseline.
struct TextItem {
    std::wstring content;
    AcGePoint3d position;
    /// Directions of the baseline and of the letters' uprights; their lengths are the width of an average letter and
    /// the height of a capital, in drawing units, so that mirrored and stretched text needs nothing more.
    AcGeVector3d along, up;
    std::uint16_t colour = 7;
    AcDbObjectId entity;
    bool foreign = false;
    /// It stands behind the item before it, on the same line; `position` is right for average letters.
    bool continued = false;
    /// The part of the line, of all items that belong to it, that lies ahead of the point which it is aligned to: 0 at
    /// the left end, 1 at the right one. That point stays where it is for letters of any width. The line's first item
    /// tells it.
    double anchor = 0;
    /// Bits of TextRun: lines along the letters.
    std::uint8_t marks = 0;

    double height() const { return up.length(); }
    /// Radians from the world's x axis.
    double angle() const;
};

struct Extents {
    AcGePoint3d lowest, highest;
    bool empty = true;
    void add(const AcGePoint3d& point);
};

struct Wireframe {
    std::vector<Stroke> strokes;
    std::vector<TextItem> texts;
    /// The first is the continuous one.
    std::vector<DashPattern> patterns{{}};
    /// More than the limit: the rest wasn't drawn.
    bool cut = false;

    /// The box around all strokes and texts.
    Extents extents() const;
};

struct WireframeLimits {
    /// Inserts within inserts.
    int depth = 16;
    std::size_t points = 2'000'000;
};

/// What a block record shows: LINE, CIRCLE, ARC, ELLIPSE, SPLINE, POINT, RAY and XLINE, polylines with bulges and
/// widths, meshes, TEXT, MTEXT with its formatting, ATTRIB, SOLID, 3DFACE, HATCH, LEADER, dimensions by their blocks
/// and all that inserts bring, external references that were loaded included, in drawing order. Entities on layers that
/// are off or frozen are left out, undecoded ones too. An id that names no block record gives nothing. Reads the
/// database, so it belongs on its thread.
Wireframe wireframeOf(AcDbObjectId blockRecord, const WireframeLimits& limits = {});

/// The wireframe of the model space.
Wireframe wireframeOfModelSpace(const AcDbDatabase& database, const WireframeLimits& limits = {});

} // namespace editor
