#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace editor {

/// The text of the command line: every print goes to the sink at once. Without a sink it is dropped.
class Console {
public:
    using Sink = std::function<void(std::wstring_view)>;

    void setSink(Sink function) { sink = std::move(function); }
    void print(std::wstring_view text);
    /// Prints on a line of its own: begins a new one where the last text didn't end with a line feed, and ends it.
    void printLine(std::wstring_view text);
    /// A line that tells of what a script can't have meant: an option that isn't there, an application that failed.
    void printFault(std::wstring text);
    /// All of them since the start.
    const std::vector<std::wstring>& faults() const { return faultTexts; }
    /// Begins a new line where the last text didn't end with a line feed.
    void beginLine();
    bool isAtLineStart() const { return atLineStart; }

private:
    std::vector<std::wstring> faultTexts;
    Sink sink;
    bool atLineStart = true;
};

} // namespace editor
