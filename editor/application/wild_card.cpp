#include "editor/application/wild_card.h"

#include "editor/application/text.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace editor {

namespace {

struct Element {
    enum class Kind { Literal, Digit, Letter, Other, Any, Sequence, Class };
    Kind kind = Kind::Literal;
    wchar_t literal = 0;
    bool negated = false;
    std::vector<std::pair<wchar_t, wchar_t>> ranges;

    bool accepts(wchar_t character) const {
        switch (kind) {
        case Kind::Literal:
            return character == literal;
        case Kind::Digit:
            return isDigit(character);
        case Kind::Letter:
            return isLetter(character);
        case Kind::Other:
            return !isLetter(character) && !isDigit(character);
        case Kind::Class:
            return negated != std::any_of(ranges.begin(), ranges.end(), [character](const auto& range) {
                       return range.first <= character && character <= range.second;
                   });
        default:
            return true;
        }
    }
};

struct Alternative {
    bool negated = false;
    std::vector<Element> elements;
};

class Parser {
public:
    explicit Parser(std::wstring_view wholePattern) : pattern(wholePattern) {}

    std::vector<Alternative> alternatives() {
        std::vector<Alternative> all;
        do {
            all.push_back(alternative());
        } while (at < pattern.size() && pattern[at++] == L',');
        return all;
    }

private:
    Alternative alternative() {
        Alternative result;
        if (at < pattern.size() && pattern[at] == L'~') {
            result.negated = true;
            ++at;
        }
        while (at < pattern.size() && pattern[at] != L',')
            result.elements.push_back(element());
        return result;
    }

    Element element() {
        using Kind = Element::Kind;
        const wchar_t character = pattern[at++];
        switch (character) {
        case L'#':
            return {Kind::Digit, 0, false, {}};
        case L'@':
            return {Kind::Letter, 0, false, {}};
        case L'.':
            return {Kind::Other, 0, false, {}};
        case L'*':
            return {Kind::Sequence, 0, false, {}};
        case L'?':
            return {Kind::Any, 0, false, {}};
        case L'`':
            return {Kind::Literal, at < pattern.size() ? pattern[at++] : character, false, {}};
        case L'[':
            if (auto parsed = characterClass())
                return *parsed;
            return {Kind::Literal, character, false, {}};
        default:
            return {Kind::Literal, character, false, {}};
        }
    }

    // Stands behind the opening bracket and moves behind the closing one; stays where there is none.
    std::optional<Element> characterClass() {
        Element result{Element::Kind::Class, 0, false, {}};
        std::size_t look = at;
        if (look < pattern.size() && pattern[look] == L'~') {
            result.negated = true;
            ++look;
        }
        const auto member = [&]() {
            if (pattern[look] == L'`' && look + 1 < pattern.size())
                ++look;
            return pattern[look++];
        };
        while (look < pattern.size() && pattern[look] != L']') {
            const wchar_t first = member();
            wchar_t last = first;
            if (look + 1 < pattern.size() && pattern[look] == L'-' && pattern[look + 1] != L']') {
                ++look;
                last = member();
            }
            result.ranges.emplace_back(std::min(first, last), std::max(first, last));
        }
        if (look >= pattern.size())
            return std::nullopt;
        at = look + 1;
        return result;
    }

    std::wstring_view pattern;
    std::size_t at = 0;
};

// Only the last sequence met is ever tried again: an earlier one can't match more than it already does.
bool matches(std::wstring_view text, const std::vector<Element>& elements) {
    std::size_t position = 0, element = 0;
    std::optional<std::size_t> retryElement;
    std::size_t retryPosition = 0;
    while (position < text.size()) {
        if (element < elements.size() && elements[element].kind == Element::Kind::Sequence) {
            retryElement = ++element;
            retryPosition = position;
        } else if (element < elements.size() && elements[element].accepts(text[position])) {
            ++element;
            ++position;
        } else if (retryElement) {
            element = *retryElement;
            position = ++retryPosition;
        } else {
            return false;
        }
    }
    return std::all_of(elements.begin() + static_cast<std::ptrdiff_t>(element), elements.end(),
                       [](const Element& rest) { return rest.kind == Element::Kind::Sequence; });
}

} // namespace

bool matchesWildCard(std::wstring_view text, std::wstring_view pattern) {
    const auto alternatives = Parser(pattern).alternatives();
    return std::any_of(alternatives.begin(), alternatives.end(), [text](const Alternative& alternative) {
        return matches(text, alternative.elements) != alternative.negated;
    });
}

} // namespace editor
