#include "editor/application/commands.h"
#include "editor/application/drawing.h"
#include "editor/application/editor.h"

namespace editor {

namespace {

void eraseObjects(Editor& editor) {
    for (const AcDbObjectId object : editor.commandLine().getSelection(L"Select objects: ", false)) {
        if (const int status = eraseObject(object); status != eOk)
            throw CommandFailed{L"An object can't be erased: " + statusText(status) + L"."};
    }
}

} // namespace

void addModifyCommands(Editor& editor) {
    const auto add = [&editor](const wchar_t* name, void (*function)(Editor&)) {
        editor.commands().addOwn(
            {L"EDITOR", name, name, ACRX_CMD_MODAL, true, [&editor, function] { function(editor); }});
    };
    add(L"ERASE", eraseObjects);
}

} // namespace editor
