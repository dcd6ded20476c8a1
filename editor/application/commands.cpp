#include "editor/application/commands.h"

namespace editor {

void addOwnCommands(Editor& editor) {
    addFileCommands(editor);
    addSystemCommands(editor);
    addDrawCommands(editor);
    addModifyCommands(editor);
    addInsertCommand(editor);
    addReferenceCommand(editor);
    addLayerCommand(editor);
    addViewCommands(editor);
    addInquiryCommands(editor);
    addUndoCommands(editor);
    addPurgeCommand(editor);
    addLoadCommand(editor);
}

} // namespace editor
