#pragma once

#include "editor/dwg/color.h"
#include "editor/dwg/handle.h"
#include "editor/dwg/point.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The bodies of decoded entities: what follows the data that all entities have. Lengths in drawing units, angles in
/// radians; points of flat entities lie in the plane of their extrusion. Defaults are those of a new entity.
namespace dwg {

constexpr Point3 zAxis{0, 0, 1};

struct Line {
    Point3 start, end;
    double thickness = 0;
    Point3 extrusion = zAxis;
    bool operator==(const Line&) const = default;
};

struct Circle {
    Point3 center;
    double radius = 0;
    double thickness = 0;
    Point3 extrusion = zAxis;
    bool operator==(const Circle&) const = default;
};

struct Arc {
    Point3 center;
    double radius = 0;
    double thickness = 0;
    Point3 extrusion = zAxis;
    double startAngle = 0, endAngle = 0;
    bool operator==(const Arc&) const = default;
};

struct Ellipse {
    Point3 center;
    /// From the center to the end of the major axis.
    Point3 majorAxis;
    Point3 extrusion = zAxis;
    double axisRatio = 1;
    double startAngle = 0, endAngle = 0;
    bool operator==(const Ellipse&) const = default;
};

struct PointEntity {
    Point3 position;
    double thickness = 0;
    Point3 extrusion = zAxis;
    double xAxisAngle = 0;
    bool operator==(const PointEntity&) const = default;
};

/// SOLID and TRACE. The third and fourth corner are crossed over: the outline is 0, 1, 3, 2.
struct Solid {
    double thickness = 0;
    double elevation = 0;
    std::array<Point2, 4> corners;
    Point3 extrusion = zAxis;
    bool operator==(const Solid&) const = default;
};

struct Face3d {
    std::array<Point3, 4> corners;
    std::uint16_t invisibleEdges = 0;
    bool operator==(const Face3d&) const = default;
};

/// RAY and XLINE.
struct Ray {
    Point3 point;
    Point3 direction;
    bool operator==(const Ray&) const = default;
};

struct LightweightPolyline {
    static constexpr std::uint16_t closed = 0x200;
    static constexpr std::uint16_t linetypeGeneration = 0x100;

    struct Width {
        double start = 0, end = 0;
        bool operator==(const Width&) const = default;
    };

    /// Only the bits above. Which of the fields below are stored follows from their values.
    std::uint16_t flags = 0;
    double constantWidth = 0;
    double elevation = 0;
    double thickness = 0;
    Point3 extrusion = zAxis;
    std::vector<Point2> points;
    /// One for each point, or none at all.
    std::vector<double> bulges;
    std::vector<Width> widths;
    /// From 2010 on.
    std::vector<std::uint32_t> identifiers{};
    bool operator==(const LightweightPolyline&) const = default;
};

/// What TEXT, ATTRIB and ATTDEF share.
struct TextFields {
    double elevation = 0;
    Point2 insertion, alignment;
    Point3 extrusion = zAxis;
    double thickness = 0;
    double oblique = 0, rotation = 0;
    double height = 0;
    double widthFactor = 1;
    std::wstring value;
    std::uint16_t generation = 0;
    std::uint16_t horizontal = 0, vertical = 0;
    HandleRef style{handle_code::hardPointer};
    bool operator==(const TextFields&) const = default;
};

struct Text {
    TextFields text;
    bool operator==(const Text&) const = default;
};

struct Attribute {
    TextFields text;
    std::wstring tag;
    std::uint16_t fieldLength = 0;
    std::uint8_t flags = 0;
    /// From 2007 on.
    bool lockedPosition = false;
    /// From 2010 on.
    std::uint8_t version = 0;
    /// From 2018 on: 1 for text of one line; others aren't decoded.
    std::uint8_t kind = 1;
    bool operator==(const Attribute&) const = default;
};

struct AttributeDefinition {
    Attribute attribute;
    std::wstring prompt;
    /// From 2010 on.
    std::uint8_t version = 0;
    bool operator==(const AttributeDefinition&) const = default;
};

/// What is stored of the columns of a paragraph, from 2018 on.
struct TextColumns {
    static constexpr std::uint16_t dynamic = 2;

