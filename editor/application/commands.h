#pragma once

namespace editor {

class Editor;

/// Adds the editor's own commands to its command stack.
void addOwnCommands(Editor& editor);

void addFileCommands(Editor& editor);
void addSystemCommands(Editor& editor);
void addDrawCommands(Editor& editor);
void addModifyCommands(Editor& editor);
void addInsertCommand(Editor& editor);

} // namespace editor
