#pragma once

class BlockDlg;

/// What the main dialog's buttons and menus open beside it. Main thread.

/// "Preferences": runs `Prefs` and takes its settings over. Nothing is written to the ini file here.
void EditPreferences(BlockDlg& dlg);
/// "Edit Descrip.": edits the description of the first selected block and writes it into its drawing. The new text
/// stays in the list also where the drawing could not be written. What the writing raises passes.
void EditDescription(BlockDlg& dlg);
/// "Properties": runs `DirProps` for the current Directory.
void EditDirectory(BlockDlg& dlg);
