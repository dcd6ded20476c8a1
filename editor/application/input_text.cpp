#include "editor/application/input_text.h"

#include <algorithm>

namespace editor {

namespace {

constexpr wchar_t escape = 0x1B;

// Where the expression that starts at `at` ends (behind its last parenthesis); npos where it is not complete.
std::size_t expressionEnd(std::wstring_view text, std::size_t at) {
    int depth = 0;
    bool quoted = false;
    for (; at < text.size(); ++at) {
        const wchar_t character = text[at];
        if (quoted) {
            if (character == L'\\')
                ++at;
            else if (character == L'"')
                quoted = false;
        } else if (character == L'"') {
            quoted = true;
        } else if (character == L'(') {
            ++depth;
        } else if (character == L')' && --depth == 0) {
            return at + 1;
        }
    }
    return std::wstring_view::npos;
}

} // namespace

InputText::InputText(std::wstring_view typed, bool shown) : echo(shown) {
    prepend(typed);
}

void InputText::prepend(std::wstring_view beginning) {
    std::wstring whole;
    for (const wchar_t character : beginning) {
        if (character != L'\r')
            whole += character == L'\t' ? L' ' : character;
    }
    whole.append(text, at);
    text = std::move(whole);
    at = 0;
}

bool InputText::cancelAt(std::size_t position) const {
    return text.compare(position, 2, L"^C") == 0 || text.compare(position, 2, L"^c") == 0;
}

InputText::Answer InputText::take(AnswerEnd end) {
    if (cancelAt(at))
        return takeCancel(at + 2);
    if (end == AnswerEnd::BlankOrLine && text[at] == L'(')
        return takeExpression();
    const std::wstring_view ends = end == AnswerEnd::Line ? L"\n\x1B" : L" \n\x1B";
    const auto stop = text.find_first_of(ends, at);
    if (stop == std::wstring::npos)
        return {Answer::Kind::Unfinished, text.substr(at)};
    Answer answer{Answer::Kind::Text, text.substr(at, stop - at)};
    if (text[stop] == escape)
        return takeCancel(stop + 1);
    at = stop + 1;
    return answer;
}

// A cancel that ends its line takes the line end along: no empty answer follows it.
InputText::Answer InputText::takeCancel(std::size_t behind) {
    at = behind < text.size() && text[behind] == L'\n' ? behind + 1 : behind;
    return {Answer::Kind::Cancel, {}};
}

InputText::Answer InputText::takeExpression() {
    const auto stop = expressionEnd(text, at);
    const auto cancel = text.find(escape, at);
    if (cancel < stop)
        return takeCancel(cancel + 1);
    if (stop == std::wstring::npos)
        return {Answer::Kind::Unfinished, text.substr(at)};
    Answer answer{Answer::Kind::Expression, text.substr(at, stop - at)};
    // The blank or line end that was typed to send it off.
    at = stop < text.size() && (text[stop] == L' ' || text[stop] == L'\n') ? stop + 1 : stop;
    return answer;
}

std::wstring withoutComments(std::wstring_view script) {
    std::wstring lines;
    while (!script.empty()) {
        const auto end = std::min(script.find(L'\n'), script.size());
        if (script[0] != L';')
            lines.append(script.substr(0, end)).append(L"\n");
        script.remove_prefix(std::min(end + 1, script.size()));
    }
    return lines;
}

} // namespace editor
