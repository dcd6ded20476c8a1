#include "tessaro/placement/CmdLineReactor.h"

#include "editor/sdk/editor.h"
#include "tessaro/mapping/engine/Engine.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"

#include <string_view>

CmdLineReactor cmdLineReactor;

namespace {

/// A host command, by its exact name in upper case.
class Command {
public:
    explicit Command(const wchar_t* command) : name(command != nullptr ? command : L"") {}

    bool Is(std::wstring_view other) const { return name == other; }
    bool Places() const { return Is(L"-INSERT") || Is(L"-XREF"); }
    bool PlacesOrExplodes() const { return Places() || Is(L"EXPLODE"); }

private:
    const std::wstring_view name;
};

void SetShort(const wchar_t* name, unsigned char value) {
    resbuf variable;
    variable.restype = RTSHORT;
    variable.resval.rint = value;
    acedSetVar(name, &variable);
}

void RestoreVariables() {
    SetShort(L"CMDDIA", placement.savedCmdDia);
    SetShort(L"FILEDIA", placement.savedFileDia);
}

void Relaunch() {
    SendToCommandLine(L"tessaro\n");
    placement.relaunchPending = false;
}

void RelaunchIfPending() {
    if (placement.relaunchPending)
        Relaunch();
}

void EndCatalogPlacement() {
    RestoreVariables();
    placement.definitionSafe = true;
    placement.placementActive = false;
    RelaunchIfPending();
}

void CatalogEnded() {
    placement.amCatalogPending = false;
    if (placement.amCatalogDashPending) {
        placement.definitionSafe = true;
        SendToCommandLine(placement.amCatalogResume);
        return;
    }
    EndCatalogPlacement();
}

void DashCatalogDone() {
    placement.amCatalogDashPending = false;
    EndCatalogPlacement();
}

void NewCatalogDone() {
    placement.amCatalogDashPending = placement.amCatalogPending = false;
    EndCatalogPlacement();
}

void CatalogStopped() {
    placement.amCatalogPending = false;
    if (!placement.amCatalogDashPending)
        RestoreVariables();
    placement.definitionSafe = true;
    placement.placementActive = false;
    if (!placement.amCatalogDashPending)
        RelaunchIfPending();
}

/// The part that a cancel and a failure share ahead of the definition; true where nothing follows. `dashName` is the
/// command that ends a wait for -AMCATALOG.
bool StopCatalogOrLowerFlags(const Command& command, std::wstring_view dashName) {
    if (command.Is(L"AMCATALOG") && placement.amCatalogPending) {
        CatalogStopped();
        return true;
    }
    if (command.Is(dashName) && placement.amCatalogDashPending) {
        DashCatalogDone();
        return true;
    }
    if (command.Is(L"AMNEW") && placement.amCatalogPending) {
        NewCatalogDone();
        return true;
    }
    if (placement.explodePending && command.Places())
        placement.explodePending = false;
    if (placement.multiplePending && command.PlacesOrExplodes())
        placement.multiplePending = false;
    return false;
}

void StopPlacement() {
    RelaunchIfPending();
    placement.placementActive = false;
    RestoreCurrentLayer();
}

} // namespace

const wchar_t* ExplodeText(const wchar_t* executable) {
    const std::wstring file = platform::ToLower(platform::SplitPath(executable).nameAndExtension());
    return file == L"aclt.exe" ? L"._explode _l\n\n" : L"._explode (entlast)\n\n";
}

void CmdLineReactor::commandEnded(const wchar_t* name) {
    if (!placement.placementActive)
        return;
    const Command command(name);
    if (command.Is(L"AMCATALOG") && placement.amCatalogPending) {
        CatalogEnded();
    } else if (command.Is(L"-AMCATALOG") && placement.amCatalogDashPending) {
        DashCatalogDone();
    } else if (command.Is(L"AMNEW") && placement.amCatalogPending) {
        NewCatalogDone();
    } else if (placement.explodePending && command.Places()) {
        SendToCommandLine(ExplodeText(platform::ExecutablePath().c_str()));
        if (!placement.multiplePending)
            placement.explodePending = false;
        placement.definitionSafe = true;
    } else if (placement.multiplePending && command.PlacesOrExplodes()) {
        SendToCommandLine(placement.repeatCommand);
        placement.definitionSafe = true;
    } else if (placement.relaunchPending && command.PlacesOrExplodes()) {
        placement.placementActive = false;
        RestoreCurrentLayer();
        Relaunch();
        placement.definitionSafe = true;
    } else if (command.PlacesOrExplodes()) {
        placement.definitionSafe = true;
        RestoreCurrentLayer();
        placement.placementActive = false;
    }
}

void CmdLineReactor::commandCancelled(const wchar_t* name) {
    if (!placement.placementActive || StopCatalogOrLowerFlags(Command(name), L"-AMCATALOG"))
        return;
    if (!placement.definitionSafe)
        EraseBlockDefinition();
    StopPlacement();
}

void CmdLineReactor::commandFailed(const wchar_t* name) {
    // Without the dash, and the definition stays: both as designed.
    if (!placement.placementActive || StopCatalogOrLowerFlags(Command(name), L"AMCATALOG"))
        return;
    StopPlacement();
}
