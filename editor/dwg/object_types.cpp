#include "editor/dwg/object_types.h"

#include <array>

namespace dwg {

namespace {

// By number from 0; an empty name is a number without a type.
constexpr std::array<std::string_view, 83> names = {
    "",
    "TEXT",
    "ATTRIB",
    "ATTDEF",
    "BLOCK",
    "ENDBLK",
    "SEQEND",
    "INSERT",
    "MINSERT",
    "",
    "VERTEX_2D",
    "VERTEX_3D",
    "VERTEX_MESH",
    "VERTEX_PFACE",
    "VERTEX_PFACE_FACE",
    "POLYLINE_2D",
    "POLYLINE_3D",
    "ARC",
    "CIRCLE",
    "LINE",
    "DIMENSION_ORDINATE",
    "DIMENSION_LINEAR",
    "DIMENSION_ALIGNED",
    "DIMENSION_ANG3PT",
    "DIMENSION_ANG2LN",
    "DIMENSION_RADIUS",
    "DIMENSION_DIAMETER",
    "POINT",
    "3DFACE",
    "POLYLINE_PFACE",
    "POLYLINE_MESH",
    "SOLID",
    "TRACE",
    "SHAPE",
    "VIEWPORT",
    "ELLIPSE",
    "SPLINE",
    "REGION",
    "3DSOLID",
    "BODY",
    "RAY",
    "XLINE",
    "DICTIONARY",
    "OLEFRAME",
    "MTEXT",
    "LEADER",
    "TOLERANCE",
    "MLINE",
    "BLOCK_CONTROL",
    "BLOCK_HEADER",
    "LAYER_CONTROL",
    "LAYER",
    "STYLE_CONTROL",
    "STYLE",
    "",
    "",
    "LTYPE_CONTROL",
    "LTYPE",
    "",
    "",
    "VIEW_CONTROL",
    "VIEW",
    "UCS_CONTROL",
    "UCS",
    "VPORT_CONTROL",
    "VPORT",
    "APPID_CONTROL",
    "APPID",
    "DIMSTYLE_CONTROL",
    "DIMSTYLE",
    "VPORT_ENTITY_CONTROL",
    "VPORT_ENTITY_HEADER",
    "GROUP",
    "MLINESTYLE",
    "OLE2FRAME",
    "DUMMY",
    "LONG_TRANSACTION",
    "LWPOLYLINE",
    "HATCH",
    "XRECORD",
    "ACDBPLACEHOLDER",
    "VBA_PROJECT",
    "LAYOUT",
};

} // namespace

std::optional<std::string_view> fixedTypeName(std::uint16_t type) {
    if (type == object_type::proxyEntity)
        return "ACAD_PROXY_ENTITY";
    if (type == object_type::proxyObject)
        return "ACAD_PROXY_OBJECT";
    if (type >= names.size() || names[type].empty())
        return std::nullopt;
    return names[type];
}

bool isFixedEntity(std::uint16_t type) {
    if (type == 42 || !fixedTypeName(type))
        return false;
    return type <= 47 || type == 74 || type == 77 || type == 78 || type == object_type::proxyEntity;
}

bool isSubEntity(std::uint16_t type) {
    using namespace object_type;
    return type == attribute || (type >= block && type <= sequenceEnd) || (type >= vertex2d && type <= polyfaceFace);
}

bool isChainOwner(std::uint16_t type) {
    using namespace object_type;
    return type == insert || type == multipleInsert || type == polyline2d || type == polyline3d || type == polyface ||
           type == polygonMesh;
}

} // namespace dwg
