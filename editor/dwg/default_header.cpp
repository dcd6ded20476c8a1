#include "editor/dwg/default_header.h"

#include "editor/dwg/default_drawing.h"

namespace dwg {

namespace {

constexpr std::int64_t secondsOfDay = 24 * 60 * 60;
/// Julian day of 1970-01-01, counted from midnight as drawings do.
constexpr std::int64_t epochDay = 2440588;

} // namespace

DayAndTime dayAndTime(std::int64_t seconds, std::uint32_t milliseconds) {
    const std::int64_t shifted = seconds + epochDay * secondsOfDay;
    if (shifted < 0)
        return {};
    return {static_cast<std::uint32_t>(shifted / secondsOfDay),
            static_cast<std::uint32_t>(shifted % secondsOfDay * 1000 + milliseconds)};
}

HeaderVariables makeDefaultHeader(DayAndTime now) {
    using namespace default_handle;
    HeaderVariables header;
    header.TDCREATE = header.TDUPDATE = now;
    header.HANDSEED = firstFree;
    header.CLAYER.value = layerZero;
    header.TEXTSTYLE.value = header.DIMTXSTY.value = standardStyle;
    header.CELTYPE.value = byLayer;
    header.DIMSTYLE.value = standardDimensionStyle;
    header.CMLSTYLE.value = standardMultilineStyle;
    header.blockControl.value = blockTable;
    header.layerControl.value = layerTable;
    header.textStyleControl.value = styleTable;
    header.linetypeControl.value = linetypeTable;
    header.viewControl.value = viewTable;
    header.ucsControl.value = ucsTable;
    header.viewportControl.value = viewportTable;
    header.applicationControl.value = applicationTable;
    header.dimensionStyleControl.value = dimensionStyleTable;
    header.viewportEntityControl.value = viewportEntityTable;
    header.groupDictionary.value = groups;
    header.multilineStyleDictionary.value = multilineStyles;
    header.namedObjectsDictionary.value = namedObjects;
    header.layoutDictionary.value = layouts;
    header.plotSettingsDictionary.value = plotSettings;
    header.plotStyleDictionary.value = plotStyles;
    header.paperSpace.value = paperSpace;
    header.modelSpace.value = modelSpace;
    header.linetypeByLayer.value = byLayer;
    header.linetypeByBlock.value = byBlock;
    header.linetypeContinuous.value = continuous;
    return header;
}

} // namespace dwg
