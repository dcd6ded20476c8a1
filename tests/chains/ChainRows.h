#pragma once

namespace tests {

/// A row of the chains: what is chosen, what the user does, what comes of it.
struct Chain {
    const char* name;
    bool explode, multiple, repeat, isXref;
    int picks;
    bool cancels;  ///< Escape at the pick behind the last
    bool explodes; ///< pieces are left, not references
    int opened;    ///< how often the browser was up
};

constexpr Chain kChains[] = {
    {"no option", false, false, false, false, 1, false, false, 1},
    {"Explode", true, false, false, false, 1, false, true, 1},
    {"Multiple Insert", false, true, false, false, 3, true, false, 1},
    {"Explode and Multiple Insert", true, true, false, false, 3, true, true, 1},
    {"Repeat", false, false, true, false, 1, false, false, 2},
    {"Explode and Repeat", true, false, true, false, 1, false, true, 2},
    {"Multiple Insert and Repeat", false, true, true, false, 2, true, false, 2},
    {"all three", true, true, true, false, 2, true, true, 2},
    {"Xref", false, false, false, true, 1, false, false, 1},
    {"Xref and Repeat", false, false, true, true, 1, false, false, 2},
    {"Xref with boxes that it does not read", true, true, false, true, 1, false, false, 1},
};

} // namespace tests
