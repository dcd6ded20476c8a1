#pragma once

#include "editor/dwg/model.h"

namespace dwg {

/// Handles of the objects of a new drawing. They are those that programs of the release give.
namespace default_handle {
constexpr Handle blockTable = 0x01;
constexpr Handle layerTable = 0x02;
constexpr Handle styleTable = 0x03;
constexpr Handle linetypeTable = 0x05;
constexpr Handle viewTable = 0x06;
constexpr Handle ucsTable = 0x07;
constexpr Handle viewportTable = 0x08;
constexpr Handle applicationTable = 0x09;
constexpr Handle dimensionStyleTable = 0x0A;
constexpr Handle viewportEntityTable = 0x0B;
constexpr Handle namedObjects = 0x0C;
constexpr Handle groups = 0x0D;
constexpr Handle plotStyles = 0x0E;
constexpr Handle normalPlotStyle = 0x0F;
constexpr Handle layerZero = 0x10;
constexpr Handle standardStyle = 0x11;
constexpr Handle application = 0x12;
constexpr Handle byBlock = 0x14;
constexpr Handle byLayer = 0x15;
constexpr Handle continuous = 0x16;
constexpr Handle multilineStyles = 0x17;
constexpr Handle standardMultilineStyle = 0x18;
constexpr Handle plotSettings = 0x19;
constexpr Handle layouts = 0x1A;
constexpr Handle paperSpace = 0x1B;
constexpr Handle paperBegin = 0x1C;
constexpr Handle paperEnd = 0x1D;
constexpr Handle paperLayout = 0x1E;
constexpr Handle modelSpace = 0x1F;
constexpr Handle modelBegin = 0x20;
constexpr Handle modelEnd = 0x21;
constexpr Handle modelLayout = 0x22;
constexpr Handle standardDimensionStyle = 0x27;
constexpr Handle activeViewport = 0x29;
constexpr Handle firstFree = 0x2A;
} // namespace default_handle

/// The objects of a new, empty drawing of release AC1015, with everything that readers of such files expect: all
/// tables, layer "0", the linetypes ByBlock, ByLayer and Continuous, a text, a dimension and a multiline style
/// Standard, the application ACAD, the viewport *Active, both spaces with their frames and layouts, and the
/// dictionaries. Header variables stand apart.
Drawing makeDefaultDrawing();

} // namespace dwg
