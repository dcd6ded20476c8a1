#include "editor/dwg/objects_stream.h"

/// Colours of all forms. Up to 2003 a colour is its index. From 2004 on the colour of a record is an index that nobody
/// uses, four bytes whose highest tells what the others are, and names; an entity's is an index with flags above it.
namespace dwg {

namespace {

// The highest of the four bytes.
constexpr std::uint32_t byLayer = 0xC0, byBlock = 0xC1, trueColor = 0xC2, byIndex = 0xC3, noColor = 0xC8;
constexpr std::uint32_t rgbBits = 0xFFFFFF;
constexpr std::int16_t byLayerIndex = 256, noColorIndex = 257;

// What names follow.
constexpr std::uint8_t hasName = 0x01, hasBook = 0x02;

// Above the index of an entity's colour.
constexpr std::uint16_t isTrueColor = 0x8000, isOfBook = 0x4000, hasTransparency = 0x2000, indexBits = 0x1FF;

} // namespace

Color unpackedColor(std::uint32_t packed, std::int16_t index) {
    Color color{index, packed & rgbBits, false};
    switch (packed >> 24) {
    case byLayer:
        color.index = byLayerIndex;
        break;
    case byBlock:
        color.index = 0;
        break;
    case trueColor:
        color.hasRgb = true;
        break;
    case byIndex:
        color.index = static_cast<std::int16_t>(packed & indexBits);
        break;
    case noColor:
        color.index = noColorIndex;
        break;
    default:
        break;
    }
    if (!color.hasRgb)
        color.rgb = 0;
    return color;
}

std::uint32_t packedColor(const Color& color) {
    if (color.hasRgb)
        return trueColor << 24 | (color.rgb & rgbBits);
    // A kind that isn't known may have come with any index.
    const std::uint32_t index = static_cast<std::uint32_t>(color.index < 0 ? -color.index : color.index) & indexBits;
    switch (index) {
    case byLayerIndex:
        return byLayer << 24;
    case 0:
        return byBlock << 24;
    case noColorIndex:
        return noColor << 24;
    default:
        return byIndex << 24 | index;
    }
}

void ObjectReader::cmc(NamedColor& value) {
    const auto index = static_cast<std::int16_t>(data.bs());
    if (!since(Release::r2004)) {
        value = {{index}, {}, {}};
        return;
    }
    static_cast<Color&>(value) = unpackedColor(data.bl(), index);
    const std::uint8_t names = data.rc();
    if ((names & hasName) != 0)
        t(value.name);
    if ((names & hasBook) != 0)
        t(value.book);
}

void ObjectWriter::cmc(const NamedColor& value) {
    if (!since(Release::r2004)) {
        data.bs(static_cast<std::uint16_t>(value.index));
        return;
    }
    data.bs(0);
    data.bl(packedColor(value));
    data.rc(static_cast<std::uint8_t>((value.name.empty() ? 0 : hasName) | (value.book.empty() ? 0 : hasBook)));
    if (!value.name.empty())
        t(value.name);
    if (!value.book.empty())
        t(value.book);
}

void ObjectReader::entityColor(EntityData& entity) {
    const std::uint16_t head = data.bs();
    if (!since(Release::r2004)) {
        entity.color = {static_cast<std::int16_t>(head)};
        return;
    }
    entity.color = {static_cast<std::int16_t>(head & indexBits)};
    if ((head & isTrueColor) != 0)
        entity.color = unpackedColor(data.bl(), entity.color.index);
    if ((head & hasTransparency) != 0)
        entity.extras.make().transparency = data.bl();
    if ((head & isOfBook) != 0)
        entity.extras.make().hasBookColor = true;
}

void ObjectWriter::entityColor(const EntityData& entity) {
    if (!since(Release::r2004)) {
        data.bs(static_cast<std::uint16_t>(entity.color.index));
        return;
    }
    const bool transparent = entity.extras && entity.extras->transparency;
    const bool ofBook = entity.extras && entity.extras->hasBookColor && entity.color.hasRgb;
    const auto index = static_cast<std::uint16_t>(entity.color.index) & indexBits;
    data.bs(static_cast<std::uint16_t>(index | (entity.color.hasRgb ? isTrueColor : 0) |
                                       (transparent ? hasTransparency : 0) | (ofBook ? isOfBook : 0)));
    if (entity.color.hasRgb)
        data.bl(packedColor(entity.color));
    if (transparent)
        data.bl(*entity.extras->transparency);
}

} // namespace dwg
