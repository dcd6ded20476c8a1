#include "samples/Sketch.h"

#include "editor/database/database_state.h"
#include "editor/database/picture.h"
#include "editor/database/wireframe.h"
#include "editor/dwg/object_types.h"
#include "editor/sdk/db.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace samples {

namespace {

constexpr double degree = std::numbers::pi / 180;

/// An entity of a kind that the host's interface has no maker for.
struct NewEntity : AcDbEntity {
    NewEntity(std::uint16_t type, dwg::Body body) : AcDbEntity(Impl::freshEntity(desc(), type, std::move(body))) {}
};

struct NewLinetype : AcDbLinetypeTableRecord {
    explicit NewLinetype(dwg::Linetype body)
        : AcDbLinetypeTableRecord(Impl::fresh(desc(), dwg::object_type::linetype, std::move(body))) {}
};

void check(int status, const char* what) {
    if (status != eOk)
        throw std::runtime_error(std::string(what) + ": status " + std::to_string(status));
}

/// From 2013 on the picture is stored as a PNG, which programs show as it is, while of a bitmap they exchange white and
/// black for their own two colours. The drawing area is dark, and so is such a picture.
void exchangeBlackAndWhite(std::string& bitmap) {
    constexpr std::size_t head = 40, colours = 256;
    for (std::size_t at = head; at + 3 < head + colours * 4 && at + 3 < bitmap.size(); at += 4) {
        const std::string colour = bitmap.substr(at, 3);
        if (colour == "\xFF\xFF\xFF")
            bitmap.replace(at, 3, 3, '\0');
        else if (colour == std::string(3, '\0'))
            bitmap.replace(at, 3, 3, '\xFF');
    }
}

/// Width and height in pixels, from the header of a bitmap.
std::pair<int, int> sizeOf(const std::string& bitmap) {
    const auto number = [&](std::size_t at) {
        int value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value |= static_cast<unsigned char>(bitmap[at + i]) << (8 * i);
        return value;
    };
    return {number(4), number(8)};
}

} // namespace

struct Sketch::State {
    AcDbDatabase database{true};
    std::wstring currentLayer = L"0";

    void add(std::unique_ptr<AcDbEntity> entity);
    void loadLinetype(const std::wstring& name);
    void showWhole(AcDb::AcDbDwgVersion release);
};

void Sketch::State::add(std::unique_ptr<AcDbEntity> entity) {
    AcDbBlockTable* table = nullptr;
    check(database.getBlockTable(table), "block table");
    AcDbSymbolTableRecord* record = nullptr;
    const int found = table->getAt(ACDB_MODEL_SPACE, record, AcDb::kForWrite);
    table->close();
    check(found, "model space");
    AcDbObjectId id;
    AcDbEntity* const added = entity.get();
    check(static_cast<AcDbBlockTableRecord*>(record)->appendAcDbEntity(id, entity.release()), "entity");
    check(added->setLayer(currentLayer.c_str()), "layer");
    added->close();
    record->close();
}

void Sketch::State::loadLinetype(const std::wstring& name) {
    AcDbLinetypeTable* table = nullptr;
    check(database.getLinetypeTable(table, AcDb::kForWrite), "linetype table");
    if (!table->has(name.c_str())) {
        const std::vector<double> lengths = name == L"CENTER"   ? std::vector{12.0, -3.0, 3.0, -3.0}
                                            : name == L"HIDDEN" ? std::vector{3.0, -1.5}
                                                                : std::vector{6.0, -3.0};
        dwg::Linetype body;
        body.head.name = name;
        body.description = name == L"CENTER" ? L"Center ____ _ ____ _" : L"Dashed __ __ __ __";
        for (const double length : lengths) {
            body.dashes.emplace_back().length = length;
            body.patternLength += std::abs(length);
        }
        AcDbObjectId id;
        auto record = std::make_unique<NewLinetype>(std::move(body));
        AcDbSymbolTableRecord* const added = record.get();
        check(table->add(id, record.release()), "linetype");
        added->close();
    }
    table->close();
}

/// Makes the stored view the one that the embedded picture shows, so that positions in the picture can be told from it.
void Sketch::State::showWhole(AcDb::AcDbDwgVersion release) {
    const editor::Wireframe wireframe = editor::wireframeOfModelSpace(database);
    const editor::Extents extents = wireframe.extents();
    std::string picture = editor::pictureOf(wireframe);
    if (extents.empty || picture.size() < 40)
        return;
    const auto [columns, rows] = sizeOf(picture);
    const double spanX = std::max(extents.highest.x - extents.lowest.x, 1e-6);
    const double spanY = std::max(extents.highest.y - extents.lowest.y, 1e-6);
    const double unit =
        std::max(spanX / (columns - 7), spanY / (rows - 7)); // lengths a pixel, with the margin of three
    auto& state = *database.impl();
    for (const auto& object : state.drawing.objects()) {
        auto* const viewport = object->as<dwg::ViewportRecord>();
        if (viewport == nullptr)
            continue;
        viewport->center = {extents.lowest.x + spanX / 2, extents.lowest.y + spanY / 2};
        viewport->width = columns * unit;
        viewport->height = rows * unit;
        object->changed();
    }
    if (release >= AcDb::kDHL_1027)
        exchangeBlackAndWhite(picture);
    database.setThumbnailBitmap(picture);
}

