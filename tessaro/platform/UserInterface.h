#pragma once

#include <memory>
#include <optional>
#include <string>

/// User-interface services that the module takes from its platform. The browser implements them with windows, tests
/// with recorders. Callable from any thread: the calls below are carried out on the main thread while the caller waits.
namespace platform {

enum class MessageButtons { Ok, YesNo };
enum class MessageIcon { None, Question, Exclamation };
enum class MessageAnswer { Ok, Yes, No };

class UserInterface {
public:
    virtual ~UserInterface() = default;
    virtual MessageAnswer MessageBox(const std::wstring& text, const std::wstring& caption, MessageButtons buttons,
                                     MessageIcon icon) = 0;
    virtual void BeginWaitCursor() = 0;
    virtual void EndWaitCursor() = 0;
    /// The chosen folder, or nothing on cancel.
    virtual std::optional<std::wstring> PickFolder(const std::wstring& title, const std::wstring& start) = 0;
    /// The chosen file to save to, or nothing on cancel.
    virtual std::optional<std::wstring> PickSaveFile(const std::wstring& title, const std::wstring& start) = 0;
    virtual void ShowHelp(const std::wstring& file) = 0;
};

/// Null installs none: a message box then answers Ok or No, pickers cancel, the rest does nothing. Not owned.
void SetUserInterface(UserInterface* services);

MessageAnswer MessageBox(const std::wstring& text, const std::wstring& caption = L"Tessaro",
                         MessageButtons buttons = MessageButtons::Ok, MessageIcon icon = MessageIcon::None);
std::optional<std::wstring> PickFolder(const std::wstring& title, const std::wstring& start);
std::optional<std::wstring> PickSaveFile(const std::wstring& title, const std::wstring& start);
void ShowHelp(const std::wstring& file);

/// The wait cursor for the life of the object.
class WaitCursor {
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace platform
