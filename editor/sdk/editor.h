#pragma once

#include "editor/sdk/resbuf.h"
#include "editor/sdk/rx.h"

#include <cstdint>

/// Editor calls. Results are RTNORM or another RT code. Main thread only.

/// Value of a system variable; the name ignores case. A string value is allocated and freed by the caller's acutRelRb.
int acedGetVar(const wchar_t* name, resbuf* value);
int acedSetVar(const wchar_t* name, const resbuf* value);

/// Looks a file up: the drawing's folder, the folders given to the editor, the module's folder. RTERROR: not found.
int acedFindFile(const wchar_t* name, wchar_t* result, std::size_t size);

/// Prints on the command line; "%s" is wide text.
int acutPrintf(const wchar_t* format, ...);

/// RTNORM where the text matches the wild-card pattern, else RTERROR. The pattern language: # a digit, @ a letter,
/// . one character that is neither letter nor digit, * any sequence, ? any one character, [..] and [~..] classes with
/// ranges, a leading ~ negates a pattern, ` escapes, a comma separates alternatives. Case counts.
int acutWcMatch(const wchar_t* text, const wchar_t* pattern);

/// Carries a list of command elements out at once, nested in a running command. A string of one backslash waits for
/// the user. 0 when the list was carried out (the one editor call whose success is not RTNORM).
int acedCmdS(const resbuf* list);

/// Value of an AutoLISP symbol, a list that the caller frees; null result where it is nil.
int acedGetSym(const wchar_t* name, resbuf** value);
int acedPutSym(const wchar_t* name, resbuf* value);
/// Calls a function by name ("acad_colordlg").
int acedInvoke(const resbuf* arguments, resbuf** result);

/// Reads a line from the user; blanks are part of it when `cronly` is not 0.
int acedGetString(int cronly, const wchar_t* prompt, wchar_t* result, std::size_t size);
int acedRetVoid();

/// Colours of the host; words with red in the low byte.
struct AcColorSettings {
    std::uint32_t dwGfxModelBkColor = 0;
    std::uint32_t dwGfxLayoutBkColor = 0xFFFFFF;
};
bool acedGetCurrentColors(AcColorSettings* colors);

/// The host's main window (a QWidget there), or null without a window.
void* adsw_acadMainWnd();
