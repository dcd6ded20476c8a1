#pragma once

#include "editor/sdk/rx.h"

#include <map>
#include <string>

/// Commands that were added, by global name.
extern std::map<std::wstring, AcRxFunctionPtr> addedCommands;
/// The one that was added last and not removed again.
extern AcEditorReactor* addedReactor;
/// The command stack takes no command.
extern bool commandsAreRefused;

/// The host has a ribbon, a toolbar.
extern bool hasRibbon;
extern bool hasToolbar;

/// One line of what the module did.
void Tell(const std::wstring& line);
