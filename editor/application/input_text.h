#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace editor {

/// How an answer ends: at a blank or a line end, or at a line end only (names, file paths, text).
enum class AnswerEnd { BlankOrLine, Line };

/// Text on its way to the command line, as typed: answers with their blanks and line ends.
class InputText {
public:
    struct Answer {
        enum class Kind {
            Text,       ///< `text` holds it, empty for Enter alone
            Expression, ///< `text` holds it with its parentheses
            Cancel,     ///< Escape, or ^C at the start of an answer; the line end right behind it belongs to it
            Unfinished, ///< what is left has no end yet: `text` holds it, and nothing was taken
        };
        Kind kind = Kind::Text;
        std::wstring text;
        bool operator==(const Answer&) const = default;
    };

    /// `echo`: whether answers taken from it are shown.
    explicit InputText(std::wstring_view typed, bool echo = true);

    bool empty() const { return at >= text.size(); }
    bool echoes() const { return echo; }
    /// Takes the next answer off. A text that is not empty always gives one.
    Answer take(AnswerEnd end);
    /// Puts text in front of what is left.
    void prepend(std::wstring_view beginning);

private:
    Answer takeExpression();
    Answer takeCancel(std::size_t behind);
    bool cancelAt(std::size_t position) const;

    std::wstring text;
    std::size_t at = 0;
    bool echo;
};

/// A script's lines without those that begin with a semicolon; every line ends with a line feed.
std::wstring withoutComments(std::wstring_view script);

} // namespace editor
