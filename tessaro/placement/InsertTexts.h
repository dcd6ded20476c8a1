#pragma once

#include <string>

class Directory;

/// The two texts of an insertion: the one that is sent now, and the one that each repeat sends.
struct InsertTexts {
    std::wstring first, repeat;
    bool operator==(const InsertTexts&) const = default;
};

/// What the first text names and says beyond the options of the Directory.
struct InsertSource {
    std::wstring name;       ///< of the Block; what a repeat names
    std::wstring insertSpec; ///< name, path or "name=path"; what the first text names
    bool answerYes = false;  ///< the host will ask whether to redefine
    double scale = 0;        ///< the host's scale or the drawing's, for the scale modes 1 and 3
};

/// Nothing is quoted. In the first text "_scale 1" of scale mode 0 has no leading blank, in all other places the option
/// has one.
InsertTexts ComposeInsertTexts(const Directory& directory, const InsertSource& source);

/// The scale of a Directory's mode: the variable "dimscale" for 1, USERR4 of the current drawing for 3, else 0.
double PlacementScale(const Directory& directory);
