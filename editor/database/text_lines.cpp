#include "editor/database/text_lines.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace editor {

namespace {

using Look = TextRun::Look;

/// A letter and the number of its look.
struct Letter {
    wchar_t character;
    std::size_t look;
};

bool isDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

wchar_t lower(wchar_t character) {
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character + 32) : character;
}

int hexDigit(wchar_t character) {
    const wchar_t small = lower(character);
    return isDigit(small) ? small - L'0' : small >= L'a' && small <= L'f' ? small - L'a' + 10 : -1;
}

/// A number at the beginning of a code's value; 0 where there is none.
double numberOf(std::wstring_view text) {
    double value = 0, place = 1;
    bool behindPoint = false;
    const bool isNegative = text.starts_with(L'-');
    for (const wchar_t character : text.substr(isNegative ? 1 : 0)) {
        if (character == L'.' && !behindPoint) {
            behindPoint = true;
        } else if (isDigit(character)) {
            place = behindPoint ? place / 10 : place;
            value = behindPoint ? value + (character - L'0') * place : value * 10 + (character - L'0');
        } else {
            break;
        }
    }
    return isNegative ? -value : value;
}

class Formatter {
public:
    explicit Formatter(std::wstring_view of) : text(of) {}

    /// A text of one line: backslashes and braces are letters, but for \U+.
    std::vector<TextRun> oneLine() {
        for (at = 0; at < text.size(); ++at) {
            if (!takeUnicode() && !takePercent())
                put(text[at]);
        }
        return runsOf(letters);
    }

    std::vector<TextLine> paragraph(std::size_t limit) {
        for (at = 0; at < text.size(); ++at)
            step(limit);
        finish(limit);
        return std::move(lines);
    }

private:
    void put(wchar_t character) {
        if (looks.empty() || looks.back() != look)
            looks.push_back(look);
        letters.push_back({character, looks.size() - 1});
    }

    void putBoth(wchar_t first, wchar_t second) {
        put(first);
        put(second);
    }

    std::vector<TextRun> runsOf(const std::vector<Letter>& row) const {
        std::vector<TextRun> runs;
        std::size_t last = 0;
        for (const Letter& letter : row) {
            if (runs.empty() || letter.look != last)
                runs.push_back({{}, looks[letter.look]});
            last = letter.look;
            runs.back().content += letter.character;
        }
        return runs;
    }

    void finish(std::size_t limit) {
        std::vector<Letter> rest = std::move(letters);
        letters.clear();
        const auto isBlank = [](const Letter& letter) { return letter.character == L' '; };
        while (limit > 0 && rest.size() > limit) {
            const auto begin = rest.begin(), room = begin + static_cast<std::ptrdiff_t>(limit) + 1;
            const auto behind = std::find_if(std::make_reverse_iterator(room), rest.rend(), isBlank).base();
            const auto blank = behind > begin + 1 ? behind - 1 : std::find_if(begin + 1, rest.end(), isBlank);
            if (blank == rest.end())
                break;
            lines.push_back({runsOf({begin, blank}), side});
            rest.erase(begin, blank + 1);
        }
        lines.push_back({runsOf(rest), side});
    }

    void step(std::size_t limit) {
        const wchar_t character = text[at];
        if (character == L'{') {
            around.push_back(look);
        } else if (character == L'}') {
            if (!around.empty()) {
                look = around.back();
                around.pop_back();
            }
        } else if (character == L'\n') {
            finish(limit);
        } else if (character == L'^' && at + 1 < text.size()) {
            takeCaret(limit);
        } else if (character == L'\\' && at + 1 < text.size()) {
            if (!takeUnicode())
                takeCode(limit);
        } else if (!takePercent()) {
            put(character);
        }
    }

    // ^I and ^J are a tab and a line end, "^ " the caret itself.
    void takeCaret(std::size_t limit) {
        const wchar_t code = text[++at];
        if (code == L'J')
            finish(limit);
        else if (code == L'I')
            put(L' ');
        else if (code == L' ')
            put(L'^');
        else if (code != L'M')
            putBoth(L'^', code);
    }

    bool takeUnicode() {
        if (text.substr(at, 3) != L"\\U+" && text.substr(at, 3) != L"\\u+")
            return false;
        int code = 0;
        for (std::size_t digit = 0; digit < 4; ++digit) {
            const int value = at + 3 + digit < text.size() ? hexDigit(text[at + 3 + digit]) : -1;
            if (value < 0)
                return false;
            code = code * 16 + value;
        }
        at += 6;
        put(static_cast<wchar_t>(code));
        return true;
    }

