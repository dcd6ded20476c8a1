// An application module of the host that gives other modules a toolbar for their commands.
#include "editor/sdk/buttons.h"
#include "tessaro/platform/Resources.h"

#include <string>

#define EXPORTED __attribute__((visibility("default")))

namespace {

AcRxButtonBar* Toolbar() {
    AcRxSysRegistry* const registry = acrxSysRegistry();
    return registry != nullptr ? dynamic_cast<AcRxButtonBar*>(registry->at(ACED_TOOLBAR)) : nullptr;
}

} // namespace

// Texts cross by value, as the interface between the modules says.
// NOLINTBEGIN(performance-unnecessary-value-param)
extern "C" {

EXPORTED int acrxEntryPoint(int, void*) {
    return AcRx::kRetOK;
}

EXPORTED int acrxGetApiVersion() {
    return ACRX_API_VERSION;
}

/// Adds a button for the command with the PNG that `instance`, a loaded module, holds as its resource of that number.
/// The last two arguments are kept for more than one toolbar and not looked at. 1, or 0 where there is no toolbar or no
/// such picture.
EXPORTED int AddToToolbar(std::wstring command, std::wstring title, void* instance, unsigned int resource, int,
                          unsigned long) {
    AcRxButtonBar* const toolbar = Toolbar();
    const auto picture = platform::FindResource(instance, resource);
    return toolbar != nullptr && toolbar->addButton(command.c_str(), title.c_str(), picture.data(), picture.size());
}

/// 1, or 0 where the command has no button.
EXPORTED int RemoveFromToolbar(std::wstring command) {
    AcRxButtonBar* const toolbar = Toolbar();
    return toolbar != nullptr && toolbar->removeButton(command.c_str());
}

} // extern "C"
// NOLINTEND(performance-unnecessary-value-param)
