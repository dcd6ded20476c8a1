#pragma once

#include "tessaro/platform/UserInterface.h"

/// The platform's user-interface services with windows. Owner of each window is the active modal one, else the host's
/// main window. Windows have object names: "messageBox", "folderDialog", "saveDialog".
class QtUserInterface : public platform::UserInterface {
public:
    platform::MessageAnswer MessageBox(const std::wstring& text, const std::wstring& caption,
                                       platform::MessageButtons buttons, platform::MessageIcon icon) override;
    void BeginWaitCursor() override;
    void EndWaitCursor() override;
    std::optional<std::wstring> PickFolder(const std::wstring& title, const std::wstring& start) override;
    std::optional<std::wstring> PickSaveFile(const std::wstring& title, const std::wstring& start) override;
    void ShowHelp(const std::wstring& file) override;
};
