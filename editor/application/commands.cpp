#include "editor/application/commands.h"

namespace editor {

void addOwnCommands(Editor& editor) {
    addFileCommands(editor);
    addSystemCommands(editor);
    addDrawCommands(editor);
    addModifyCommands(editor);
    addInsertCommand(editor);
}

} // namespace editor
