#include "editor/application/commands.h"
#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/database/exploding.h"

#include <map>

namespace editor {

namespace {

void eraseObjects(Editor& editor) {
    for (const AcDbObjectId object : editor.commandLine().getSelection(L"Select objects: ", false)) {
        if (const int status = eraseObject(object); status != eOk)
            throw CommandFailed{L"An object can't be erased: " + statusText(status) + L"."};
    }
}

const wchar_t* reasonOf(Explosion result) {
    switch (result) {
    case Explosion::NotAReference:
        return L" was not a block reference.";
    case Explosion::ExternalReference:
        return L" was an external reference.";
    case Explosion::Array:
        return L" was inserted in rows and columns.";
    default:
        return L" could not be exploded.";
    }
}

void explodeObjects(Editor& editor) {
    std::map<Explosion, int> refused;
    for (const AcDbObjectId object : editor.commandLine().getSelection(L"Select objects: ", false)) {
        std::vector<AcDbObjectId> pieces;
        const Explosion result = explodeReference(object, pieces);
        if (result != Explosion::Done)
            ++refused[result];
    }
    for (const auto& [result, count] : refused)
        editor.console().printLine(std::to_wstring(count) + reasonOf(result));
}

} // namespace

void addModifyCommands(Editor& editor) {
    const auto add = [&editor](const wchar_t* name, void (*function)(Editor&)) {
        editor.commands().addOwn({L"EDITOR", name, name, ACRX_CMD_MODAL, [&editor, function] { function(editor); }});
    };
    add(L"ERASE", eraseObjects);
    add(L"EXPLODE", explodeObjects);
}

} // namespace editor
