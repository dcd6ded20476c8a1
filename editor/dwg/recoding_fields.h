#pragma once

#include "editor/dwg/objects_stream.h"

#include <array>
#include <vector>

/// Fields of bodies that are only taken apart to be stored for another release. One `transferFields` each serves
/// reading and writing.
namespace dwg::recoding {

struct DimensionStyleFields {
    std::wstring suffix, alternateSuffix;
    std::wstring blockName, firstBlockName, secondBlockName; ///< up to R14
    std::array<double, 9> sizes{};                           ///< DIMSCALE to DIMTM
    double fixedLength = 1, jogAngle = 0.7853981633974483;
    std::uint16_t textFill = 0;
    NamedColor textFillColor{{0}};
    std::array<bool, 6> flags{}; ///< DIMTOL to DIMSE2
    std::uint16_t textAbove = 0, zeros = 0, angleZeros = 0, arcSymbol = 0;
    std::array<double, 8> text{}; ///< DIMTXT to DIMGAP
    double alternateRounding = 0;
    bool alternate = false;
    std::uint16_t alternateDecimals = 2;
    std::array<bool, 4> inside{}; ///< DIMTOFL to DIMSOXD
    std::array<NamedColor, 3> colors{NamedColor{{0}}, NamedColor{{0}}, NamedColor{{0}}};
    std::uint16_t angleDecimals = 0;
    std::array<std::uint16_t, 4> decimals{4, 4, 2, 2}; ///< DIMDEC to DIMALTTD
    std::uint16_t angleUnit = 0, fraction = 0, lengthUnit = 2, separator = '.', textMovement = 0, justification = 0;
    bool firstHalfOff = false, secondHalfOff = false;
    std::array<std::uint16_t, 4> toleranceAndZeros{1, 0, 0, 0}; ///< DIMTOLJ, DIMTZIN, DIMALTZ, DIMALTTZ
    bool userText = false;
    std::uint16_t fit = 3;
    bool fixedLengthOn = false;
    bool textDirection = false;
    double alternateMultiple = 100, multiple = 100;
    std::wstring alternateMultipleSuffix, multipleSuffix;
    std::uint16_t lineweight = 0xFFFE, extensionLineweight = 0xFFFE;
    bool unknown = false;
    HandleRef textStyle{handle_code::hardPointer};
    std::array<HandleRef, 4> blocks{HandleRef{handle_code::hardPointer}, HandleRef{handle_code::hardPointer},
                                    HandleRef{handle_code::hardPointer}, HandleRef{handle_code::hardPointer}};
    std::array<HandleRef, 3> linetypes{HandleRef{handle_code::hardPointer}, HandleRef{handle_code::hardPointer},
                                       HandleRef{handle_code::hardPointer}};
};

struct DimensionStyleTableFields {
    std::vector<HandleRef> styles, further;
};

struct MultilineStyleFields {
    struct Line {
        double offset = 0;
        NamedColor color;
        std::uint16_t linetypeIndex = 0x7FFF; ///< up to 2013
        HandleRef linetype{handle_code::hardPointer};
    };
    std::wstring name, description;
    std::uint16_t flags = 0;
    NamedColor fill;
    double startAngle = 0, endAngle = 0;
    std::vector<Line> lines;
};

struct GroupFields {
    std::wstring name;
    std::uint16_t unnamed = 0, selectable = 1;
    std::vector<HandleRef> members;
};

struct ViewportFields {
    Point3 center;
    double width = 0, height = 0;
    Point3 target, direction{0, 0, 1};
    double twist = 0, viewHeight = 1, lens = 50, front = 0, back = 0, snapAngle = 0;
    Point2 viewCenter, snapBase, snapSpacing{0.5, 0.5}, gridSpacing{0.5, 0.5};
    std::uint16_t circleZoom = 1000, gridMajor = 5;
    std::vector<HandleRef> frozen;
    std::uint32_t status = 0;
    std::wstring styleSheet;
    std::uint8_t renderMode = 0;
    bool ucsAtOrigin = false, ucsPerViewport = true;
    Point3 ucsOrigin, ucsX{1, 0, 0}, ucsY{0, 1, 0};
    double ucsElevation = 0;
    std::uint16_t orthographic = 0, shadeMode = 0;
    bool defaultLights = true;
    std::uint8_t lighting = 1;
    double brightness = 0, contrast = 0;
    NamedColor ambient{{250}};
    HandleRef boundary{handle_code::hardPointer}, header{handle_code::hardPointer};
    HandleRef namedUcs{handle_code::hardPointer}, baseUcs{handle_code::hardPointer};
    HandleRef background{handle_code::softPointer}, visualStyle{handle_code::hardPointer};
    HandleRef shadeStyle{handle_code::softPointer}, sun{handle_code::hardOwner};
};

struct ViewFields {
    double height = 1, width = 1;
    Point2 center;
    Point3 target, direction{0, 0, 1};
    double twist = 0, lens = 50, front = 0, back = 0;
    std::array<bool, 4> mode{};
    std::uint8_t renderMode = 0;
    bool defaultLights = true;
    std::uint8_t lighting = 1;
    double brightness = 0, contrast = 0;
    NamedColor ambient{{250}};
    bool inPaperSpace = false, hasUcs = false;
    Point3 ucsOrigin, ucsX{1, 0, 0}, ucsY{0, 1, 0};
    double ucsElevation = 0;
    std::uint16_t orthographic = 0;
    bool cameraPlotted = false;
    HandleRef background{handle_code::softPointer}, visualStyle{handle_code::hardPointer}, sun{handle_code::hardOwner};
    HandleRef baseUcs{handle_code::hardPointer}, namedUcs{handle_code::hardPointer};
    HandleRef liveSection{handle_code::softPointer};
};

struct ToleranceFields {
    std::uint16_t unknown = 0;
    double height = 0.18, gap = 0.09;
    Point3 insertion, xDirection{1, 0, 0}, extrusion = zAxis;
    std::wstring text;
    HandleRef style{handle_code::hardPointer};
};

struct ImageFields {
    std::uint32_t version = 0;
    std::array<Point3, 3> frame; ///< corner and two edges
    Point2 size;
    std::uint16_t display = 0;
    bool clipped = false;
    std::uint8_t brightness = 50, contrast = 50, fade = 0;
    bool clipOutside = false;
    std::uint16_t boundaryType = 1;
    std::vector<Point2> boundary;
    HandleRef definition{handle_code::hardPointer}, reactor{handle_code::hardOwner};
};

struct ImageDefinitionFields {
    std::uint32_t version = 0;
    Point2 size;
    std::wstring file;
    bool loaded = true;
    std::uint8_t units = 0;
    Point2 pixelSize;
};

struct DictionaryVariableFields {
    std::uint8_t unknown = 0;
    std::wstring value;
};

struct ScaleFields {
    std::uint16_t flags = 0;
    std::wstring name;
    double paper = 1, drawing = 1;
    bool isUnit = false;
};

template <class Stream> void transferFields(Stream&, DimensionStyleFields&);
template <class Stream> void transferFields(Stream&, DimensionStyleTableFields&);
template <class Stream> void transferFields(Stream&, MultilineStyleFields&);
template <class Stream> void transferFields(Stream&, GroupFields&);
template <class Stream> void transferFields(Stream&, ViewportFields&);
template <class Stream> void transferFields(Stream&, ViewFields&);
template <class Stream> void transferFields(Stream&, ToleranceFields&);
template <class Stream> void transferFields(Stream&, ImageFields&);
template <class Stream> void transferFields(Stream&, ImageDefinitionFields&);
template <class Stream> void transferFields(Stream&, DictionaryVariableFields&);
template <class Stream> void transferFields(Stream&, ScaleFields&);

#define DWG_INSTANTIATE_FIELDS(T)                                                                                      \
    template void transferFields(ObjectReader&, T&);                                                                   \
    template void transferFields(ObjectWriter&, T&)

} // namespace dwg::recoding