    bool takePercent() {
        constexpr wchar_t degree = 0xB0, plusMinus = 0xB1, diameter = 0xD8;
        if (text.substr(at, 2) != L"%%" || at + 2 >= text.size())
            return false;
        const wchar_t code = lower(text[at + 2]);
        const auto mark = [this](std::uint8_t which) { look.marks = static_cast<std::uint8_t>(look.marks ^ which); };
        std::size_t length = 3;
        if (code == L'd') {
            put(degree);
        } else if (code == L'p') {
            put(plusMinus);
        } else if (code == L'c') {
            put(diameter);
        } else if (code == L'u') {
            mark(TextRun::underlined);
        } else if (code == L'o') {
            mark(TextRun::overlined);
        } else if (code == L'k') {
            mark(TextRun::struckThrough);
        } else if (at + 4 < text.size() && isDigit(code) && isDigit(text[at + 3]) && isDigit(text[at + 4])) {
            put(static_cast<wchar_t>((code - L'0') * 100 + (text[at + 3] - L'0') * 10 + text[at + 4] - L'0'));
            length = 5;
        } else {
            put(text[at + 2]);
        }
        at += length - 1;
        return true;
    }

    void takeCode(std::size_t limit) {
        const wchar_t code = text[++at];
        constexpr std::wstring_view withValue = L"fFHCcTQWApS";
        if (code == L'P' || code == L'X' || code == L'N') {
            finish(limit);
        } else if (code == L'~') {
            put(L' ');
        } else if (code == L'\\' || code == L'{' || code == L'}') {
            put(code);
        } else if (withValue.find(code) != std::wstring_view::npos) {
            const std::size_t end = std::min(text.find(L';', at), text.size());
            takeValue(code, text.substr(at + 1, end - at - 1));
            at = end;
        } else {
            takeMark(code);
        }
    }

    // A capital begins a line along the letters, a small one ends it.
    void takeMark(wchar_t code) {
        const std::uint8_t which = lower(code) == L'l'   ? TextRun::underlined
                                   : lower(code) == L'o' ? TextRun::overlined
                                   : lower(code) == L'k' ? TextRun::struckThrough
                                                         : 0;
        look.marks = static_cast<std::uint8_t>(code == lower(code) ? look.marks & ~which : look.marks | which);
    }

    void takeValue(wchar_t code, std::wstring_view value) {
        const double number = numberOf(value);
        const bool isFactor = !value.empty() && lower(value.back()) == L'x';
        if (code == L'H' && number > 0 && isFactor)
            (look.fixedHeight ? *look.fixedHeight : look.height) *= number;
        else if (code == L'H' && number > 0)
            look.fixedHeight = number;
        else if (code == L'W' && number > 0)
            look.width = number;
        else if (code == L'Q')
            look.oblique = number * std::numbers::pi / 180;
        else if (code == L'C' && number >= 0 && number <= colourByLayer)
            look.colour = static_cast<std::uint16_t>(number);
        else if (code == L'c' && number >= 0 && number < 0x1000000)
            takeTrueColour(static_cast<std::uint32_t>(number));
        else if (code == L'p')
            takeParagraph(value);
        else if (code == L'S')
            takeFraction(value);
    }

    // Red in the low byte.
    void takeTrueColour(std::uint32_t word) {
        look.colour = nearestIndex({static_cast<std::uint8_t>(word), static_cast<std::uint8_t>(word >> 8),
                                    static_cast<std::uint8_t>(word >> 16)});
    }

    void takeParagraph(std::wstring_view value) {
        const std::size_t mark = value.find(L'q');
        if (mark == std::wstring_view::npos || mark + 1 >= value.size())
            return;
        const wchar_t which = lower(value[mark + 1]);
        side = which == L'c'   ? TextLine::Side::centre
               : which == L'r' ? TextLine::Side::right
               : which == L'l' ? TextLine::Side::left
                               : TextLine::Side::own;
    }

    // A fraction shows what it holds, on one line.
    void takeFraction(std::wstring_view value) {
        for (const wchar_t character : value)
            put(character == L'^' || character == L'#' ? L'/' : character);
    }

    const std::wstring_view text;
    std::size_t at = 0;
    Look look;
    std::vector<Look> looks, around;
    std::vector<Letter> letters;
    TextLine::Side side = TextLine::Side::own;
    std::vector<TextLine> lines;
};

} // namespace

std::wstring TextLine::content() const {
    std::wstring whole;
    for (const TextRun& run : runs)
        whole += run.content;
    return whole;
}

std::vector<TextLine> formattedLines(std::wstring_view text, std::size_t charactersPerLine) {
    return Formatter(text).paragraph(charactersPerLine);
}

std::vector<std::wstring> linesOfParagraph(std::wstring_view text, std::size_t charactersPerLine) {
    std::vector<std::wstring> contents;
    for (const TextLine& line : formattedLines(text, charactersPerLine))
        contents.push_back(line.content());
    return contents;
}

std::vector<TextRun> runsOfText(std::wstring_view text) {
    return Formatter(text).oneLine();
}

} // namespace editor
