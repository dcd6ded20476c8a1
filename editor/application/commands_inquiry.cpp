#include "editor/application/commands.h"
#include "editor/application/editor.h"
#include "editor/database/describing.h"

namespace editor {

namespace {

void listObjects(Editor& editor) {
    for (const AcDbObjectId object : editor.commandLine().getSelection(L"Select objects: ", false)) {
        bool isFirst = true;
        for (const std::wstring& text : describeEntity(object)) {
            editor.console().printLine((isFirst ? L"  " : L"    ") + text);
            isFirst = false;
        }
    }
}

} // namespace

void addInquiryCommands(Editor& editor) {
    editor.commands().addOwn({L"EDITOR", L"LIST", L"LIST", ACRX_CMD_MODAL, [&editor] { listObjects(editor); }});
}

} // namespace editor