Sketch::Sketch(const std::wstring& comments) : state(std::make_unique<State>()) {
    AcDbDatabaseSummaryInfo* summary = nullptr;
    check(acdbGetSummaryInfo(&state->database, summary), "summary");
    const std::unique_ptr<AcDbDatabaseSummaryInfo> owned(summary);
    check(summary->setComments(comments.c_str()), "comments");
    check(acdbPutSummaryInfo(summary, &state->database), "summary");
}

Sketch::~Sketch() = default;

void Sketch::layer(const std::wstring& name, int colour, const std::wstring& linetype) {
    if (linetype != L"Continuous")
        state->loadLinetype(linetype);
    AcDbLayerTable* layers = nullptr;
    check(state->database.getLayerTable(layers, AcDb::kForWrite), "layer table");
    if (!layers->has(name.c_str())) {
        AcDbLinetypeTable* linetypes = nullptr;
        check(state->database.getLinetypeTable(linetypes), "linetype table");
        AcDbObjectId linetypeId, id;
        check(linetypes->getAt(linetype.c_str(), linetypeId), "linetype");
        linetypes->close();
        auto record = std::make_unique<AcDbLayerTableRecord>();
        check(record->setName(name.c_str()), "layer name");
        check(record->setColorIndex(static_cast<std::uint16_t>(colour)), "layer colour");
        check(record->setLinetypeObjectId(linetypeId), "layer linetype");
        AcDbSymbolTableRecord* const added = record.get();
        check(layers->add(id, record.release()), "layer");
        added->close();
    }
    layers->close();
    state->currentLayer = name;
}

void Sketch::line(double x1, double y1, double x2, double y2) {
    state->add(std::make_unique<AcDbLine>(AcGePoint3d{x1, y1, 0}, AcGePoint3d{x2, y2, 0}));
}

void Sketch::circle(double x, double y, double radius) {
    state->add(std::make_unique<AcDbCircle>(AcGePoint3d{x, y, 0}, AcGeVector3d::kZAxis, radius));
}

void Sketch::arc(double x, double y, double radius, double from, double to) {
    dwg::Arc body;
    body.center = {x, y, 0};
    body.radius = radius;
    body.startAngle = from * degree;
    body.endAngle = to * degree;
    state->add(std::make_unique<NewEntity>(dwg::object_type::arc, body));
}

void Sketch::ellipse(double x, double y, double length, double ratio, double angle) {
    dwg::Ellipse body;
    body.center = {x, y, 0};
    body.majorAxis = {length * std::cos(angle * degree), length * std::sin(angle * degree), 0};
    body.axisRatio = ratio;
    body.endAngle = 2 * std::numbers::pi;
    state->add(std::make_unique<NewEntity>(dwg::object_type::ellipse, body));
}

void Sketch::point(double x, double y) {
    dwg::PointEntity body;
    body.position = {x, y, 0};
    state->add(std::make_unique<NewEntity>(dwg::object_type::point, body));
}

void Sketch::polyline(const std::vector<Corner>& corners, bool closed) {
    dwg::LightweightPolyline body;
    body.flags = closed ? dwg::LightweightPolyline::closed : std::uint16_t{0};
    const bool curved =
        std::any_of(corners.begin(), corners.end(), [](const Corner& corner) { return corner.bulge != 0; });
    for (const Corner& corner : corners) {
        body.points.push_back({corner.x, corner.y});
        if (curved)
            body.bulges.push_back(corner.bulge);
    }
    state->add(std::make_unique<NewEntity>(dwg::object_type::lightweightPolyline, std::move(body)));
}

void Sketch::rectangle(double x, double y, double width, double height) {
    polyline({{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}}, true);
}

void Sketch::cushion(double x, double y, double width, double height, double radius) {
    const double r = std::min({radius, width / 2, height / 2});
    polyline({{x + r, y},
              {x + width - r, y, quarterTurn},
              {x + width, y + r},
              {x + width, y + height - r, quarterTurn},
              {x + width - r, y + height},
              {x + r, y + height, quarterTurn},
              {x, y + height - r},
              {x, y + r, quarterTurn}},
             true);
}

void Sketch::polygon(double x, double y, double radius, int corners, double angle) {
    std::vector<Corner> ring;
    for (int corner = 0; corner < corners; ++corner) {
        const double at = (angle + 360.0 * corner / corners) * degree;
        ring.push_back({x + radius * std::cos(at), y + radius * std::sin(at)});
    }
    polyline(ring, true);
}

void Sketch::text(double x, double y, double height, const std::wstring& words) {
    dwg::Text body;
    body.text.insertion = {x, y};
    body.text.height = height;
    body.text.value = words;
    body.text.style.value = state->database.impl()->findRecord(dwg::object_type::styleControl, L"Standard");
    state->add(std::make_unique<NewEntity>(dwg::object_type::text, std::move(body)));
}

void Sketch::solid(double x1, double y1, double x2, double y2, double x3, double y3) {
    dwg::Solid body;
    body.corners = {dwg::Point2{x1, y1}, dwg::Point2{x2, y2}, dwg::Point2{x3, y3}, dwg::Point2{x3, y3}};
    state->add(std::make_unique<NewEntity>(dwg::object_type::solid, body));
}

void Sketch::base(double x, double y) {
    check(state->database.setInsbase({x, y, 0}), "base point");
}

bool Sketch::save(const std::wstring& file, AcDb::AcDbDwgVersion release) {
    state->showWhole(release);
    return state->database.saveAs(file.c_str(), false, release) == eOk;
}

} // namespace samples
