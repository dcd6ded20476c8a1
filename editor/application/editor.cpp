#include "editor/application/editor.h"

#include "editor/application/commands.h"
#include "editor/application/drawing.h"
#include "editor/application/search_path.h"
#include "editor/database/working_database.h"

#include <stdexcept>

namespace editor {

namespace {

Editor* theEditor = nullptr;

AcDbObjectId lastEntityOfCurrentDrawing() {
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    return database != nullptr ? lastEntity(*database) : AcDbObjectId();
}

class Registry final : public AcRxSysRegistry {
public:
    AcRxObject* at(const wchar_t* name) override {
        if (name == nullptr || theEditor == nullptr)
            return nullptr;
        const std::wstring key = name;
        if (key == ACRX_DYNAMIC_LINKER)
            return &theEditor->linker();
        if (key == ACRX_COMMAND_DOCK)
            return &theEditor->commands();
        if (key == ACED_EDITOR_OBJECT)
            return &theEditor->reactors();
        if (key == ACED_RIBBON)
            return &theEditor->ribbon();
        if (key == ACED_TOOLBAR)
            return &theEditor->toolbar();
        return nullptr;
    }
};

} // namespace

Editor::Editor()
    : interpreter(lastEntityOfCurrentDrawing), prompts(textOutput, interpreter), editorReactors(textOutput),
      moduleLinker(*this), documentManager(*this), systemVariables(*this), commandProcessor(*this) {
    if (theEditor != nullptr)
        throw std::logic_error("an editor is running already");
    theEditor = this;
    addOwnCommands(*this);
}

Editor::~Editor() {
    quit();
    theEditor = nullptr;
}

Editor* Editor::instance() {
    return theEditor;
}

void Editor::setWindow(WindowServices* services) {
    windowServices = services != nullptr ? services : &noWindow;
    prompts.setWindow(services);
}

std::vector<std::wstring> Editor::searchFolders() const {
    std::vector<std::wstring> folders;
    if (const Document* const document = documentManager.current())
        folders.push_back(document->folder());
    folders.insert(folders.end(), supportFolders.begin(), supportFolders.end());
    for (const auto& module : moduleLinker.modules())
        folders.push_back(folderOf(module->path));
    return folders;
}

std::optional<std::wstring> Editor::findFile(std::wstring_view name) const {
    if (name.empty())
        return std::nullopt;
    if (isFullPath(name))
        return existingFile(name);
    for (const auto& folder : searchFolders()) {
        if (auto found = existingFile(joined(folder, name)))
            return found;
    }
    return std::nullopt;
}

void Editor::run() {
    while (!quitRequested && commandProcessor.step()) {
    }
}

void Editor::execute(std::wstring_view text) {
    prompts.push(text, true);
    while (!quitRequested && commandProcessor.hasWork() && commandProcessor.step()) {
    }
}

void Editor::quit() {
    if (hasQuit)
        return;
    hasQuit = true;
    quitRequested = true;
    while (Document* const document = documentManager.current())
        documentManager.close(*document);
    moduleLinker.send(AcRx::kQuitMsg);
}

} // namespace editor

AcRxSysRegistry* acrxSysRegistry() {
    static editor::Registry registry;
    return editor::Editor::instance() != nullptr ? &registry : nullptr;
}

AcApDocManager* acDocManagerPtr() {
    editor::Editor* const editor = editor::Editor::instance();
    return editor != nullptr ? &editor->documents() : nullptr;
}
