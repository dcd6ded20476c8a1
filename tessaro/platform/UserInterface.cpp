#include "tessaro/platform/UserInterface.h"

#include "tessaro/platform/MainThread.h"

namespace platform {
namespace {

UserInterface* services = nullptr; // main thread only

} // namespace

void SetUserInterface(UserInterface* newServices) {
    CallOnMainThread([&] { services = newServices; });
}

MessageAnswer MessageBox(const std::wstring& text, const std::wstring& caption, MessageButtons buttons,
                         MessageIcon icon) {
    MessageAnswer answer = buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::No;
    CallOnMainThread([&] {
        if (services != nullptr)
            answer = services->MessageBox(text, caption, buttons, icon);
    });
    return answer;
}

std::optional<std::wstring> PickFolder(const std::wstring& title, const std::wstring& start) {
    std::optional<std::wstring> folder;
    CallOnMainThread([&] {
        if (services != nullptr)
            folder = services->PickFolder(title, start);
    });
    return folder;
}

std::optional<std::wstring> PickSaveFile(const std::wstring& title, const std::wstring& start) {
    std::optional<std::wstring> file;
    CallOnMainThread([&] {
        if (services != nullptr)
            file = services->PickSaveFile(title, start);
    });
    return file;
}

void ShowHelp(const std::wstring& file) {
    CallOnMainThread([&] {
        if (services != nullptr)
            services->ShowHelp(file);
    });
}

WaitCursor::WaitCursor() {
    CallOnMainThread([] {
        if (services != nullptr)
            services->BeginWaitCursor();
    });
}

WaitCursor::~WaitCursor() {
    CallOnMainThread([] {
        if (services != nullptr)
            services->EndWaitCursor();
    });
}

} // namespace platform
