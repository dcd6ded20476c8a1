#include "editor/database/describing.h"

#include "editor/database/database_state.h"
#include "editor/database/transform.h"

#include <array>
#include <cstdio>

namespace editor {

namespace {

std::wstring number(double value) {
    std::array<char, 400> text{};
    const int size = std::snprintf(text.data(), text.size(), "%.4f", value == 0 ? 0.0 : value);
    return {text.data(), text.data() + std::max(size, 0)};
}

std::wstring angle(double radians) {
    constexpr double degreesOfRadian = 180 / 3.14159265358979323846;
    return number(radians * degreesOfRadian);
}

std::wstring place(const AcGePoint3d& point) {
    return L"X=" + number(point.x) + L"  Y=" + number(point.y) + L"  Z=" + number(point.z);
}

std::wstring place(const dwg::Point3& point) {
    return place(toPoint(point));
}

std::wstring place(const dwg::Point3& point, const dwg::Point3& extrusion) {
    return place(planeToWorld(extrusion).point(toPoint(point)));
}

using Lines = std::vector<std::wstring>;

void describe(Lines& lines, const dwg::Line& line, const AcDbDatabase::Impl&) {
    lines.push_back(L"from point, " + place(line.start));
    lines.push_back(L"to point, " + place(line.end));
    lines.push_back(L"Length = " + number((toPoint(line.end) - toPoint(line.start)).length()));
}

void describe(Lines& lines, const dwg::Circle& circle, const AcDbDatabase::Impl&) {
    lines.push_back(L"center point, " + place(circle.center, circle.extrusion));
    lines.push_back(L"radius " + number(circle.radius));
}

void describe(Lines& lines, const dwg::Arc& arc, const AcDbDatabase::Impl&) {
    lines.push_back(L"center point, " + place(arc.center, arc.extrusion));
    lines.push_back(L"radius " + number(arc.radius));
    lines.push_back(L"start angle " + angle(arc.startAngle));
    lines.push_back(L"end angle " + angle(arc.endAngle));
}

void describe(Lines& lines, const dwg::Ellipse& ellipse, const AcDbDatabase::Impl&) {
    lines.push_back(L"center point, " + place(ellipse.center));
    lines.push_back(L"major axis, " + place(ellipse.majorAxis));
    lines.push_back(L"radius ratio " + number(ellipse.axisRatio));
}

void describe(Lines& lines, const dwg::PointEntity& point, const AcDbDatabase::Impl&) {
    lines.push_back(L"at point, " + place(point.position));
}

void describe(Lines& lines, const dwg::LightweightPolyline& polyline, const AcDbDatabase::Impl&) {
    lines.push_back((polyline.flags & dwg::LightweightPolyline::closed) != 0 ? L"Closed" : L"Open");
    for (const dwg::Point2& point : polyline.points)
        lines.push_back(L"at point, " + place(dwg::Point3{point.x, point.y, polyline.elevation}, polyline.extrusion));
}

void describe(Lines& lines, const dwg::TextFields& text, const std::wstring& value) {
    lines.push_back(L"insertion point, " +
                    place(dwg::Point3{text.insertion.x, text.insertion.y, text.elevation}, text.extrusion));
    lines.push_back(L"height " + number(text.height));
    lines.push_back(L"rotation angle " + angle(text.rotation));
    lines.push_back(L"text " + value);
}

void describe(Lines& lines, const dwg::Text& text, const AcDbDatabase::Impl&) {
    describe(lines, text.text, text.text.value);
}

void describe(Lines& lines, const dwg::AttributeDefinition& definition, const AcDbDatabase::Impl&) {
    describe(lines, definition.attribute.text, definition.attribute.text.value);
    lines.push_back(L"tag " + definition.attribute.tag);
    lines.push_back(L"prompt " + definition.prompt);
}

void describe(Lines& lines, const dwg::MultilineText& text, const AcDbDatabase::Impl&) {
    lines.push_back(L"insertion point, " + place(text.insertion));
    lines.push_back(L"height " + number(text.height));
    lines.push_back(L"contents " + text.value);
}

void describe(Lines& lines, const dwg::Insert& insert, const AcDbDatabase::Impl& database) {
    const auto* const block = database.drawing.body<dwg::BlockHeader>(insert.block);
    if (block != nullptr)
        lines.push_back((block->isExternalReference ? L"External reference \"" : L"Block Name: \"") + block->head.name +
                        L"\"");
    lines.push_back(L"at point, " + place(insert.position, insert.extrusion));
    lines.push_back(L"X scale factor: " + number(insert.scale.x));
    lines.push_back(L"Y scale factor: " + number(insert.scale.y));
    lines.push_back(L"Z scale factor: " + number(insert.scale.z));
    lines.push_back(L"rotation angle: " + angle(insert.rotation));
    for (const dwg::Handle handle : insert.attributes.parts) {
        const auto* const attribute = database.drawing.body<dwg::Attribute>({0, handle});
        if (attribute != nullptr)
            lines.push_back(L"attribute " + attribute->tag + L": " + attribute->text.value);
    }
}

std::wstring kindOf(const dwg::Drawing& drawing, const dwg::Object& object) {
    const std::string name = dwg::typeName(drawing, object);
    if (object.as<dwg::Insert>() != nullptr)
        return L"BLOCK REFERENCE";
    return {name.begin(), name.end()};
}

} // namespace

std::wstring handleText(std::uint64_t handle) {
    std::wstring digits;
    do {
        digits.insert(digits.begin(), L"0123456789ABCDEF"[handle & 15]);
        handle >>= 4;
    } while (handle != 0);
    return digits;
}

std::vector<std::wstring> describeEntity(AcDbObjectId entity) {
    Lines lines;
    if (entity.database == nullptr)
        return lines;
    const AcDbDatabase::Impl& database = *entity.database->impl();
    const dwg::Object* const object = database.live(entity.handle);
    if (object == nullptr || !object->isEntity())
        return lines;
    const auto* const layer = database.drawing.body<dwg::Layer>(object->entity->layer);
    lines.push_back(kindOf(database.drawing, *object) + L"  Layer: \"" + (layer != nullptr ? layer->head.name : L"") +
                    L"\"");
    const dwg::Handle owner = object->owner.value;
    lines.push_back(owner == database.modelSpace()   ? L"Space: Model space"
                    : owner == database.paperSpace() ? L"Space: Paper space"
                                                     : L"Space: in a block");
    lines.push_back(L"Handle = " + handleText(object->handle));
    object->body.visit([&](const auto& body) {
        if constexpr (requires { describe(lines, body, database); })
            describe(lines, body, database);
    });
    return lines;
}

} // namespace editor
