#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace dwg {

/// Type numbers that are the same in every drawing. Numbers from 500 on are classes, counted from the first record of
/// the drawing's classes.
namespace object_type {
constexpr std::uint16_t text = 1;
constexpr std::uint16_t attribute = 2;
constexpr std::uint16_t attributeDefinition = 3;
constexpr std::uint16_t block = 4;
constexpr std::uint16_t endBlock = 5;
constexpr std::uint16_t sequenceEnd = 6;
constexpr std::uint16_t insert = 7;
constexpr std::uint16_t multipleInsert = 8;
constexpr std::uint16_t vertex2d = 10;
constexpr std::uint16_t vertex3d = 11;
constexpr std::uint16_t meshVertex = 12;
constexpr std::uint16_t polyfaceVertex = 13;
constexpr std::uint16_t polyfaceFace = 14;
constexpr std::uint16_t polyline2d = 15;
constexpr std::uint16_t polyline3d = 16;
constexpr std::uint16_t arc = 17;
constexpr std::uint16_t circle = 18;
constexpr std::uint16_t line = 19;
constexpr std::uint16_t dimensionOrdinate = 20;
constexpr std::uint16_t dimensionLinear = 21;
constexpr std::uint16_t dimensionAligned = 22;
constexpr std::uint16_t dimensionThreePoints = 23;
constexpr std::uint16_t dimensionTwoLines = 24;
constexpr std::uint16_t dimensionRadius = 25;
constexpr std::uint16_t dimensionDiameter = 26;
constexpr std::uint16_t point = 27;
constexpr std::uint16_t face3d = 28;
constexpr std::uint16_t polyface = 29;
constexpr std::uint16_t polygonMesh = 30;
constexpr std::uint16_t solid = 31;
constexpr std::uint16_t trace = 32;
constexpr std::uint16_t viewport = 34;
constexpr std::uint16_t ellipse = 35;
constexpr std::uint16_t spline = 36;
constexpr std::uint16_t ray = 40;
constexpr std::uint16_t constructionLine = 41;
constexpr std::uint16_t dictionary = 42;
constexpr std::uint16_t multilineText = 44;
constexpr std::uint16_t leader = 45;
constexpr std::uint16_t blockControl = 48;
constexpr std::uint16_t blockHeader = 49;
constexpr std::uint16_t layerControl = 50;
constexpr std::uint16_t layer = 51;
constexpr std::uint16_t styleControl = 52;
constexpr std::uint16_t style = 53;
constexpr std::uint16_t linetypeControl = 56;
constexpr std::uint16_t linetype = 57;
constexpr std::uint16_t viewControl = 60;
constexpr std::uint16_t view = 61;
constexpr std::uint16_t ucsControl = 62;
constexpr std::uint16_t ucs = 63;
constexpr std::uint16_t viewportControl = 64;
constexpr std::uint16_t viewportRecord = 65;
constexpr std::uint16_t applicationControl = 66;
constexpr std::uint16_t application = 67;
constexpr std::uint16_t dimensionStyleControl = 68;
constexpr std::uint16_t dimensionStyle = 69;
constexpr std::uint16_t viewportEntityControl = 70;
constexpr std::uint16_t viewportEntityHeader = 71;
constexpr std::uint16_t multilineStyle = 73;
constexpr std::uint16_t lightweightPolyline = 77;
constexpr std::uint16_t hatch = 78;
constexpr std::uint16_t record = 79;
constexpr std::uint16_t placeholder = 80;
constexpr std::uint16_t layout = 82;
constexpr std::uint16_t proxyEntity = 498;
constexpr std::uint16_t proxyObject = 499;
constexpr std::uint16_t firstClass = 500;
} // namespace object_type

/// The name of a fixed type, such as "LINE", "DIMENSION_LINEAR", "POLYLINE_2D"; nothing for a number without a type.
std::optional<std::string_view> fixedTypeName(std::uint16_t type);

/// Whether a fixed type is an entity: one that lies in a block record, or belongs to one that does.
bool isFixedEntity(std::uint16_t type);

/// Entities that exist only as a part of another or of the frame of a block record: ATTRIB, VERTEX_..., SEQEND, BLOCK,
/// ENDBLK.
bool isSubEntity(std::uint16_t type);

/// Entities whose parts hang on a chain of their own: INSERT and MINSERT (attributes) and the polylines with vertices.
bool isChainOwner(std::uint16_t type);

} // namespace dwg
