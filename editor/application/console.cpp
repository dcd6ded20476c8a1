#include "editor/application/console.h"

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

} // namespace editor