    std::uint16_t version = 0;
    bool defaultFlag = true;
    HandleRef application{handle_code::hardPointer};
    /// Copies of fields of the text.
    std::uint32_t attachment = 1;
    Point3 xDirection{1, 0, 0}, insertion;
    double rectangleWidth = 0, rectangleHeight = 0, extentsWidth = 0, extentsHeight = 0;
    /// 0 none, 1 static, 2 dynamic.
    std::uint16_t type = 0;
    std::uint32_t count = 0;
    double width = 0, gutter = 0;
    bool automaticHeight = false, reversed = false;
    std::vector<double> heights;
    bool operator==(const TextColumns&) const = default;
};

struct MultilineText {
    static constexpr std::uint32_t backgroundColor = 0x01; ///< bits of backgroundFlags
    static constexpr std::uint32_t backgroundFrame = 0x10;

    using Columns = TextColumns;

    Point3 insertion;
    Point3 extrusion = zAxis;
    Point3 xDirection{1, 0, 0};
    double rectangleWidth = 0;
    double height = 0;
    std::uint16_t attachment = 1;
    std::uint16_t direction = 1;
    double extentsHeight = 0, extentsWidth = 0;
    std::wstring value;
    std::uint16_t lineSpacingStyle = 1;
    double lineSpacingFactor = 1;
    bool unknown = false;
    HandleRef style{handle_code::hardPointer};
    /// From 2004 on.
    std::uint32_t backgroundFlags = 0;
    double backgroundScale = 1.5;
    NamedColor background{};
    std::uint32_t backgroundTransparency = 0;
    /// From 2007 on.
    double rectangleHeight = 0;
    /// From 2018 on: present where the text isn't annotative.
    std::optional<Columns> columns{};
    bool operator==(const MultilineText&) const = default;
};

/// The entities that hang on another one: the attributes of an insertion, the vertices of a polyline. `parts` is the
/// truth; the stored ends follow from it when the drawing is written.
struct OwnedChain {
    HandleRef first{handle_code::softPointer}, last{handle_code::softPointer};
    HandleRef sequenceEnd{handle_code::hardOwner};
    std::vector<Handle> parts;
    bool operator==(const OwnedChain&) const = default;
};

struct Insert {
    Point3 position;
    Point3 scale{1, 1, 1};
    double rotation = 0;
    Point3 extrusion = zAxis;
    /// MINSERT only: a type of its own with these four stored.
    std::uint16_t columns = 1, rows = 1;
    double columnSpacing = 0, rowSpacing = 0;
    HandleRef block{handle_code::hardPointer};
    /// Stored where the insertion has attributes.
    bool hasAttributes = false;
    OwnedChain attributes;
    bool operator==(const Insert&) const = default;
};

struct Polyline2d {
    std::uint16_t flags = 0;
    std::uint16_t curveType = 0;
    double startWidth = 0, endWidth = 0;
    double thickness = 0;
    double elevation = 0;
    Point3 extrusion = zAxis;
    OwnedChain vertices;
    bool operator==(const Polyline2d&) const = default;
};

struct Polyline3d {
    std::uint8_t curveFlags = 0;
    /// Bit 0: closed.
    std::uint8_t closeFlags = 0;
    OwnedChain vertices;
    bool operator==(const Polyline3d&) const = default;
};

struct PolyfaceMesh {
    std::uint16_t vertexCount = 0, faceCount = 0;
    OwnedChain vertices;
    bool operator==(const PolyfaceMesh&) const = default;
};

struct PolygonMesh {
    std::uint16_t flags = 0;
    std::uint16_t curveType = 0;
    std::uint16_t rows = 0, columns = 0;
    std::uint16_t rowDensity = 0, columnDensity = 0;
    OwnedChain vertices;
    bool operator==(const PolygonMesh&) const = default;
};

struct Vertex2d {
    std::uint8_t flags = 0;
    Point3 position;
    double startWidth = 0, endWidth = 0;
    double bulge = 0;
    double tangent = 0;
    /// From 2010 on.
    std::uint32_t identifier = 0;
    bool operator==(const Vertex2d&) const = default;
};

/// Vertices of 3D polylines, polygon meshes and polyface meshes.
struct Vertex3d {
    std::uint8_t flags = 0;
    Point3 position;
    bool operator==(const Vertex3d&) const = default;
};

/// Vertex numbers from 1; negative for an invisible edge, 0 for none.
struct PolyfaceFace {
    std::array<std::int16_t, 4> vertices{};
    bool operator==(const PolyfaceFace&) const = default;
};

/// BLOCK: the opening frame of a block record.
struct BlockBegin {
    std::wstring name;
    bool operator==(const BlockBegin&) const = default;
};

struct BlockEnd {
    bool operator==(const BlockEnd&) const = default;
};
struct SequenceEnd {
    bool operator==(const SequenceEnd&) const = default;
};

} // namespace dwg
