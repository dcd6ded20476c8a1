#include "editor/application/commands.h"
#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/application/search_path.h"
#include "editor/application/text.h"
#include "editor/database/left_out.h"

#include <algorithm>
#include <array>
#include <utility>

namespace editor {

namespace {

constexpr std::array<std::pair<const wchar_t*, AcDb::AcDbDwgVersion>, 6> formats = {{{L"2000", AcDb::kDHL_1015},
                                                                                     {L"2004", AcDb::kDHL_1800},
                                                                                     {L"2007", AcDb::kDHL_1021},
                                                                                     {L"2010", AcDb::kDHL_1024},
                                                                                     {L"2013", AcDb::kDHL_1027},
                                                                                     {L"2018", AcDb::kDHL_1032}}};

std::wstring formatName(AcDb::AcDbDwgVersion version) {
    const auto found = std::find_if(formats.begin(), formats.end(),
                                    [version](const auto& format) { return format.second == version; });
    return found != formats.end() ? found->first : L"2000";
}

const std::pair<const wchar_t*, AcDb::AcDbDwgVersion>* formatNamed(const std::wstring& name) {
    const auto* const found = std::find_if(formats.begin(), formats.end(), [&name](const auto& format) {
        return name == format.first || name == std::wstring(L"_") + format.first;
    });
    return found != formats.end() ? found : nullptr;
}

bool usesFileDialogs(Editor& editor) {
    return std::get<int>(*editor.variables().get(L"FILEDIA")) != 0 && editor.window().asksForFiles() &&
           editor.commandLine().isInteractive();
}

std::wstring chosen(const std::optional<std::wstring>& file) {
    if (!file)
        throw CommandCancelled();
    return *file;
}

void save(Editor& editor, Document& document, const std::wstring& file, AcDb::AcDbDwgVersion version) {
    if (document.isReadOnly() && sameFile(file, document.fileName()))
        throw CommandFailed{L"\"" + file + L"\" is opened read-only and can be saved under another name only."};
    if (const int status = document.saveAs(file, version); status != eOk)
        throw CommandFailed{L"Can't save \"" + file + L"\": " + statusText(status) + L"."};
    for (const std::wstring& line : leftOutMessages(*document.database()))
        editor.console().printLine(line);
    editor.window().documentsChanged();
}

// The format's answer may hold the name too, behind the format or in its place.
void saveUnderNewName(Editor& editor) {
    Document& document = *editor.documents().current();
    const std::wstring own = document.fileName();
    AcDb::AcDbDwgVersion version = document.version();
    std::wstring name;
    if (usesFileDialogs(editor)) {
        name = chosen(editor.window().pickFileToSave(own));
    } else {
        CommandLine& line = editor.commandLine();
        while (name.empty()) {
            const std::wstring answer =
                line.getLine(L"Enter file format [2000/2004/2007/2010/2013/2018] <" + formatName(version) + L">: ");
            const auto blank = std::min(answer.find(L' '), answer.size());
            const auto* const format = formatNamed(answer.substr(0, blank));
            if (format != nullptr)
                version = format->second;
            name = format != nullptr ? trimmed(answer.substr(blank)) : answer;
            if (format == nullptr && !answer.empty() && !hasFolder(answer) && !endsWithIgnoringCase(answer, L".dwg")) {
                editor.console().printLine(L"Invalid file format.");
                name.clear();
                continue;
            }
            break;
        }
        if (name.empty())
            name = line.getLine(L"Save drawing as <" + own + L">: ");
        if (name.empty())
            name = own;
        name = fullPath(withExtension(name, L".dwg"));
        const auto existing = existingFile(name);
        if (existing && !(document.hasFile() && sameFile(*existing, own))) {
            editor.console().printLine(L"A drawing with this name already exists.");
            if (line.getKeyword(L"Do you want to replace it? [Yes/No] <N>: ", Keywords(L"Yes No"), L"No") == L"No")
                throw CommandCancelled();
        }
    }
    save(editor, document, withExtension(name, L".dwg"), version);
}

void saveUnderOwnName(Editor& editor) {
    Document& document = *editor.documents().current();
    if (document.hasFile())
        save(editor, document, document.fileName(), document.version());
    else
        saveUnderNewName(editor);
}

// Comes back where the document's changes are saved or may be lost.
void settleChanges(Editor& editor, Document& document) {
    if (!document.isChanged())
        return;
    if (!editor.window().asksToSave() || !editor.commandLine().isInteractive()) {
        editor.console().printLine(L"\"" + document.title() + L"\" has unsaved changes.");
        if (editor.commandLine().getKeyword(L"Really want to discard all changes to drawing? [Yes/No] <N>: ",
                                            Keywords(L"Yes No"), L"No") == L"No")
            throw CommandCancelled();
        return;
    }
    switch (editor.window().askToSave(document.title())) {
    case SaveAnswer::Save:
        editor.documents().activateDocument(&document);
        saveUnderOwnName(editor);
        return;
    case SaveAnswer::Discard:
        return;
    case SaveAnswer::Cancel:
        throw CommandCancelled();
    }
}

void openDrawing(Editor& editor) {
    const bool dialog = usesFileDialogs(editor);
    const std::wstring name = dialog ? chosen(editor.window().pickFileToOpen(L""))
                                     : editor.commandLine().getLine(L"Enter name of drawing to open: ");
    if (name.empty())
        throw CommandCancelled();
    const std::wstring drawing = withExtension(name, L".dwg");
    auto file = editor.findFile(drawing);
    if (!file)
        file = existingFile(fullPath(drawing));
    if (!file)
        throw CommandFailed{L"Can't find file \"" + drawing + L"\"."};
    int status = editor.documents().open(*file);
    if (status == Acad::eFileSharingViolation) {
        if (editor.commandLine().getKeyword(L"Would you like to open the file read-only? [Yes/No] <Y>: ",
                                            Keywords(L"Yes No"), L"Yes") == L"No")
            throw CommandCancelled();
        status = editor.documents().open(*file, true);
    }
    if (status != eOk)
        throw CommandFailed{L"Can't open \"" + *file + L"\": " + statusText(status) + L"."};
}

void closeDrawing(Editor& editor) {
    Document* const document = editor.documents().current();
    if (document == nullptr)
        throw CommandFailed{L"No drawing is open."};
    settleChanges(editor, *document);
    editor.documents().close(*document);
}

void quitEditor(Editor& editor) {
    for (const auto& document : editor.documents().all())
        settleChanges(editor, *document);
    editor.requestQuit();
}

} // namespace

void addFileCommands(Editor& editor) {
    const auto add = [&editor](const wchar_t* name, int flags, void (*function)(Editor&)) {
        editor.commands().addOwn({L"EDITOR", name, name, flags, [&editor, function] { function(editor); }});
    };
    add(L"NEW", ACRX_CMD_SESSION, [](Editor& running) { running.documents().create(); });
    add(L"OPEN", ACRX_CMD_SESSION, openDrawing);
    add(L"CLOSE", ACRX_CMD_SESSION, closeDrawing);
    add(L"QUIT", ACRX_CMD_SESSION, quitEditor);
    add(L"SAVE", ACRX_CMD_MODAL, saveUnderNewName);
    add(L"SAVEAS", ACRX_CMD_MODAL, saveUnderNewName);
    add(L"QSAVE", ACRX_CMD_MODAL, saveUnderOwnName);
}

} // namespace editor
