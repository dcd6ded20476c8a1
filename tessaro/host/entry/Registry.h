#pragma once

#include "editor/sdk/rx.h"

/// The host's services by their names in its registry; null where it has none of that name. Main thread.
AcRxDynamicLinker* DynamicLinker();
AcEdCommandStack* CommandStack();
AcEditor* Editor();

constexpr const wchar_t* kCommandGroup = L"NORVANETESSARO";
