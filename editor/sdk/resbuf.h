#pragma once

#include "editor/sdk/status.h"

#include <cstdint>

/// One element of a list of values that the host takes and gives. `restype` is one of the RT codes and tells which
/// member of `resval` holds. A string is owned by its element (made by the C run-time's allocation, freed by
/// acutRelRb).
struct resbuf {
    resbuf* rbnext = nullptr;
    short restype = RTNONE;
    union {
        double rreal;
        double rpoint[3];
        short rint;
        int rlong;
        wchar_t* rstring;
        std::uint64_t rlname; ///< handle of an object of the current drawing
    } resval{};
};

/// A new element of that type with a zero value and no successor; the caller frees it with acutRelRb.
resbuf* acutNewRb(int type);
/// Frees a whole list with its strings. A null pointer is accepted.
int acutRelRb(resbuf* list);
/// Gives the element a copy of the text and the type RTSTR.
int acutNewString(const wchar_t* text, wchar_t*& copy);
