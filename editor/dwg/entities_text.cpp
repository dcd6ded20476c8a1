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

template <class Stream> void transferText(Stream& s, TextFields& text) {
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
    s.h(text.style);
}

} // namespace

template <class Stream> void transfer(Stream& s, Text& body, std::uint16_t) {
    transferText(s, body.text);
}

template <class Stream> void transfer(Stream& s, Attribute& body, std::uint16_t) {
    transferText(s, body.text);
    s.t(body.tag);
    s.bs(body.fieldLength);
    s.rc(body.flags);
}

template <class Stream> void transfer(Stream& s, AttributeDefinition& body, std::uint16_t type) {
    transfer(s, body.attribute, type);
    s.t(body.prompt);
}

template <class Stream> void transfer(Stream& s, MultilineText& body, std::uint16_t) {
    s.bd3(body.insertion);
    s.bd3(body.extrusion);
    s.bd3(body.xDirection);
    s.bd(body.rectangleWidth);
    s.bd(body.height);
    s.bs(body.attachment);
    s.bs(body.direction);
    s.bd(body.extentsHeight);
    s.bd(body.extentsWidth);
    s.t(body.value);
    s.bs(body.lineSpacingStyle);
    s.bd(body.lineSpacingFactor);
    s.b(body.unknown);
    s.h(body.style);
}

DWG_INSTANTIATE_TRANSFER(Text);
DWG_INSTANTIATE_TRANSFER(Attribute);
DWG_INSTANTIATE_TRANSFER(AttributeDefinition);
DWG_INSTANTIATE_TRANSFER(MultilineText);

} // namespace dwg
