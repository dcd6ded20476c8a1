#include "editor/application/commands.h"
#include "editor/application/editor.h"
#include "editor/application/search_path.h"
#include "editor/application/text.h"

#include <fstream>
#include <iterator>

namespace editor {

namespace {

/// A module is loaded as by ARX; any other file is a list of expressions, carried out in order.
void loadFile(Editor& editor) {
    const std::wstring name = editor.commandLine().getLine(L"Enter application file name to load: ");
    if (name.empty())
        throw CommandCancelled();
    auto file = editor.findFile(name);
    if (!file)
        file = editor.findFile(withExtension(name, L".lsp"));
    if (!file)
        file = existingFile(fullPath(name));
    if (!file)
        throw CommandFailed{L"Can't find file \"" + name + L"\"."};
    if (endsWithIgnoringCase(*file, L".arx")) {
        if (!editor.linker().loadModule(file->c_str(), true, true))
            throw CommandFailed{L"\"" + name + L"\" was not loaded."};
        return;
    }
    std::ifstream in(toUtf8(*file), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (!in)
        throw CommandFailed{L"Can't read \"" + *file + L"\"."};
    try {
        editor.lisp().evaluateAll(fromNarrow(bytes));
    } catch (const LispError& error) {
        throw CommandFailed{L"; error: " + fromUtf8(error.what())};
    }
    editor.console().printLine(fileNameOf(*file) + L" successfully loaded.");
}

} // namespace

void addLoadCommand(Editor& editor) {
    editor.commands().addOwn({L"EDITOR", L"APPLOAD", L"APPLOAD", ACRX_CMD_SESSION, [&editor] { loadFile(editor); }});
}

} // namespace editor
