#include "editor/application/commands.h"
#include "editor/application/editor.h"
#include "editor/application/search_path.h"
#include "editor/application/text.h"
#include "editor/application/wild_card.h"

#include <fstream>
#include <iterator>

namespace editor {

namespace {

void loadApplication(Editor& editor) {
    const Keywords keywords(L"? Load Unload");
    const auto option = editor.commandLine().getKeyword(L"Enter an option [?/Load/Unload]: ", keywords, L"");
    if (option == L"?") {
        for (const auto& module : editor.linker().modules())
            editor.console().printLine(module->path);
        return;
    }
    if (option == L"Unload")
        throw CommandFailed{L"Applications stay loaded until the editor quits."};
    const std::wstring name = editor.commandLine().getLine(L"Enter application file name to load: ");
    if (name.empty())
        throw CommandCancelled();
    auto found = editor.findFile(name);
    if (!found)
        found = existingFile(fullPath(name));
    if (!editor.linker().loadModule(found.value_or(name).c_str(), true, true))
        throw CommandFailed{L"\"" + name + L"\" was not loaded."};
}

void runScript(Editor& editor) {
    const std::wstring name = editor.commandLine().getLine(L"Enter script file name: ");
    if (name.empty())
        throw CommandCancelled();
    auto file = editor.findFile(name);
    if (!file)
        file = editor.findFile(withExtension(name, L".scr"));
    if (!file)
        file = existingFile(fullPath(name));
    if (!file)
        throw CommandFailed{L"Can't find file \"" + name + L"\"."};
    std::ifstream in(toUtf8(*file), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (!in)
        throw CommandFailed{L"Can't read \"" + *file + L"\"."};
    editor.commandLine().push(withoutComments(fromNarrow(bytes)), true);
}

void listVariables(Editor& editor) {
    std::wstring pattern = editor.commandLine().getText(L"Enter variable(s) to list <*>: ", false);
    if (pattern.empty())
        pattern = L"*";
    for (const Variable& variable : editor.variables().all()) {
        if (!matchesWildCard(variable.name, upperCased(pattern)))
            continue;
        const auto value = variable.get();
        editor.console().printLine(variable.name + L" = " + (value ? Variables::text(*value) : L"") +
                                   (variable.set ? L"" : L" (read only)"));
    }
}

// Nothing for an empty answer.
std::optional<VariableValue> newValue(CommandLine& line, const std::wstring& prompt, const VariableValue& present) {
    PromptOptions options;
    options.mayBeEmpty = true;
    if (std::holds_alternative<std::wstring>(present)) {
        const std::wstring text = line.getLine(prompt);
        return text.empty() ? std::nullopt : std::optional<VariableValue>(text);
    }
    if (std::holds_alternative<AcGePoint3d>(present)) {
        const auto point = line.getPoint(prompt, options);
        return point.value ? std::optional<VariableValue>(*point.value) : std::nullopt;
    }
    const auto number = line.getNumber(prompt, options);
    return number.value ? std::optional<VariableValue>(*number.value) : std::nullopt;
}

void setVariable(Editor& editor) {
    CommandLine& line = editor.commandLine();
    const std::wstring name = upperCased(line.getText(L"Enter variable name or [?]: ", false));
    if (name == L"?")
        return listVariables(editor);
    if (!name.empty())
        askForVariable(editor, name);
}

} // namespace

void askForVariable(Editor& editor, const std::wstring& name) {
    const Variable* const variable = editor.variables().find(name);
    const auto present = variable != nullptr ? variable->get() : std::nullopt;
    if (!present)
        throw CommandFailed{L"Unknown variable name \"" + name + L"\"."};
    const std::wstring shown = Variables::text(*present);
    if (!variable->set)
        return editor.console().printLine(name + L" = " + shown + L" (read only)");
    const std::wstring prompt = L"Enter new value for " + name + L" <" + shown + L">: ";
    while (const auto value = newValue(editor.commandLine(), prompt, *present)) {
        if (editor.variables().set(name, *value))
            return;
        editor.console().printLine(name + L" does not take this value.");
    }
}

void addSystemCommands(Editor& editor) {
    const auto add = [&editor](const wchar_t* name, int flags, void (*function)(Editor&)) {
        editor.commands().addOwn({L"EDITOR", name, name, flags, [&editor, function] { function(editor); }});
    };
    add(L"ARX", ACRX_CMD_SESSION, loadApplication);
    add(L"SCRIPT", ACRX_CMD_SESSION, runScript);
    add(L"SETVAR", ACRX_CMD_SESSION | ACRX_CMD_TRANSPARENT, setVariable);
}

} // namespace editor
