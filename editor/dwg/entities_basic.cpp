#include "editor/dwg/objects_stream.h"

#include <bit>

/// Lines, curves, points and faces.
namespace dwg {

namespace {

bool isZero(double value) {
    return std::bit_cast<std::uint64_t>(value) == 0;
}

template <class Stream> void transferEnds(Stream& s, Line& body) {
    bool flat = isZero(body.start.z) && isZero(body.end.z);
    s.b(flat);
    s.rd(body.start.x);
    s.dd(body.end.x, body.start.x);
    s.rd(body.start.y);
    s.dd(body.end.y, body.start.y);
    if (!flat) {
        s.rd(body.start.z);
        s.dd(body.end.z, body.start.z);
    }
}

template <class Stream> void transferCorners(Stream& s, Face3d& body) {
    bool noInvisibleEdges = body.invisibleEdges == 0;
    bool flat = isZero(body.corners[0].z);
    s.b(noInvisibleEdges);
    s.b(flat);
    s.rd(body.corners[0].x);
    s.rd(body.corners[0].y);
    if (!flat)
        s.rd(body.corners[0].z);
    for (std::size_t i = 1; i < body.corners.size(); ++i)
        s.dd3(body.corners[i], body.corners[i - 1]);
    if (!noInvisibleEdges)
        s.bs(body.invisibleEdges);
}

} // namespace

template <class Stream> void transfer(Stream& s, Line& body, std::uint16_t) {
    if (s.since(Release::r2000)) {
        transferEnds(s, body);
    } else {
        s.bd3(body.start);
        s.bd3(body.end);
    }
    s.bt(body.thickness);
    s.be(body.extrusion);
}

template <class Stream> void transfer(Stream& s, Circle& body, std::uint16_t) {
    s.bd3(body.center);
    s.bd(body.radius);
    s.bt(body.thickness);
    s.be(body.extrusion);
}

template <class Stream> void transfer(Stream& s, Arc& body, std::uint16_t) {
    s.bd3(body.center);
    s.bd(body.radius);
    s.bt(body.thickness);
    s.be(body.extrusion);
    s.bd(body.startAngle);
    s.bd(body.endAngle);
}

template <class Stream> void transfer(Stream& s, Ellipse& body, std::uint16_t) {
    s.bd3(body.center);
    s.bd3(body.majorAxis);
    s.bd3(body.extrusion);
    s.bd(body.axisRatio);
    s.bd(body.startAngle);
    s.bd(body.endAngle);
}

template <class Stream> void transfer(Stream& s, PointEntity& body, std::uint16_t) {
    s.bd3(body.position);
    s.bt(body.thickness);
    s.be(body.extrusion);
    s.bd(body.xAxisAngle);
}

template <class Stream> void transfer(Stream& s, Solid& body, std::uint16_t) {
    s.bt(body.thickness);
    s.bd(body.elevation);
    for (Point2& corner : body.corners)
        s.rd2(corner);
    s.be(body.extrusion);
}

template <class Stream> void transfer(Stream& s, Face3d& body, std::uint16_t) {
    if (s.since(Release::r2000)) {
        transferCorners(s, body);
        return;
    }
    for (Point3& corner : body.corners)
        s.bd3(corner);
    s.bs(body.invisibleEdges);
}

template <class Stream> void transfer(Stream& s, Ray& body, std::uint16_t) {
    s.bd3(body.point);
    s.bd3(body.direction);
}

DWG_INSTANTIATE_TRANSFER(Line);
DWG_INSTANTIATE_TRANSFER(Circle);
DWG_INSTANTIATE_TRANSFER(Arc);
DWG_INSTANTIATE_TRANSFER(Ellipse);
DWG_INSTANTIATE_TRANSFER(PointEntity);
DWG_INSTANTIATE_TRANSFER(Solid);
DWG_INSTANTIATE_TRANSFER(Face3d);
DWG_INSTANTIATE_TRANSFER(Ray);

} // namespace dwg
