#include "editor/database/wireframe.h"

#include "editor/database/colours.h"
#include "editor/database/wireframe_builder.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

namespace editor {

double TextItem::angle() const {
    return std::atan2(along.y, along.x);
}

void Extents::add(const AcGePoint3d& point) {
    if (empty) {
        lowest = highest = point;
        empty = false;
        return;
    }
    lowest = {std::min(lowest.x, point.x), std::min(lowest.y, point.y), std::min(lowest.z, point.z)};
    highest = {std::max(highest.x, point.x), std::max(highest.y, point.y), std::max(highest.z, point.z)};
}

Extents Wireframe::extents() const {
    Extents box;
    for (const Stroke& stroke : strokes) {
        // A line without an end would leave no room for anything else.
        if (stroke.beyondEnd)
            box.add(stroke.points.front());
        for (const AcGePoint3d& point : stroke.points)
            if (!stroke.beyondEnd)
                box.add(point);
    }
    for (const TextItem& text : texts) {
        const AcGePoint3d end = text.position + text.along * static_cast<double>(text.content.size());
        for (const AcGePoint3d& corner : {text.position, end, text.position + text.up, end + text.up})
            box.add(corner);
    }
    return box;
}

Wireframe wireframeOf(AcDbObjectId blockRecord, const WireframeLimits& limits) {
    if (blockRecord.database == nullptr)
        return {};
    return WireframeBuilder(*blockRecord.database->impl(), limits).draw(blockRecord.handle);
}

Wireframe wireframeOfModelSpace(const AcDbDatabase& database, const WireframeLimits& limits) {
    return WireframeBuilder(*database.impl(), limits).draw(database.impl()->modelSpace());
}

namespace {

constexpr std::size_t mostInserts = 200'000;

/// The dashes of a linetype, neighbours of one kind joined, beginning with a drawn one.
DashPattern dashPattern(const dwg::Linetype& linetype, double scale) {
    DashPattern pattern;
    double lead = 0; // left out ahead of the first dash, which closes the pattern
    for (const auto& dash : linetype.dashes) {
        if (!std::isfinite(dash.length))
            return {};
        const double length = std::abs(dash.length) * scale;
        const bool isDrawn = dash.length >= 0;
        const bool drawnIsNext = pattern.size() % 2 == 0;
        if (pattern.empty() && !isDrawn)
            lead += length;
        else if (isDrawn == drawnIsNext)
            pattern.push_back(length);
        else
            pattern.back() += length;
    }
    if (pattern.size() % 2 != 0)
        pattern.push_back(lead);
    else if (!pattern.empty())
        pattern.back() += lead;
    const bool hasGap =
        std::ranges::any_of(pattern, [&](const double& part) { return (&part - pattern.data()) % 2 == 1 && part > 0; });
    return hasGap ? pattern : DashPattern();
}

bool isDimension(const dwg::Object& object) {
    return object.type >= dwg::object_type::dimensionOrdinate && object.type <= dwg::object_type::dimensionDiameter;
}

} // namespace

Wireframe WireframeBuilder::draw(dwg::Handle blockRecord) {
    const auto* const block = database.drawing.body<dwg::BlockHeader>({0, blockRecord});
    if (block != nullptr && !database.isErased(blockRecord))
        drawBlock(*block, {});
    return std::move(result);
}

void WireframeBuilder::drawBlock(const dwg::BlockHeader& block, const Surroundings& around) {
    for (const dwg::Handle handle : block.entities) {
        if (result.cut)
            return;
        const dwg::Object* const object = database.live(handle);
        if (object == nullptr || !object->isEntity())
            continue;
        if (around.depth == 0)
            topEntity = database.id(handle);
        drawEntity(*object, around);
    }
}

dwg::Handle WireframeBuilder::layerOf(const dwg::Object& object, const Surroundings& around) const {
    const dwg::Handle own = object.entity->layer.value;
    if (around.layer == 0)
        return own;
    const auto* const layer = database.drawing.body<dwg::Layer>({0, own});
    return layer == nullptr || layer->head.name == L"0" ? around.layer : own;
}

namespace {

std::uint16_t indexOf(const dwg::Color& stored) {
    if (!stored.hasRgb)
        return static_cast<std::uint16_t>(std::abs(stored.index));
    return nearestIndex({static_cast<std::uint8_t>(stored.rgb >> 16), static_cast<std::uint8_t>(stored.rgb >> 8),
                         static_cast<std::uint8_t>(stored.rgb)});
}

} // namespace

std::uint16_t WireframeBuilder::colourOfLayer(dwg::Handle layer) const {
    const auto* const record = database.drawing.body<dwg::Layer>({0, layer});
    const std::uint16_t index = record == nullptr ? colourForeground : indexOf(record->color);
    return index == 0 || index >= colourByLayer ? colourForeground : index;
}

std::uint16_t WireframeBuilder::colourOf(const dwg::Object& object, dwg::Handle layer,
                                         const Surroundings& around) const {
    const std::uint16_t index = indexOf(object.entity->color);
    return index == colourByBlock ? around.colour : index >= colourByLayer ? colourOfLayer(layer) : index;
}

dwg::Handle WireframeBuilder::linetypeOf(const dwg::Object& object, dwg::Handle layer,
                                         const Surroundings& around) const {
    switch (object.entity->linetypeFrom) {
    case dwg::ByWhat::layer: {
        const auto* const record = database.drawing.body<dwg::Layer>({0, layer});
        return record == nullptr ? 0 : record->linetype.value;
    }
    case dwg::ByWhat::block:
        return around.linetype;
    case dwg::ByWhat::handle:
        return object.entity->linetype.value;
    default:
        return 0;
    }
}

std::uint32_t WireframeBuilder::patternOf(dwg::Handle linetype, double scale) {
    const auto* const record = database.drawing.body<dwg::Linetype>({0, linetype});
    if (record == nullptr || record->dashes.empty() || !(scale > 0) || !std::isfinite(scale))
        return 0;
    const auto [place, isNew] = patternIndex.try_emplace({linetype, scale}, 0);
    if (!isNew)
        return place->second;
    const DashPattern made = dashPattern(*record, scale);
    if (made.empty())
        return 0;
    result.patterns.push_back(made);
    return place->second = static_cast<std::uint32_t>(result.patterns.size() - 1);
}

void WireframeBuilder::drawEntity(const dwg::Object& object, const Surroundings& around) {
    if ((object.entity->invisibility & 1) != 0)
        return;
    const dwg::Handle layer = layerOf(object, around);
    const auto* const record = database.drawing.body<dwg::Layer>({0, layer});
    const bool isFrozen = record != nullptr && (record->flags & dwg::Layer::frozen) != 0;
    const bool isOff = record != nullptr && ((record->flags & dwg::Layer::off) != 0 || record->color.index < 0);
    if (isFrozen)
        return;
    // An insert on a layer that is off hides only what takes its layer from it.
    if (const auto* const insert = object.as<dwg::Insert>())
        return drawInsert(object, *insert, around);
    if (isOff)
        return;
    if (isDimension(object))
        return drawDimension(object, around);
    colour = colourOf(object, layer, around);
    ownColours = {colourOfLayer(layer), around.colour};
    pattern = patternOf(linetypeOf(object, layer, around), database.header.LTSCALE * object.entity->linetypeScale);
    const Transform& to = around.transform;
    if (const auto* const ray = object.as<dwg::Ray>())
        return drawEndless(*ray, to, object.type == dwg::object_type::constructionLine);
    const bool isNested = around.depth > 0;
    constexpr std::uint8_t invisibleAttribute = 1, constantAttribute = 2;
    object.body.visit([&](const auto& body) {
        using Body = std::decay_t<decltype(body)>;
        if constexpr (std::is_same_v<Body, dwg::Text>) {
            draw(body.text, body.text.value, to);
        } else if constexpr (std::is_same_v<Body, dwg::Attribute>) {
            if ((body.flags & invisibleAttribute) == 0)
                draw(body.text, body.text.value, to);
        } else if constexpr (std::is_same_v<Body, dwg::AttributeDefinition>) {
            // In an insert the attributes stand for the definitions, but for constant ones.
            if (!isNested)
                draw(body.attribute.text, body.attribute.tag, to);
            else if ((body.attribute.flags & constantAttribute) != 0)
                draw(body.attribute.text, body.attribute.text.value, to);
        } else if constexpr (requires { this->draw(body, to); }) {
            draw(body, to);
        }
    });
}

void WireframeBuilder::drawInsert(const dwg::Object& object, const dwg::Insert& insert, const Surroundings& around) {
    const auto* const block = database.drawing.body<dwg::BlockHeader>(insert.block);
    if (block == nullptr || database.isErased(insert.block.value) || around.depth >= limits.depth)
        return;
    const dwg::Handle layer = layerOf(object, around);
    Surroundings inside = around;
    inside.depth = around.depth + 1;
    inside.layer = layer;
    inside.colour = colourOf(object, layer, around);
    inside.linetype = linetypeOf(object, layer, around);
    const Transform plane = around.transform.after(planeToWorld(insert.extrusion));
    const AcGePoint3d base = toPoint(block->basePoint);
    for (int row = 0; row < insert.rows; ++row) {
        for (int column = 0; column < insert.columns; ++column) {
            if (++insertCount > mostInserts)
                result.cut = true;
            if (result.cut)
                return;
            inside.transform = plane.moved(toPoint(insert.position))
                                   .turned(insert.rotation)
                                   .moved({column * insert.columnSpacing, row * insert.rowSpacing, 0})
                                   .scaled(toVector(insert.scale))
                                   .moved({-base.x, -base.y, -base.z});
            if (const auto drawing = database.references.find(insert.block.value); block->isExternalReference) {
                if (drawing != database.references.end())
                    drawReference(*drawing->second, inside);
                continue;
            }
            drawBlock(*block, inside);
        }
    }
    for (const dwg::Handle part : insert.attributes.parts) {
        const dwg::Object* const attribute = database.live(part);
        if (attribute != nullptr && attribute->as<dwg::Attribute>() != nullptr)
            drawEntity(*attribute, around);
    }
}

// The block that shows a dimension lies in world coordinates.
void WireframeBuilder::drawDimension(const dwg::Object& object, const Surroundings& around) {
    const auto* const dimension = object.as<dwg::Dimension>();
    if (dimension == nullptr || around.depth >= limits.depth)
        return;
    const auto* const block = database.drawing.body<dwg::BlockHeader>(dimension->block);
    if (block == nullptr || !block->anonymous)
        return;
    Surroundings inside = around;
    inside.depth = around.depth + 1;
    inside.layer = layerOf(object, around);
    inside.colour = colourOf(object, inside.layer, around);
    inside.linetype = linetypeOf(object, inside.layer, around);
    drawBlock(*block, inside);
}

void WireframeBuilder::drawReference(const AcDbDatabase& drawing, const Surroundings& around) {
    const AcDbDatabase::Impl& other = *drawing.impl();
    const auto* const space = other.drawing.body<dwg::BlockHeader>({0, other.modelSpace()});
    if (space == nullptr)
        return;
    WireframeBuilder builder(other, limits);
    builder.topEntity = topEntity;
    builder.pointCount = pointCount;
    builder.insertCount = insertCount;
    builder.hatchWork = hatchWork;
    builder.foreign = true;
    Surroundings inside = around;
    inside.layer = 0; // layers are the other drawing's own
    builder.drawBlock(*space, inside);
    pointCount = builder.pointCount;
    insertCount = builder.insertCount;
    hatchWork = builder.hatchWork;
    result.cut = result.cut || builder.result.cut;
    const auto offset = static_cast<std::uint32_t>(result.patterns.size());
    for (Stroke& stroke : builder.result.strokes)
        stroke.pattern += stroke.pattern == 0 ? 0 : offset - 1;
    result.patterns.insert(result.patterns.end(), builder.result.patterns.begin() + 1, builder.result.patterns.end());
    std::ranges::move(builder.result.strokes, std::back_inserter(result.strokes));
    std::ranges::move(builder.result.texts, std::back_inserter(result.texts));
}

void WireframeBuilder::stroke(std::vector<AcGePoint3d> points, bool filled) {
    const bool isFinite =
        std::ranges::all_of(points, [](const AcGePoint3d& p) { return std::isfinite(p.x + p.y + p.z); });
    if (points.empty() || !isFinite)
        return;
    pointCount += points.size();
    if (pointCount > limits.points) {
        result.cut = true;
        return;
    }
    result.strokes.push_back({std::move(points), colour, filled, topEntity, foreign, pattern});
}

} // namespace editor
