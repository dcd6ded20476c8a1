#pragma once

#include "editor/database/colours.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace editor {

/// Letters of a line that look alike.
struct TextRun {
    static constexpr std::uint8_t underlined = 1, overlined = 2, struckThrough = 4;

    /// What formatting codes set; what they leave is the text's own.
    struct Look {
        std::optional<std::uint16_t> colour{}; ///< an index, 256 by layer, 0 by block
        double height = 1;                     ///< times the text's own
        std::optional<double> fixedHeight{};
        double width = 1;   ///< times the letters' own
        double oblique = 0; ///< radians
        std::uint8_t marks = 0;
        bool operator==(const Look&) const = default;
    };

    std::wstring content;
    Look look{};
    bool operator==(const TextRun&) const = default;
};

struct TextLine {
    enum class Side { own, left, centre, right }; ///< own: as the whole text is aligned

    std::vector<TextRun> runs;
    Side side = Side::own;
    std::wstring content() const;
    bool operator==(const TextLine&) const = default;
};

/// The lines of a paragraph text with its formatting codes carried out (\P line end, \~ blank, \H height, \C and \c
/// colour, \W width, \Q oblique, \L \O \K marks, \pq side, \S fraction, \U+ and %% characters, braces) or left out (\f
/// font, \A, \T), broken at blanks where a line is longer than `charactersPerLine` (0: unlimited).
std::vector<TextLine> formattedLines(std::wstring_view text, std::size_t charactersPerLine = 0);

/// The same as plain text.
std::vector<std::wstring> linesOfParagraph(std::wstring_view text, std::size_t charactersPerLine = 0);

/// A line of text with its control codes (%%d %%p %%c %%nnn \U+hhhh) put into characters, in runs by its codes for
/// under- and overlining and striking through (%%u %%o %%k).
std::vector<TextRun> runsOfText(std::wstring_view text);

} // namespace editor
