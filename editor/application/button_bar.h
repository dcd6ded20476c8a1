#pragma once

#include "editor/sdk/buttons.h"

#include <cstdint>
#include <string>
#include <vector>

namespace editor {

class Editor;

struct Button {
    std::wstring command; ///< as the command line takes it
    std::wstring title;
    std::vector<std::uint8_t> picture; ///< a PNG, looked at no further than its signature
};

/// The buttons of one place, which the window shows when it is told of a change.
class ButtonBar final : public AcRxButtonBar {
public:
    explicit ButtonBar(Editor& owner) : editor(owner) {}

    bool addButton(const wchar_t* command, const wchar_t* title, const void* png, std::size_t size) override;
    bool removeButton(const wchar_t* command) override;
    const std::vector<Button>& buttons() const { return shown; }

private:
    std::vector<Button>::iterator find(const std::wstring& command);

    Editor& editor;
    std::vector<Button> shown;
};

} // namespace editor
