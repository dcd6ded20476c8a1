#pragma once

#include "tests/browser/BrowserFixture.h"

#include <QString>

class QWidget;

/// "Print" through the real dialogs, into files.
class PrintBrowser : public Browser {
protected:
    ~PrintBrowser() override;

    /// Answers the modal windows one after the other as they come up, until `handler` gives true.
    static void Answer(const std::function<bool(QWidget& window)>& handler);
    /// Prints into the file from the open dialog, and gives what the message at the end says. What is to happen
    /// while the print dialog is up happens before it is answered.
    static QString PrintTo(BlockDlg& dlg, const std::filesystem::path& file, int dots,
                           const std::function<void()>& happens = {});
    /// Selects the first directory and waits until it is read.
    static bool Show(BlockDlg& dlg);
};
