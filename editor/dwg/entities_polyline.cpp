#include "editor/dwg/objects_owned.h"

#include <bit>
#include <cmath>

/// Polylines, meshes and their vertices.
namespace dwg {

namespace {

// Bits of a lightweight polyline's flags that say which fields follow.
constexpr std::uint16_t hasExtrusion = 0x01;
constexpr std::uint16_t hasThickness = 0x02;
constexpr std::uint16_t hasConstantWidth = 0x04;
constexpr std::uint16_t hasElevation = 0x08;
constexpr std::uint16_t hasBulges = 0x10;
constexpr std::uint16_t hasWidths = 0x20;
constexpr std::uint16_t hasIdentifiers = 0x400;
constexpr std::uint16_t fieldBits = 0x43F;

bool isZero(double value) {
    return std::bit_cast<std::uint64_t>(value) == 0;
}

std::uint16_t storedFields(const LightweightPolyline& polyline, bool hasRoomForIdentifiers) {
    unsigned bits = 0;
    const auto note = [&bits](bool stored, std::uint16_t bit) { bits |= stored ? bit : 0U; };
    note(polyline.extrusion != zAxis, hasExtrusion);
    note(!isZero(polyline.thickness), hasThickness);
    note(!isZero(polyline.constantWidth), hasConstantWidth);
    note(!isZero(polyline.elevation), hasElevation);
    note(!polyline.bulges.empty(), hasBulges);
    note(!polyline.widths.empty(), hasWidths);
    note(hasRoomForIdentifiers && !polyline.identifiers.empty(), hasIdentifiers);
    return static_cast<std::uint16_t>(bits);
}

} // namespace

template <class Stream> void transfer(Stream& s, LightweightPolyline& body, std::uint16_t) {
    auto flags = static_cast<std::uint16_t>((body.flags & ~fieldBits) | storedFields(body, s.since(Release::r2010)));
    s.bs(flags);
    body.flags = static_cast<std::uint16_t>(flags & ~fieldBits);
    if ((flags & hasConstantWidth) != 0)
        s.bd(body.constantWidth);
    if ((flags & hasElevation) != 0)
        s.bd(body.elevation);
    if ((flags & hasThickness) != 0)
        s.bd(body.thickness);
    if ((flags & hasExtrusion) != 0)
        s.bd3(body.extrusion);
    // A point takes two double codes of two bits at least.
    s.sizeBl(body.points, 4);
    if ((flags & hasBulges) != 0)
        s.sizeBl(body.bulges, 2);
    if ((flags & hasIdentifiers) != 0)
        s.sizeBl(body.identifiers, 2);
    if ((flags & hasWidths) != 0)
        s.sizeBl(body.widths, 4);
    for (std::size_t i = 0; i < body.points.size(); ++i) {
        if (i == 0 || !s.since(Release::r2000))
            s.rd2(body.points[i]);
        else
            s.dd2(body.points[i], body.points[i - 1]);
    }
    for (double& bulge : body.bulges)
        s.bd(bulge);
    if ((flags & hasIdentifiers) != 0) {
        for (std::uint32_t& identifier : body.identifiers)
            s.bl(identifier);
    }
    for (LightweightPolyline::Width& width : body.widths) {
        s.bd(width.start);
        s.bd(width.end);
    }
}

template <class Stream> void transfer(Stream& s, Polyline2d& body, std::uint16_t) {
    s.bs(body.flags);
    s.bs(body.curveType);
    s.bd(body.startWidth);
    s.bd(body.endWidth);
    s.bt(body.thickness);
    s.bd(body.elevation);
    s.be(body.extrusion);
    transferChain(s, body.vertices);
}

template <class Stream> void transfer(Stream& s, Polyline3d& body, std::uint16_t) {
    s.rc(body.curveFlags);
    s.rc(body.closeFlags);
    transferChain(s, body.vertices);
}

template <class Stream> void transfer(Stream& s, PolyfaceMesh& body, std::uint16_t) {
    s.bs(body.vertexCount);
    s.bs(body.faceCount);
    transferChain(s, body.vertices);
}

template <class Stream> void transfer(Stream& s, PolygonMesh& body, std::uint16_t) {
    s.bs(body.flags);
    s.bs(body.curveType);
    s.bs(body.rows);
    s.bs(body.columns);
    s.bs(body.rowDensity);
    s.bs(body.columnDensity);
    transferChain(s, body.vertices);
}

template <class Stream> void transfer(Stream& s, Vertex2d& body, std::uint16_t) {
    s.rc(body.flags);
    s.bd3(body.position);
    // Equal widths are stored once, as a negative number.
    const bool equalWidths = body.startWidth == body.endWidth && body.startWidth > 0;
    double startWidth = equalWidths ? -body.startWidth : body.startWidth;
    s.bd(startWidth);
    if (startWidth < 0) {
        body.startWidth = body.endWidth = -startWidth;
    } else {
        body.startWidth = startWidth;
        s.bd(body.endWidth);
    }
    s.bd(body.bulge);
    if (s.since(Release::r2010))
        s.bl(body.identifier);
    s.bd(body.tangent);
}

template <class Stream> void transfer(Stream& s, Vertex3d& body, std::uint16_t) {
    s.rc(body.flags);
    s.bd3(body.position);
}

template <class Stream> void transfer(Stream& s, PolyfaceFace& body, std::uint16_t) {
    for (std::int16_t& vertex : body.vertices)
        s.bs(vertex);
}

DWG_INSTANTIATE_TRANSFER(LightweightPolyline);
DWG_INSTANTIATE_TRANSFER(Polyline2d);
DWG_INSTANTIATE_TRANSFER(Polyline3d);
DWG_INSTANTIATE_TRANSFER(PolyfaceMesh);
DWG_INSTANTIATE_TRANSFER(PolygonMesh);
DWG_INSTANTIATE_TRANSFER(Vertex2d);
DWG_INSTANTIATE_TRANSFER(Vertex3d);
DWG_INSTANTIATE_TRANSFER(PolyfaceFace);

} // namespace dwg
