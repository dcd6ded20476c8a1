#include "editor/application/keywords.h"

#include "editor/application/text.h"

#include <algorithm>

namespace editor {

namespace {

bool isCapital(wchar_t character) {
    return isDigit(character) || (isLetter(character) && upperCased(std::wstring_view(&character, 1))[0] == character);
}

bool takes(std::wstring_view word, std::wstring_view answer) {
    if (equalIgnoringCase(word, answer))
        return true;
    const auto first = std::find_if(word.begin(), word.end(), isCapital);
    const auto last = std::find_if_not(first, word.end(), isCapital);
    const auto shortest = static_cast<std::size_t>(last - first);
    const std::wstring_view tail = word.substr(static_cast<std::size_t>(first - word.begin()));
    return shortest > 0 && answer.size() >= shortest && answer.size() <= tail.size() &&
           equalIgnoringCase(tail.substr(0, answer.size()), answer);
}

} // namespace

Keywords::Keywords(std::wstring_view list) {
    while (!list.empty()) {
        const auto blank = list.find(L' ');
        if (blank != 0)
            words.emplace_back(list.substr(0, blank));
        list.remove_prefix(blank == std::wstring_view::npos ? list.size() : blank + 1);
    }
}

std::optional<std::wstring> Keywords::match(std::wstring_view answer) const {
    if (!answer.empty() && answer[0] == L'_')
        answer.remove_prefix(1);
    if (answer.empty())
        return std::nullopt;
    const auto found =
        std::find_if(words.begin(), words.end(), [answer](const std::wstring& word) { return takes(word, answer); });
    return found == words.end() ? std::nullopt : std::optional(*found);
}

} // namespace editor
