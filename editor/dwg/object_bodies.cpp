#include "editor/dwg/objects_stream.h"

namespace dwg {

namespace {

Body emptyBodyOfClass(const std::wstring& name) {
    if (name == L"XRECORD")
        return DataRecord{};
    if (name == L"LAYOUT")
        return Layout{};
    if (name == L"ACDBPLACEHOLDER")
        return Placeholder{};
    if (name == L"ACDBDICTIONARYWDFLT") {
        Dictionary dictionary;
        dictionary.hasDefault = true;
        return dictionary;
    }
    return Carried{};
}

} // namespace

Body emptyBody(std::uint16_t type, const ObjectClass* objectClass) {
    using namespace object_type;
    switch (type) {
    case text:
        return Text{};
    case attribute:
        return Attribute{};
    case attributeDefinition:
        return AttributeDefinition{};
    case block:
        return BlockBegin{};
    case endBlock:
        return BlockEnd{};
    case sequenceEnd:
        return SequenceEnd{};
    case insert:
    case multipleInsert:
        return Insert{};
    case vertex2d:
        return Vertex2d{};
    case vertex3d:
    case meshVertex:
    case polyfaceVertex:
        return Vertex3d{};
    case polyfaceFace:
        return PolyfaceFace{};
    case polyline2d:
        return Polyline2d{};
    case polyline3d:
        return Polyline3d{};
    case arc:
        return Arc{};
    case circle:
        return Circle{};
    case line:
        return Line{};
    case point:
        return PointEntity{};
    case dimensionOrdinate:
    case dimensionLinear:
    case dimensionAligned:
    case dimensionThreePoints:
    case dimensionTwoLines:
    case dimensionRadius:
    case dimensionDiameter:
        return Dimension{};
    case face3d:
        return Face3d{};
    case polyface:
        return PolyfaceMesh{};
    case polygonMesh:
        return PolygonMesh{};
    case solid:
    case trace:
        return Solid{};
    case ellipse:
        return Ellipse{};
    case spline:
        return Spline{};
    case leader:
        return Leader{};
    case hatch:
        return Hatch{};
    case ray:
    case constructionLine:
        return Ray{};
    case dictionary:
        return Dictionary{};
    case multilineText:
        return MultilineText{};
    case blockControl:
        return BlockControl{};
    case blockHeader:
        return BlockHeader{};
    case layerControl:
    case styleControl:
    case linetypeControl:
    case viewControl:
    case ucsControl:
    case viewportControl:
    case applicationControl:
    case viewportEntityControl:
        return TableControl{};
    case layer:
        return Layer{};
    case style:
        return TextStyle{};
    case linetype:
        return Linetype{};
    case viewportRecord:
        return ViewportRecord{};
    case application:
        return ApplicationRecord{};
    case view:
    case ucs:
    case dimensionStyle:
    case viewportEntityHeader:
        return OtherRecord{};
    case lightweightPolyline:
        return LightweightPolyline{};
    case record:
        return DataRecord{};
    case placeholder:
        return Placeholder{};
    case layout:
        return Layout{};
    default:
        return objectClass == nullptr ? Body{Carried{}} : emptyBodyOfClass(objectClass->dxfName);
    }
}

} // namespace dwg
