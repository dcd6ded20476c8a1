#pragma once

#include <string>

namespace editor {

class Editor;

/// Adds the editor's own commands to its command stack.
void addOwnCommands(Editor& editor);

void addFileCommands(Editor& editor);
void addSystemCommands(Editor& editor);
void addDrawCommands(Editor& editor);
void addModifyCommands(Editor& editor);
void addInsertCommand(Editor& editor);
void addReferenceCommand(Editor& editor);
void addLayerCommand(Editor& editor);
void addViewCommands(Editor& editor);
void addInquiryCommands(Editor& editor);
void addUndoCommands(Editor& editor);
void addPurgeCommand(Editor& editor);
void addLoadCommand(Editor& editor);

/// What SETVAR does behind the name of a variable.
void askForVariable(Editor& editor, const std::wstring& name);

} // namespace editor
