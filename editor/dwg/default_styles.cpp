#include "editor/dwg/default_styles.h"

#include <numbers>

namespace dwg {

namespace {

constexpr std::uint16_t byBlock = 0;
constexpr std::uint16_t byLayer = 256;

/// Sizes of arrows, extension lines, text ...: the fields in the order that they are stored in.
void writeSizes(BitWriter& out) {
    constexpr double overallScale = 1, arrow = 0.18, extensionOffset = 0.0625, increment = 0.38, extensionBeyond = 0.18;
    for (const double value : {overallScale, arrow, extensionOffset, increment, extensionBeyond})
        out.bd(value);
    constexpr int roundingLineBeyondAndTolerances = 4;
    for (int i = 0; i < roundingLineBeyondAndTolerances; ++i)
        out.bd(0);
    out.b(false); // tolerances
    out.b(false); // limits
    out.b(true);  // text inside is horizontal
    out.b(true);  // text outside is horizontal
    out.b(false); // first extension line is left out
    out.b(false); // second extension line is left out
    out.bs(0);    // text above the line
    out.bs(0);    // zeros
    out.bs(0);    // zeros of angles
}

void writeText(BitWriter& out) {
    constexpr double height = 0.18, centerMark = 0.09, tick = 0;
    constexpr double alternateFactor = 25.4, lengthFactor = 1, verticalPosition = 0, toleranceFactor = 1, gap = 0.09;
    constexpr double alternateRounding = 0;
    for (const double value : {height, centerMark, tick, alternateFactor, lengthFactor, verticalPosition,
                               toleranceFactor, gap, alternateRounding})
        out.bd(value);
    out.b(false); // alternate units
    out.bs(2);    // their decimals
    out.b(false); // line between extension lines at all times
    out.b(false); // separate arrows
    out.b(false); // text inside at all times
    out.b(false); // no outside arrows
    for (int i = 0; i < 3; ++i)
        out.bs(byBlock); // colours of line, extension lines and text
}

void writeUnits(BitWriter& out) {
    constexpr std::uint16_t angleDecimals = 0, decimals = 4, toleranceDecimals = 4;
    constexpr std::uint16_t alternateUnit = 2, alternateToleranceDecimals = 2;
    constexpr std::uint16_t angleUnit = 0, fraction = 0, lengthUnit = 2, separator = '.', textMovement = 0;
    constexpr std::uint16_t justification = 0;
    for (const std::uint16_t value :
         {angleDecimals, decimals, toleranceDecimals, alternateUnit, alternateToleranceDecimals, angleUnit, fraction,
          lengthUnit, separator, textMovement, justification})
        out.bs(value);
    out.b(false); // first half of the line is left out
    out.b(false); // second half
    constexpr std::uint16_t toleranceJustification = 1, zeros = 0;
    out.bs(toleranceJustification);
    for (int i = 0; i < 3; ++i)
        out.bs(zeros); // of tolerances, alternate units and their tolerances
    out.b(false);      // the user places the text
    constexpr std::uint16_t fit = 3;
    out.bs(fit);
    out.bs(static_cast<std::uint16_t>(-2)); // lineweights of line and extension lines: by block
    out.bs(static_cast<std::uint16_t>(-2));
    out.b(false);
}

} // namespace

OtherRecord makeStandardDimensionStyle(HandleRef textStyle) {
    BitWriter out;
    out.t(""); // suffix
    out.t(""); // alternate suffix
    writeSizes(out);
    writeText(out);
    writeUnits(out);
    OtherRecord record;
    record.head.name = L"Standard";
    record.rest = out.bits();
    // The text style, then the blocks of leader, arrow, first and second arrow: none.
    record.references = {textStyle,
                         {handle_code::hardPointer},
                         {handle_code::hardPointer},
                         {handle_code::hardPointer},
                         {handle_code::hardPointer}};
    return record;
}

Carried makeStandardMultilineStyle() {
    BitWriter out;
    out.t("STANDARD");
    out.t("");
    out.bs(0); // flags: not filled, no joints, no caps
    out.bs(byLayer);
    out.bd(std::numbers::pi / 2);
    out.bd(std::numbers::pi / 2);
    constexpr std::uint16_t linetypeByLayer = 0x7FFF;
    out.rc(2);
    for (const double offset : {0.5, -0.5}) {
        out.bd(offset);
        out.bs(byLayer);
        out.bs(linetypeByLayer);
    }
    return {out.bits(), {}};
}

} // namespace dwg
