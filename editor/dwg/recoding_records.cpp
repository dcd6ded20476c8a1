#include "editor/dwg/recoding_fields.h"

/// Styles, groups and other objects that aren't entities.
namespace dwg::recoding {

namespace {

template <class Stream, class Numbers> void doubles(Stream& s, Numbers& numbers) {
    for (double& number : numbers)
        s.bd(number);
}

template <class Stream, class Flags> void flags(Stream& s, Flags& values) {
    for (bool& value : values)
        s.b(value);
}

/// A number that R13 and R14 keep in a byte.
template <class Stream> void byte(Stream& s, std::uint16_t& value) {
    auto small = static_cast<std::uint8_t>(value);
    s.rc(small);
    value = small;
}

template <class Stream> void earlyDimensionStyle(Stream& s, DimensionStyleFields& f) {
    flags(s, f.flags);
    s.b(f.alternate);
    flags(s, f.inside);
    byte(s, f.alternateDecimals);
    byte(s, f.zeros);
    s.b(f.firstHalfOff);
    s.b(f.secondHalfOff);
    byte(s, f.toleranceAndZeros[0]);
    byte(s, f.justification);
    byte(s, f.fit);
    s.b(f.userText);
    for (std::size_t i = 1; i < f.toleranceAndZeros.size(); ++i)
        byte(s, f.toleranceAndZeros[i]);
    byte(s, f.textAbove);
    s.bs(f.lengthUnit);
    s.bs(f.angleUnit);
    for (std::uint16_t& value : f.decimals)
        s.bs(value);
    doubles(s, f.sizes);
    doubles(s, f.text);
    for (std::wstring* text : {&f.suffix, &f.alternateSuffix, &f.blockName, &f.firstBlockName, &f.secondBlockName})
        s.t(*text);
    for (NamedColor& color : f.colors)
        s.cmc(color);
}

template <class Stream> void lateDimensionStyle(Stream& s, DimensionStyleFields& f) {
    s.t(f.suffix);
    s.t(f.alternateSuffix);
    doubles(s, f.sizes);
    if (s.since(Release::r2007)) {
        s.bd(f.fixedLength);
        s.bd(f.jogAngle);
        s.bs(f.textFill);
        s.cmc(f.textFillColor);
    }
    flags(s, f.flags);
    s.bs(f.textAbove);
    s.bs(f.zeros);
    s.bs(f.angleZeros);
    if (s.since(Release::r2007))
        s.bs(f.arcSymbol);
    doubles(s, f.text);
    s.bd(f.alternateRounding);
    s.b(f.alternate);
    s.bs(f.alternateDecimals);
    flags(s, f.inside);
    for (NamedColor& color : f.colors)
        s.cmc(color);
    s.bs(f.angleDecimals);
    for (std::uint16_t& value : f.decimals)
        s.bs(value);
    for (std::uint16_t* value :
         {&f.angleUnit, &f.fraction, &f.lengthUnit, &f.separator, &f.textMovement, &f.justification})
        s.bs(*value);
    s.b(f.firstHalfOff);
    s.b(f.secondHalfOff);
    for (std::uint16_t& value : f.toleranceAndZeros)
        s.bs(value);
    s.b(f.userText);
    s.bs(f.fit);
    if (s.since(Release::r2007))
        s.b(f.fixedLengthOn);
    if (s.since(Release::r2010)) {
        s.b(f.textDirection);
        s.bd(f.alternateMultiple);
        s.t(f.alternateMultipleSuffix);
        s.bd(f.multiple);
        s.t(f.multipleSuffix);
    }
    s.bs(f.lineweight);
    s.bs(f.extensionLineweight);
}

} // namespace

template <class Stream> void transferFields(Stream& s, DimensionStyleFields& f) {
    if (s.until(Release::r14))
        earlyDimensionStyle(s, f);
    else
        lateDimensionStyle(s, f);
    s.b(f.unknown);
    s.h(f.textStyle);
    if (s.since(Release::r2000))
        for (HandleRef& block : f.blocks)
            s.h(block);
    if (s.since(Release::r2007))
        for (HandleRef& linetype : f.linetypes)
            s.h(linetype);
}

template <class Stream> void transferFields(Stream& s, DimensionStyleTableFields& f) {
    s.sizeOfItems(f.styles);
    if (s.since(Release::r2000)) {
        auto count = static_cast<std::uint8_t>(f.further.size());
        s.rc(count);
        if constexpr (Stream::reading) {
            if (count > s.handles.remaining() / 8)
                s.handles.fail();
            else
                f.further.resize(count);
        }
    }
    for (HandleRef& style : f.styles)
        s.h(style);
    for (HandleRef& further : f.further)
        s.h(further);
}

template <class Stream> void transferFields(Stream& s, MultilineStyleFields& f) {
    constexpr std::size_t leastLine = 2 + 2;
    s.t(f.name);
    s.t(f.description);
    s.bs(f.flags);
    s.cmc(f.fill);
    s.bd(f.startAngle);
    s.bd(f.endAngle);
    s.sizeRc(f.lines, leastLine);
    for (MultilineStyleFields::Line& line : f.lines) {
        s.bd(line.offset);
        s.cmc(line.color);
        if (s.until(Release::r2013))
            s.bs(line.linetypeIndex);
        else
            s.h(line.linetype);
    }
}

template <class Stream> void transferFields(Stream& s, GroupFields& f) {
    s.t(f.name);
    s.bs(f.unnamed);
    s.bs(f.selectable);
    s.sizeOfItems(f.members);
    for (HandleRef& member : f.members)
        s.h(member);
}

template <class Stream> void transferFields(Stream& s, ImageDefinitionFields& f) {
    s.bl(f.version);
    s.rd2(f.size);
    s.t(f.file);
    s.b(f.loaded);
    s.rc(f.units);
    s.rd2(f.pixelSize);
}

template <class Stream> void transferFields(Stream& s, DictionaryVariableFields& f) {
    s.rc(f.unknown);
    s.t(f.value);
}

template <class Stream> void transferFields(Stream& s, ScaleFields& f) {
    s.bs(f.flags);
    s.t(f.name);
    s.bd(f.paper);
    s.bd(f.drawing);
    s.b(f.isUnit);
}

DWG_INSTANTIATE_FIELDS(DimensionStyleFields);
DWG_INSTANTIATE_FIELDS(DimensionStyleTableFields);
DWG_INSTANTIATE_FIELDS(MultilineStyleFields);
DWG_INSTANTIATE_FIELDS(GroupFields);
DWG_INSTANTIATE_FIELDS(ImageDefinitionFields);
DWG_INSTANTIATE_FIELDS(DictionaryVariableFields);
DWG_INSTANTIATE_FIELDS(ScaleFields);

} // namespace dwg::recoding
