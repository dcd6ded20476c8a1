#pragma once

#include <string>
#include <vector>

/// The AutoLISP variables in which layer standards of other applications keep their layers' names, as the choices of a
/// To box.

/// The entries of those variables that hold a text at this moment, in the order of the table.
std::vector<std::wstring> LayerVariableEntries();

/// A choice in upper case that speaks of such a variable is replaced by the variable's name. False, with nothing
/// changed, for any other text.
bool ReplaceByVariable(std::wstring& choice);
