#pragma once

#include "editor/sdk/db.h"

#include <cstddef>
#include <optional>
#include <string>

/// Taking changes of a drawing back, group by group. A group holds all that was changed between its begin and the next
/// one's: objects, erasures and variables of the drawing. What is changed while no group is open belongs to the last
/// one that was.
namespace editor {

/// From now on the database keeps what it needs for taking changes back, of the latest groups at least so many as
/// undoGroupsKept.
void recordUndo(AcDbDatabase& database);

/// Groups that a database keeps; older ones can't be taken back any more.
constexpr std::size_t undoGroupsKept = 400;

void beginUndoGroup(AcDbDatabase& database, std::wstring name);
/// Whether anything was changed in the group. An empty group is dropped; a full one makes that nothing can be carried
/// out again.
bool endUndoGroup(AcDbDatabase& database);
/// Makes all groups from that number on one; for groups that the user wants to be taken back together.
void joinUndoGroups(AcDbDatabase& database, std::size_t from, std::wstring name);

/// How many groups can be taken back.
std::size_t undoDepth(const AcDbDatabase& database);
/// Takes the last group back and gives its name; nothing where there is none.
std::optional<std::wstring> undoGroup(AcDbDatabase& database);
/// Carries the group out again that was taken back last.
std::optional<std::wstring> redoGroup(AcDbDatabase& database);

} // namespace editor
