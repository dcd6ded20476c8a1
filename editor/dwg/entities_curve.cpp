#include "editor/dwg/objects_stream.h"

/// Splines and leaders.
namespace dwg {

namespace {

// The least bits that an element takes, for counts that can't be.
constexpr std::size_t leastNumber = 2, leastPoint = 6;

template <class Stream> void transferScenario(Stream& s, Spline& body) {
    if (!s.since(Release::r2013)) {
        s.bl(body.scenario);
        if (Stream::reading && body.scenario == Spline::byFitPoints) {
            body.flags = Spline::usualFitFlags;
            body.parametrization = 0;
        }
    } else {
        s.bl(body.storedScenario);
        s.bl(body.flags);
        s.bl(body.parametrization);
        if constexpr (Stream::reading) {
            body.scenario = (body.flags & Spline::fitMethod) != 0 ? Spline::byFitPoints : body.storedScenario;
            if (body.parametrization == Spline::customKnots)
                body.scenario = Spline::byControlPoints;
        }
    }
    if constexpr (Stream::reading) {
        if (body.scenario != Spline::byControlPoints && body.scenario != Spline::byFitPoints)
            s.data.fail();
    }
}

} // namespace

template <class Stream> void transfer(Stream& s, Spline& body, std::uint16_t) {
    transferScenario(s, body);
    s.bl(body.degree);
    if (body.scenario == Spline::byFitPoints) {
        s.bd(body.fitTolerance);
        s.bd3(body.startTangent);
        s.bd3(body.endTangent);
        s.sizeBl(body.fitPoints, leastPoint);
    } else {
        s.b(body.rational);
        s.b(body.closed);
        s.b(body.periodic);
        s.bd(body.knotTolerance);
        s.bd(body.controlTolerance);
        s.sizeBl(body.knots, leastNumber);
        s.sizeBl(body.controlPoints, leastPoint);
        s.b(body.weighted);
    }
    for (double& knot : body.knots)
        s.bd(knot);
    for (Spline::ControlPoint& control : body.controlPoints) {
        s.bd3(control.point);
        if (body.weighted)
            s.bd(control.weight);
    }
    for (Point3& point : body.fitPoints)
        s.bd3(point);
}

template <class Stream> void transfer(Stream& s, Leader& body, std::uint16_t) {
    s.b(body.unknown1);
    s.bs(body.annotation);
    s.bs(body.path);
    s.sizeBl(body.points, leastPoint);
    for (Point3& point : body.points)
        s.bd3(point);
    for (Point3* const point : {&body.origin, &body.extrusion, &body.xDirection, &body.blockOffset})
        s.bd3(*point);
    if (s.since(Release::r14))
        s.bd3(body.endOffset);
    if (s.until(Release::r14))
        s.bd(body.gap);
    if (s.until(Release::r2007)) {
        s.bd(body.boxHeight);
        s.bd(body.boxWidth);
    }
    s.b(body.hook);
    s.b(body.arrow);
    if (s.until(Release::r14)) {
        s.bs(body.arrowType);
        s.bd(body.arrowSize);
        s.b(body.unknown2);
        s.b(body.unknown3);
        s.bs(body.unknown4);
        s.bs(body.color);
    } else {
        s.bs(body.unknown4);
    }
    s.b(body.unknown5);
    s.b(body.unknown6);
    s.h(body.annotationObject);
    s.h(body.style);
}

DWG_INSTANTIATE_TRANSFER(Spline);
DWG_INSTANTIATE_TRANSFER(Leader);

} // namespace dwg
