#pragma once

/// What the host's messages do. Main thread.

/// kInitAppMsg: registers with the linker (`pkt` is its package), fills the module's place in state, writes the first
/// line of the log, adds the commands, offers the button, and has "acISMui.arx" loaded where it is not in the process.
void OnInitApp(void* pkt);
/// kLoadDwgMsg: the first one loads the settings and sets the module up; each one forgets the blocks asked about.
void OnLoadDrawing();
/// kUnloadDwgMsg: has the shown directory read anew.
void OnUnloadDrawing();
/// kQuitMsg: the first one closes everything, each one removes the commands.
void OnQuit();

/// Fills `moduleHandle`, `versionText` and `moduleFolder`. The module is known by its fixed file name: under another
/// name the handle is null and the folder that of the host's executable.
void SetModuleInfo();
