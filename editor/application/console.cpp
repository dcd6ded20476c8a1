#include "editor/application/console.h"

#include <utility>

namespace editor {

void Console::print(std::wstring_view text) {
    if (text.empty())
        return;
    atLineStart = text.back() == L'\n';
    if (sink)
        sink(text);
}

void Console::beginLine() {
    if (!atLineStart)
        print(L"\n");
}

void Console::printLine(std::wstring_view text) {
    beginLine();
    print(std::wstring(text) + L"\n");
}

void Console::printFault(std::wstring text) {
    printLine(text);
    faultTexts.push_back(std::move(text));
}

} // namespace editor
