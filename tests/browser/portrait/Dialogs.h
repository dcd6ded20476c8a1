#pragma once

#include <QString>

class BlockDlg;

/// Leaves preferences.png, properties.png and description.png, the dialogs that the browser's own controls open, in
/// that folder. False where one did not come up or could not be written.
bool GrabDialogs(BlockDlg& browser, const QString& out);
