#pragma once

#include "editor/database/snap_points.h"

namespace editor {

/// A kind of object snap and its bit of the system variable OSMODE.
struct SnapMode {
    const wchar_t* name;
    SnapKind kind;
    int bit;
};

inline constexpr SnapMode snapModes[] = {{L"Endpoint", SnapKind::End, 1},
                                         {L"Midpoint", SnapKind::Middle, 2},
                                         {L"Center", SnapKind::Center, 4},
                                         {L"Insertion", SnapKind::Insertion, 64}};
/// The bit that switches all of them off and leaves them chosen.
inline constexpr int snapSwitchedOff = 16384;
inline constexpr int snapModeAtFirst = 1 | 4 | 64;

} // namespace editor
