#include "editor/application/commands.h"
#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/application/placing.h"
#include "editor/application/search_path.h"
#include "editor/application/text.h"
#include "editor/application/wild_card.h"
#include "editor/database/external_references.h"

namespace editor {

namespace {

class ReferenceCommand {
public:
    explicit ReferenceCommand(Editor& running)
        : editor(running), line(running.commandLine()), document(*running.documents().current()),
          database(*document.database()) {}

    void run() {
        const auto option = line.getKeyword(L"Enter an option [?/Detach/Path/Reload/Overlay/Attach] <Attach>: ",
                                            Keywords(L"? Detach Path Reload Overlay Attach"), L"Attach");
        if (option == L"?")
            list();
        else if (option == L"Detach")
            eachNamed(L"Enter xref name(s) to detach: ", [this](const ExternalReference& xref) { detach(xref); });
        else if (option == L"Reload")
            eachNamed(L"Enter xref name(s) to reload: ", [this](const ExternalReference& xref) { reload(xref); });
        else if (option == L"Path")
            eachNamed(L"Edit xref name(s) to edit path: ", [this](const ExternalReference& xref) { changePath(xref); });
        else
            attach(option == L"Overlay");
    }

private:
    void attach(bool overlay) {
        const std::wstring answer = line.getLine(L"Enter name of file to attach: ");
        if (answer.empty())
            throw CommandCancelled();
        const auto equals = answer.find(L'=');
        const bool isNamed = equals != std::wstring::npos && !hasFolder(answer.substr(0, equals));
        const std::wstring wanted = withExtension(isNamed ? trimmed(answer.substr(equals + 1)) : answer, L".dwg");
        const std::wstring name = isNamed ? trimmed(answer.substr(0, equals)) : drawingTitle(wanted);
        const auto file = editor.findFile(wanted);
        if (!file)
            throw CommandFailed{L"Can't find file \"" + wanted + L"\"."};
        const AcDbObjectId existing = findBlock(database, name);
        const AcDbObjectId block = existing.isNull() ? attachNew(name, *file, overlay) : existingReference(name);
        try {
            Placing(editor).place(block);
        } catch (...) {
            // Nobody asked for a reference that shows nowhere.
            if (existing.isNull())
                detachReference(block);
            throw;
        }
    }

    AcDbObjectId attachNew(const std::wstring& name, const std::wstring& file, bool overlay) {
        editor.console().printLine((overlay ? L"Overlay Xref \"" : L"Attach Xref \"") + name + L"\": " + file);
        AcDbObjectId block;
        int status = attachReference(database, name, file, overlay, block);
        if (status == eOk) {
            status = load(block);
            if (status != eOk)
                detachReference(block);
        }
        if (status != eOk)
            throw CommandFailed{L"Can't attach \"" + file + L"\": " + statusText(status) + L"."};
        editor.console().printLine(L"\"" + name + L"\" loaded.");
        return block;
    }

    AcDbObjectId existingReference(const std::wstring& name) {
        for (const ExternalReference& xref : externalReferences(database)) {
            if (equalIgnoringCase(xref.name, name)) {
                editor.console().printLine(L"Xref \"" + xref.name +
                                           L"\" has already been defined. Using existing definition.");
                return xref.block;
            }
        }
        throw CommandFailed{L"\"" + name + L"\" is a block of the drawing and no external reference."};
    }

    int load(AcDbObjectId block) {
        return loadReference(
            block, [this](const std::wstring& path) { return editor.documents().findReference(document, path); });
    }

    void list() {
        const auto all = externalReferences(database);
        for (const ExternalReference& xref : all)
            editor.console().printLine(L"\"" + xref.name + L"\"  " + (xref.overlay ? L"Overlay" : L"Attach") + L"  " +
                                       (xref.loaded ? L"Loaded" : L"Not loaded") + L"  " + xref.path);
        editor.console().printLine(L"Total Xref(s): " + std::to_wstring(all.size()));
    }

    template <class Function> void eachNamed(const std::wstring& prompt, Function function) {
        const std::wstring pattern = upperCased(line.getLine(prompt));
        if (pattern.empty())
            throw CommandCancelled();
        bool matched = false;
        for (const ExternalReference& xref : externalReferences(database)) {
            if (!matchesWildCard(upperCased(xref.name), pattern))
                continue;
            matched = true;
            function(xref);
        }
        if (!matched)
            throw CommandFailed{L"No matching xref names found."};
    }

    void detach(const ExternalReference& xref) {
        if (const int status = detachReference(xref.block); status != eOk)
            throw CommandFailed{L"\"" + xref.name + L"\" can't be detached: " + statusText(status) + L"."};
        editor.console().printLine(L"Xref \"" + xref.name + L"\" detached.");
    }

    void reload(const ExternalReference& xref) {
        editor.console().printLine(L"Reload Xref \"" + xref.name + L"\": " + xref.path);
        if (const int status = load(xref.block); status != eOk)
            throw CommandFailed{L"\"" + xref.path + L"\" can't be loaded: " + statusText(status) + L"."};
        editor.console().printLine(L"\"" + xref.name + L"\" loaded.");
        editor.window().drawingChanged();
    }

    void changePath(const ExternalReference& xref) {
        editor.console().printLine(L"Old path: " + xref.path);
        const std::wstring path = line.getLine(L"Enter new path: ");
        if (path.empty())
            return;
        AcDbObjectId block;
        attachReference(database, xref.name, path, xref.overlay, block);
        reload({block, xref.name, path, xref.overlay, xref.loaded});
    }

    Editor& editor;
    CommandLine& line;
    Document& document;
    AcDbDatabase& database;
};

} // namespace

void addReferenceCommand(Editor& editor) {
    editor.commands().addOwn(
        {L"EDITOR", L"-XREF", L"-XREF", ACRX_CMD_MODAL, [&editor] { ReferenceCommand(editor).run(); }});
}

} // namespace editor
