#pragma once

#include "tessaro/platform/UserInterface.h"

#include <string>
#include <vector>

namespace catalogue_tests {

/// What the user is told while the object lives, message boxes and printed lines in one order: "box TEXT", "warning
/// TEXT" for one with the exclamation mark, "print TEXT".
class Told : public platform::UserInterface {
public:
    Told();
    ~Told() override;
    Told(const Told&) = delete;
    Told& operator=(const Told&) = delete;

    /// The host's command line.
    static void Print(const std::wstring& text);

    std::vector<std::wstring> lines;
    int waits = 0;   ///< wait cursors that were shown
    int waiting = 0; ///< and are still

    platform::MessageAnswer MessageBox(const std::wstring& text, const std::wstring& caption,
                                       platform::MessageButtons buttons, platform::MessageIcon icon) override;
    void BeginWaitCursor() override;
    void EndWaitCursor() override;
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override { return {}; }
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return {}; }
    void ShowHelp(const std::wstring&) override {}

private:
    static Told* current;
};

} // namespace catalogue_tests
