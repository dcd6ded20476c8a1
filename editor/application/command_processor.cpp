#include "editor/application/command_processor.h"

#include "editor/application/commands.h"
#include "editor/application/editor.h"
#include "editor/application/text.h"
#include "editor/database/undo.h"

#include <algorithm>
#include <exception>

namespace editor {

namespace {

// Of a line that is no command at all, so much as tells which it was.
std::wstring shortened(const std::wstring& typed) {
    constexpr std::size_t longest = 255;
    return typed.size() <= longest ? typed : typed.substr(0, longest) + L"...";
}

} // namespace

CommandProcessor::CommandProcessor(Editor& theEditor) : editor(theEditor) {
    editor.commandLine().setTransparent([this](const std::wstring& typed) { return runTransparent(typed); });
}

bool CommandProcessor::hasWork() const {
    return !queued.empty() || editor.commandLine().hasText();
}

void CommandProcessor::queue(Document& document, std::wstring text, bool activate, bool echo) {
    queued.push_back({&document, std::move(text), activate, echo});
    editor.commandLine().interruptUser();
}

void CommandProcessor::dropQueued(const Document& document) {
    std::erase_if(queued, [&document](const Queued& text) { return text.document == &document; });
}

// A text whose document is neither current nor to be activated waits until it is current.
void CommandProcessor::takeQueued() {
    const Document* const current = editor.documents().current();
    const auto next = std::find_if(queued.begin(), queued.end(),
                                   [current](const Queued& text) { return text.activate || text.document == current; });
    if (next == queued.end())
        return;
    const Queued text = std::move(*next);
    queued.erase(next);
    editor.documents().activateDocument(text.document);
    editor.commandLine().push(text.text, text.echo);
}

bool CommandProcessor::step() {
    inputEnded = false;
    try {
        takeQueued();
        const auto typed = editor.commandLine().getCommand();
        if (!typed)
            return true;
        const std::wstring name = typed->empty() ? lastCommand : *typed;
        if (!name.empty())
            runNamed(name);
        return !inputEnded;
    } catch (const CommandCancelled& cancel) {
        return cancel.reason != CommandCancelled::Reason::InputEnded;
    }
}

std::shared_ptr<const Command> CommandProcessor::commandFor(const std::wstring& typed) const {
    const std::wstring name = typed.size() > 1 && typed[0] == L'\'' ? typed.substr(1) : typed;
    if (auto command = editor.commands().find(name))
        return command;
    const Variable* const variable = editor.variables().find(name);
    const auto set = variable != nullptr ? editor.commands().find(L"._SETVAR") : nullptr;
    if (!set)
        return nullptr;
    Command named = *set;
    named.function = [this, wanted = variable->name] { askForVariable(editor, wanted); };
    return std::make_shared<const Command>(std::move(named));
}

CommandProcessor::Outcome CommandProcessor::runNamed(const std::wstring& typed) {
    const auto command = commandFor(typed);
    if (!command) {
        const std::wstring message = L"Unknown command \"" + upperCased(shortened(typed)) + L"\".";
        editor.console().printLine(message);
        faultTexts.push_back(message);
        return Outcome::Failed;
    }
    if (runningNames.empty())
        lastCommand = typed;
    return run(*command);
}

CommandProcessor::Outcome CommandProcessor::run(const Command& command) {
    const std::wstring name = command.globalName;
    if (!command.isSession() && editor.documents().current() == nullptr) {
        editor.console().printLine(L"No drawing is open for the command " + name + L".");
        faultTexts.push_back(name + L": no drawing is open");
        return Outcome::Failed;
    }
    if (!runningNames.empty())
        return runNested(command);
    settleChanges();
    if (const Document* const document = editor.documents().current())
        beginUndoGroup(*document->database(), name);
    const Outcome outcome = runNested(command);
    if (settleChanges())
        editor.window().drawingChanged();
    return outcome;
}

bool CommandProcessor::settleChanges() {
    bool changed = false;
    for (const auto& document : editor.documents().all()) {
        if (!endUndoGroup(*document->database()))
            continue;
        document->markChanged();
        changed = true;
    }
    return changed;
}

CommandProcessor::Outcome CommandProcessor::runNested(const Command& command) {
    const std::wstring name = command.globalName;
    runningNames.push_back(name);
    runningFlags.push_back(command.flags);
    editor.reactors().commandWillStart(name);
    const Outcome outcome = call(command);
    runningNames.pop_back();
    runningFlags.pop_back();
    switch (outcome) {
    case Outcome::Ended:
        editor.reactors().commandEnded(name);
        break;
    case Outcome::Cancelled:
        editor.reactors().commandCancelled(name);
        break;
    case Outcome::Failed:
        faultTexts.push_back(name + L" failed");
        editor.reactors().commandFailed(name);
        break;
    }
    return outcome;
}

CommandProcessor::Outcome CommandProcessor::call(const Command& command) {
    Console& console = editor.console();
    try {
        command.function();
        return Outcome::Ended;
    } catch (const CommandCancelled& cancel) {
        if (cancel.reason == CommandCancelled::Reason::InputEnded) {
            inputEnded = true;
            console.printLine(L"*Cancel* The input ended while " + command.globalName + L" was waiting.");
            faultTexts.push_back(command.globalName + L" was cancelled by the end of the input");
        }
        return Outcome::Cancelled;
    } catch (const CommandFailed& failure) {
        console.printLine(failure.message);
    } catch (const std::exception& error) {
        console.printLine(command.globalName + L" failed: " + fromNarrow(error.what()));
    } catch (...) {
        console.printLine(command.globalName + L" failed.");
    }
    return Outcome::Failed;
}

bool CommandProcessor::runTransparent(const std::wstring& typed) {
    const auto command = commandFor(typed);
    if (!command || !command->isTransparent())
        return false;
    const std::wstring interrupted = runningNames.empty() ? std::wstring() : runningNames.back();
    run(*command);
    editor.console().printLine(L"Resuming " + interrupted + L" command.");
    return true;
}

int CommandProcessor::runList(const resbuf* elements) {
    CommandLine::List list(editor.commandLine(), elements);
    int result = list.done() ? RTERROR : 0;
    while (!list.done() && result == 0) {
        const std::wstring name = list.takeCommand();
        if (name.empty())
            result = RTREJ;
        else if (const Outcome outcome = runNamed(name); outcome != Outcome::Ended)
            result = outcome == Outcome::Cancelled ? RTCAN : RTERROR;
    }
    return result;
}

} // namespace editor
