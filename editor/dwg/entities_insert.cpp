#include "editor/dwg/objects_owned.h"

/// Insertions of blocks and the frame of block records.
namespace dwg {

namespace {

// How the three factors are stored.
enum ScaleForm : std::uint8_t { allThree = 0, xIsOne = 1, uniform = 2, allOne = 3 };

ScaleForm scaleForm(const Point3& scale) {
    if (scale == Point3{1, 1, 1})
        return allOne;
    if (scale.x == scale.y && scale.x == scale.z)
        return uniform;
    return scale.x == 1 ? xIsOne : allThree;
}

template <class Stream> void transferScale(Stream& s, Point3& scale) {
    ScaleForm form = scaleForm(scale);
    s.bb(form);
    switch (form) {
    case allOne:
        scale = {1, 1, 1};
        break;
    case uniform:
        s.rd(scale.x);
        scale.y = scale.z = scale.x;
        break;
    case xIsOne:
        scale.x = 1;
        s.dd(scale.y, scale.x);
        s.dd(scale.z, scale.x);
        break;
    case allThree:
        s.rd(scale.x);
        s.dd(scale.y, scale.x);
        s.dd(scale.z, scale.x);
        break;
    }
}

} // namespace

template <class Stream> void transfer(Stream& s, Insert& body, std::uint16_t type) {
    s.bd3(body.position);
    if (s.since(Release::r2000))
        transferScale(s, body.scale);
    else
        s.bd3(body.scale);
    s.bd(body.rotation);
    s.bd3(body.extrusion);
    s.b(body.hasAttributes);
    s.h(body.block);
    if (body.hasAttributes)
        transferChain(s, body.attributes);
    if (type == object_type::multipleInsert) {
        s.bs(body.columns);
        s.bs(body.rows);
        s.bd(body.columnSpacing);
        s.bd(body.rowSpacing);
    }
}

template <class Stream> void transfer(Stream& s, BlockBegin& body, std::uint16_t) {
    s.t(body.name);
}

template <class Stream> void transfer(Stream&, BlockEnd&, std::uint16_t) {}

template <class Stream> void transfer(Stream&, SequenceEnd&, std::uint16_t) {}

DWG_INSTANTIATE_TRANSFER(Insert);
DWG_INSTANTIATE_TRANSFER(BlockBegin);
DWG_INSTANTIATE_TRANSFER(BlockEnd);
DWG_INSTANTIATE_TRANSFER(SequenceEnd);

} // namespace dwg
