#pragma once

#include "editor/application/command_stack.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct resbuf;

namespace editor {

class Document;
class Editor;

/// Runs commands by name, one after the other, and tells the reactors. It serves typed lines, scripts, queued texts and
/// acedCmdS alike.
class CommandProcessor {
public:
    explicit CommandProcessor(Editor& editor);
    CommandProcessor(const CommandProcessor&) = delete;
    CommandProcessor& operator=(const CommandProcessor&) = delete;

    /// Takes one answer at the command prompt and runs what it names: a command, or else a system variable, which is
    /// asked for as by SETVAR. What an outermost command and the notifications about it change in drawings can be taken
    /// back in one step. False when the input has ended.
    bool step();
    /// Whether text waits to be carried out.
    bool hasWork() const;
    /// Runs a list of elements at once, nested in the present command. RTNORM is not its success: 0 is.
    int runList(const resbuf* elements);
    /// Queues text for a document: it runs at the command prompt, before anything else that waits. Texts run in the
    /// order in which they were queued; one for a document that is closed first is dropped.
    void queue(Document& document, std::wstring text, bool activate, bool echo);
    void dropQueued(const Document& document);

    /// Names of the commands that run now, the outermost first, in upper case.
    const std::vector<std::wstring>& running() const { return runningNames; }
    bool isSessionCommand() const { return !runningFlags.empty() && (runningFlags.back() & ACRX_CMD_SESSION) != 0; }
    /// What could not be carried out since the start: unknown commands, failed commands, commands that the end of the
    /// input cancelled; one text each.
    const std::vector<std::wstring>& faults() const { return faultTexts; }

private:
    enum class Outcome { Ended, Cancelled, Failed };
    struct Queued {
        Document* document;
        std::wstring text;
        bool activate;
        bool echo;
    };

    void takeQueued();
    Outcome runNamed(const std::wstring& typed);
    Outcome run(const Command& command);
    Outcome call(const Command& command);
    bool runTransparent(const std::wstring& typed);
    std::shared_ptr<const Command> commandFor(const std::wstring& typed) const;
    Outcome runNested(const Command& command);
    bool settleChanges();

    Editor& editor;
    std::deque<Queued> queued;
    std::vector<std::wstring> runningNames;
    std::vector<int> runningFlags;
    std::wstring lastCommand;
    std::vector<std::wstring> faultTexts;
    bool inputEnded = false;
};

} // namespace editor
