#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace editor {

/// The words that a prompt takes, "Scale", "eXit", "LType": the first run of capital letters (with digits) is the
/// shortest form, and any longer start of the word from there, or the whole word, is taken too. An underscore in front
/// of an answer is accepted; case isn't looked at.
class Keywords {
public:
    Keywords() = default;
    /// Words parted by blanks.
    explicit Keywords(std::wstring_view words);

    /// The word as it was declared.
    std::optional<std::wstring> match(std::wstring_view answer) const;
    bool empty() const { return words.empty(); }

private:
    std::vector<std::wstring> words;
};

} // namespace editor
