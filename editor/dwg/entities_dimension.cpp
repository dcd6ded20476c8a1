#include "editor/dwg/objects_stream.h"

/// Dimensions.
namespace dwg {

namespace {

template <class Stream> void transferPoints(Stream& s, Dimension& body, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        s.bd3(body.points[i]);
}

/// What each type has of its own.
template <class Stream> void transferDefinition(Stream& s, Dimension& body, std::uint16_t type) {
    using namespace object_type;
    switch (type) {
    case dimensionOrdinate:
        transferPoints(s, body, 3);
        s.rc(body.ordinateFlags);
        break;
    case dimensionLinear:
        transferPoints(s, body, 3);
        s.bd(body.extensionAngle);
        s.bd(body.rotation);
        break;
    case dimensionAligned:
        transferPoints(s, body, 3);
        s.bd(body.extensionAngle);
        break;
    case dimensionThreePoints:
        transferPoints(s, body, 4);
        break;
    case dimensionTwoLines:
        s.rd2(body.arcPlace);
        transferPoints(s, body, 4);
        break;
    default: // radius and diameter
        transferPoints(s, body, 2);
        s.bd(body.leaderLength);
        break;
    }
}

} // namespace

template <class Stream> void transfer(Stream& s, Dimension& body, std::uint16_t type) {
    if (s.since(Release::r2010))
        s.rc(body.version);
    s.bd3(body.extrusion);
    s.rd2(body.textMiddle);
    s.bd(body.elevation);
    s.rc(body.flags);
    s.t(body.text);
    s.bd(body.textRotation);
    s.bd(body.horizontalDirection);
    s.bd3(body.blockScale);
    s.bd(body.blockRotation);
    if (s.since(Release::r2000)) {
        s.bs(body.attachment);
        s.bs(body.lineSpacingStyle);
        s.bd(body.lineSpacingFactor);
        s.bd(body.measurement);
    }
    if (s.since(Release::r2007)) {
        s.b(body.unknown);
        s.b(body.firstArrowFlipped);
        s.b(body.secondArrowFlipped);
    }
    s.rd2(body.blockPosition);
    transferDefinition(s, body, type);
    s.h(body.style);
    s.h(body.block);
}

DWG_INSTANTIATE_TRANSFER(Dimension);

} // namespace dwg
