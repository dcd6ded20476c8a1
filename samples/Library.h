#pragma once

#include "samples/Sketch.h"

#include "editor/sdk/db.h"

#include <functional>
#include <string>
#include <vector>

namespace samples {

/// One drawing of the library: its file title, what its summary says, and how it is drawn.
struct Recipe {
    std::wstring name;
    std::wstring comments;
    std::function<void(Sketch&)> draw;
};

/// The drawings of one folder. All lie in the plane, seen from above, in millimetres at their real size, on layers
/// whose names begin with the folder's prefix. The base point is where the drawing is held: the middle of the edge that
/// stands against a wall, the left end of an opening, the end of a symbol's wire, else the centre.
struct Folder {
    const char* name;
    const wchar_t* layerPrefix;
    AcDb::AcDbDwgVersion release;
    std::vector<Recipe> recipes;
};

Folder doors();
Folder electrical();
Folder furniture();
Folder mechanical();
Folder plants();
Folder sanitary();
Folder titleBlocks();
Folder windows();

/// All folders in the order of their names.
std::vector<Folder> library();

/// The drawing to place the library's blocks in: the plan of a small flat.
extern const Recipe flatPlan;

} // namespace samples
