#pragma once

#include "tessaro/mapping/MapScheme.h"

#include <string>

/// The layer that a scheme has for a name. `name` comes back in upper case. False where no map matches and the
/// scheme's rule for unknown names gives nothing either; `target` then stays. An answer to the question for a new map
/// becomes part of the scheme. Main thread.
bool ResolveMap(MapScheme& scheme, std::wstring& name, std::wstring& target);
