#include "editor/application/button_bar.h"

#include "editor/application/editor.h"

#include <algorithm>
#include <array>

namespace editor {

namespace {

constexpr std::array<std::uint8_t, 8> pngSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};

bool isPng(const std::uint8_t* bytes, std::size_t size) {
    return bytes != nullptr && size > pngSignature.size() &&
           std::equal(pngSignature.begin(), pngSignature.end(), bytes);
}

bool isText(const wchar_t* text) {
    return text != nullptr && *text != 0;
}

} // namespace

std::vector<Button>::iterator ButtonBar::find(const std::wstring& command) {
    return std::find_if(shown.begin(), shown.end(), [&](const Button& button) { return button.command == command; });
}

bool ButtonBar::addButton(const wchar_t* command, const wchar_t* title, const void* png, std::size_t size) {
    const auto* const bytes = static_cast<const std::uint8_t*>(png);
    if (!isText(command) || !isText(title) || !isPng(bytes, size))
        return false;
    Button button{command, title, {bytes, bytes + size}};
    if (const auto old = find(button.command); old != shown.end())
        *old = std::move(button);
    else
        shown.push_back(std::move(button));
    editor.window().buttonsChanged();
    return true;
}

bool ButtonBar::removeButton(const wchar_t* command) {
    const auto old = command != nullptr ? find(command) : shown.end();
    if (old == shown.end())
        return false;
    shown.erase(old);
    editor.window().buttonsChanged();
    return true;
}

} // namespace editor
