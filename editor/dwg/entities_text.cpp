#include "editor/dwg/objects_stream.h"

#include <bit>

/// Texts, attributes and their definitions.
namespace dwg {

namespace {

// What the first byte of a text says is not stored, having its usual value.
constexpr std::uint8_t noElevation = 0x01;
constexpr std::uint8_t noAlignment = 0x02;
constexpr std::uint8_t noOblique = 0x04;
constexpr std::uint8_t noRotation = 0x08;
constexpr std::uint8_t noWidthFactor = 0x10;
constexpr std::uint8_t noGeneration = 0x20;
constexpr std::uint8_t noHorizontal = 0x40;
constexpr std::uint8_t noVertical = 0x80;

bool isZero(double value) {
    return std::bit_cast<std::uint64_t>(value) == 0;
}

std::uint8_t omittedFields(const TextFields& text) {
    unsigned omitted = 0;
    const auto note = [&omitted](bool isUsual, std::uint8_t bit) { omitted |= isUsual ? bit : 0U; };
    note(isZero(text.elevation), noElevation);
    note(isZero(text.alignment.x) && isZero(text.alignment.y), noAlignment);
    note(isZero(text.oblique), noOblique);
    note(isZero(text.rotation), noRotation);
    note(text.widthFactor == 1.0, noWidthFactor);
    note(text.generation == 0, noGeneration);
    note(text.horizontal == 0, noHorizontal);
    note(text.vertical == 0, noVertical);
    return static_cast<std::uint8_t>(omitted);
}

/// R13 and R14 store all of it.
template <class Stream> void transferEarlyText(Stream& s, TextFields& text) {
    s.bd(text.elevation);
    s.rd2(text.insertion);
    s.rd2(text.alignment);
    s.bd3(text.extrusion);
    s.bd(text.thickness);
    s.bd(text.oblique);
    s.bd(text.rotation);
    s.bd(text.height);
    s.bd(text.widthFactor);
    s.t(text.value);
    s.bs(text.generation);
    s.bs(text.horizontal);
    s.bs(text.vertical);
}

template <class Stream> void transferLateText(Stream& s, TextFields& text) {
    std::uint8_t omitted = omittedFields(text);
    s.rc(omitted);
    const auto stored = [&omitted](std::uint8_t bit) { return (omitted & bit) == 0; };
    if (stored(noElevation))
        s.rd(text.elevation);
    s.rd2(text.insertion);
    if (stored(noAlignment))
        s.dd2(text.alignment, text.insertion);
    s.be(text.extrusion);
    s.bt(text.thickness);
    if (stored(noOblique))
        s.rd(text.oblique);
    if (stored(noRotation))
        s.rd(text.rotation);
    s.rd(text.height);
    if (stored(noWidthFactor))
        s.rd(text.widthFactor);
    s.t(text.value);
    if (stored(noGeneration))
        s.bs(text.generation);
    if (stored(noHorizontal))
        s.bs(text.horizontal);
    if (stored(noVertical))
        s.bs(text.vertical);
}

template <class Stream> void transferText(Stream& s, TextFields& text) {
    if (s.since(Release::r2000))
        transferLateText(s, text);
    else
        transferEarlyText(s, text);
    s.h(text.style);
}

template <class Stream> void transferColumns(Stream& s, MultilineText::Columns& columns) {
    s.bs(columns.version);
    s.b(columns.defaultFlag);
    s.h(columns.application);
    s.bl(columns.attachment);
    s.bd3(columns.xDirection);
    s.bd3(columns.insertion);
    s.bd(columns.rectangleWidth);
    s.bd(columns.rectangleHeight);
    s.bd(columns.extentsWidth);
    s.bd(columns.extentsHeight);
    s.bs(columns.type);
    if (columns.type == 0)
        return;
    s.bl(columns.count);
    s.bd(columns.width);
    s.bd(columns.gutter);
    s.b(columns.automaticHeight);
    s.b(columns.reversed);
    if (columns.automaticHeight || columns.type != MultilineText::Columns::dynamic)
        return;
    if constexpr (Stream::reading)
        s.resize(columns.heights, columns.count, 2);
    for (double& height : columns.heights)
        s.bd(height);
}

template <class Stream> void transferBackground(Stream& s, MultilineText& body) {
    s.bl(body.backgroundFlags);
    std::uint32_t filled = MultilineText::backgroundColor;
    if (s.since(Release::r2018))
        filled |= MultilineText::backgroundFrame;
    if ((body.backgroundFlags & filled) == 0)
        return;
    s.bd(body.backgroundScale);
    s.cmc(body.background);
    s.bl(body.backgroundTransparency);
}

} // namespace

template <class Stream> void transfer(Stream& s, Text& body, std::uint16_t) {
    transferText(s, body.text);
}

template <class Stream> void transfer(Stream& s, Attribute& body, std::uint16_t) {
    transferText(s, body.text);
    if (s.since(Release::r2010))
        s.rc(body.version);
    if (s.since(Release::r2018))
        s.rc(body.kind);
    s.t(body.tag);
    s.bs(body.fieldLength);
    s.rc(body.flags);
    if (s.since(Release::r2007))
        s.b(body.lockedPosition);
}

template <class Stream> void transfer(Stream& s, AttributeDefinition& body, std::uint16_t type) {
    transfer(s, body.attribute, type);
    if (s.since(Release::r2010))
        s.rc(body.version);
    s.t(body.prompt);
}

template <class Stream> void transfer(Stream& s, MultilineText& body, std::uint16_t) {
    s.bd3(body.insertion);
    s.bd3(body.extrusion);
    s.bd3(body.xDirection);
    s.bd(body.rectangleWidth);
    if (s.since(Release::r2007))
        s.bd(body.rectangleHeight);
    s.bd(body.height);
    s.bs(body.attachment);
    s.bs(body.direction);
    s.bd(body.extentsHeight);
    s.bd(body.extentsWidth);
    s.t(body.value);
    if (s.since(Release::r2000)) {
        s.bs(body.lineSpacingStyle);
        s.bd(body.lineSpacingFactor);
        s.b(body.unknown);
    }
    if (s.since(Release::r2004))
        transferBackground(s, body);
    s.h(body.style);
    if (!s.since(Release::r2018))
        return;
    bool notAnnotative = body.columns.has_value();
    s.b(notAnnotative);
    if (!notAnnotative)
        return;
    if constexpr (Stream::reading)
        body.columns.emplace();
    transferColumns(s, *body.columns);
}

DWG_INSTANTIATE_TRANSFER(Text);
DWG_INSTANTIATE_TRANSFER(Attribute);
DWG_INSTANTIATE_TRANSFER(AttributeDefinition);
DWG_INSTANTIATE_TRANSFER(MultilineText);

} // namespace dwg
