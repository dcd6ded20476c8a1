#pragma once

#include "editor/application/button_bar.h"
#include "editor/application/command_line.h"
#include "editor/application/command_processor.h"
#include "editor/application/command_stack.h"
#include "editor/application/console.h"
#include "editor/application/documents.h"
#include "editor/application/linker.h"
#include "editor/application/lisp.h"
#include "editor/application/reactors.h"
#include "editor/application/services.h"
#include "editor/application/variables.h"
#include "editor/sdk/editor.h"

#include <optional>
#include <string>
#include <vector>

namespace editor {

/// The drawing editor without its window. While one lives it is what the host's functions (acrxSysRegistry,
/// acDocManagerPtr, acedGetVar ...) work on; a process holds one at a time. Main thread only.
///
/// A program makes it, gives it a console, a source of input and perhaps a window, opens a drawing, loads modules and
/// calls run().
class Editor {
public:
    /// Throws std::logic_error while another one lives.
    Editor();
    /// Quits first.
    ~Editor();
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    /// Null while none lives.
    static Editor* instance();

    Console& console() { return textOutput; }
    Lisp& lisp() { return interpreter; }
    CommandLine& commandLine() { return prompts; }
    CommandStack& commands() { return commandStack; }
    Reactors& reactors() { return editorReactors; }
    DocumentManager& documents() { return documentManager; }
    Linker& linker() { return moduleLinker; }
    CommandProcessor& processor() { return commandProcessor; }
    Variables& variables() { return systemVariables; }
    ButtonBar& ribbon() { return ribbonButtons; }
    ButtonBar& toolbar() { return toolbarButtons; }
    /// Never null: without a window, the answers of an editor that has none.
    WindowServices& window() { return *windowServices; }

    /// Not owned; null for no window.
    void setWindow(WindowServices* services);
    /// Not owned; null for no input.
    void setUserInput(UserInput* source) { prompts.setUserInput(source); }

    const AcColorSettings& colours() const { return currentColours; }
    void setColours(const AcColorSettings& colours) { currentColours = colours; }
    /// What ACADVER gives.
    const std::wstring& releaseText() const { return release; }
    void setReleaseText(std::wstring text) { release = std::move(text); }

    /// A folder to search for files, after the drawing's own.
    void addSupportFolder(std::wstring folder) { supportFolders.push_back(std::move(folder)); }
    /// The folders that are searched, in their order: the drawing's, the given ones, the modules'.
    std::vector<std::wstring> searchFolders() const;
    /// The file by full path, or by a name or partial path in the folders searched.
    std::optional<std::wstring> findFile(std::wstring_view name) const;

    /// Carries commands out until the editor quits or the input ends.
    void run();
    /// What typing or sending this text does, with all that it starts; comes back when no text is waiting. What then
    /// still waits for an answer is cancelled, unless the source of input answers it.
    void execute(std::wstring_view text);
    /// Asks run() to come back after the present command.
    void requestQuit() { quitRequested = true; }
    bool isQuitting() const { return quitRequested; }
    /// Closes all drawings without a question and tells the modules; done once.
    void quit();

private:
    Console textOutput;
    Lisp interpreter;
    CommandLine prompts;
    CommandStack commandStack;
    Reactors editorReactors;
    Linker moduleLinker;
    DocumentManager documentManager;
    Variables systemVariables;
    CommandProcessor commandProcessor;
    ButtonBar ribbonButtons{*this};
    ButtonBar toolbarButtons{*this};
    WindowServices noWindow;
    WindowServices* windowServices = &noWindow;
    AcColorSettings currentColours{0x302821, 0xFFFFFF};
    std::wstring release = L"24.0s (LMS Tech)";
    std::vector<std::wstring> supportFolders;
    bool quitRequested = false;
    bool hasQuit = false;
};

} // namespace editor
