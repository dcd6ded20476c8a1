#pragma once

#include "editor/sdk/rx.h"

#include <cstddef>

/// One place of the host's window where applications put buttons for their commands. Main thread only.
class AcRxButtonBar : public AcRxObject {
public:
    /// A button that sends `command` to the command line as it stands, its line end included, after what runs there was
    /// cancelled. `png` is a picture in that format; its bytes are copied. A command has one button in a place: another
    /// one for it takes the place of the first. False without a command, without a title, or for bytes that are no PNG.
    virtual bool addButton(const wchar_t* command, const wchar_t* title, const void* png, std::size_t size) = 0;
    /// False where the command has no button here.
    virtual bool removeButton(const wchar_t* command) = 0;
};

/// Names in the host's registry.
constexpr const wchar_t* ACED_RIBBON = L"Ribbon";
constexpr const wchar_t* ACED_TOOLBAR = L"Toolbar";
