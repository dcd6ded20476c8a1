#include "editor/database/stroke_font.h"

#include <array>

namespace editor {

namespace {

constexpr double gridHeight = 6;

// From the blank to the underscore: polylines of digit pairs x y on a grid of 0 to 4 by 0 to 6, parted by blanks.
constexpr std::array<const char*, 64> glyphs = {
    "",                                 // blank
    "2622 2021",                        // !
    "1614 3634",                        // "
    "1016 3036 0242 0444",              // #
    "4535150413334231 1101 2620",       // $
    "0046 0515 3141",                   // %
    "40052636141301103042",             // &
    "2624",                             // '
    "36242230",                         // (
    "16242210",                         // )
    "2125 0442 0244",                   // *
    "2125 0343",                        // +
    "2110",                             // ,
    "0343",                             // -
    "2021",                             // .
    "0046",                             // /
    "100105163645413010 0145",          // 0
    "152620 1030",                      // 1
    "05163645440040",                   // 2
    "0516364544334241301001",           // 3
    "30360242",                         // 4
    "460603334241301001",               // 5
    "4536160501103041423303",           // 6
    "064610",                           // 7
    "13040516364544331302011030414233", // 8
    "4313040516364541301001",           // 9
    "2122 2425",                        // :
    "2110 2425",                        // ;
    "450341",                           // <
    "0242 0444",                        // =
    "054301",                           // >
    "051636454423 2221",                // ?
    "33231222323545361605011040",       // @
    "00042644 4440 0242",               // A
    "000636454433 0333424130 3000",     // B
    "4536160501103041",                 // C
    "00062644422000",                   // D
    "46060040 0333",                    // E
    "460600 0333",                      // F
    "453616050110304143 4323",          // G
    "0006 4046 0343",                   // H
    "1030 1636 2026",                   // I
    "0110304146",                       // J
    "0006 4602 1340",                   // K
    "060040",                           // L
    "0006234640",                       // M
    "00064046",                         // N
    "100105163645413010",               // O
    "000636454433 3303",                // P
    "100105163645413010 2240",          // Q
    "000636454433 3303 2340",           // R
    "453616050413334241301001",         // S
    "0646 2620",                        // T
    "060110304146",                     // U
    "062046",                           // V
    "0610233046",                       // W
    "0046 0640",                        // X
    "062346 2320",                      // Y
    "06460040",                         // Z
    "36161030",                         // [
    "0640",                             // backslash
    "16363010",                         // ]
    "042644",                           // ^
    "0040",                             // _
};

constexpr const char* unknownGlyph = "0006464000";

const char* glyphOf(wchar_t character) {
    if (character >= L'a' && character <= L'z')
        character = static_cast<wchar_t>(character - L'a' + L'A');
    const auto slot = static_cast<std::size_t>(character) - L' ';
    return character >= L' ' && slot < glyphs.size() ? glyphs[slot] : unknownGlyph;
}

} // namespace

std::vector<std::vector<AcGePoint2d>> strokesOfText(std::wstring_view text) {
    std::vector<std::vector<AcGePoint2d>> strokes;
    double left = 0;
    for (const wchar_t character : text) {
        std::vector<AcGePoint2d> stroke;
        const auto finish = [&] {
            if (stroke.size() > 1)
                strokes.push_back(stroke);
            stroke.clear();
        };
        for (const char* place = glyphOf(character); *place != '\0';) {
            if (*place == ' ') {
                finish();
                ++place;
                continue;
            }
            stroke.push_back({left + (place[0] - '0') / gridHeight, (place[1] - '0') / gridHeight});
            place += 2;
        }
        finish();
        left += strokeFontAdvance;
    }
    return strokes;
}

} // namespace editor
