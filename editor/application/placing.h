#pragma once

#include "editor/application/command_line.h"
#include "editor/sdk/db.h"

#include <optional>
#include <string>
#include <vector>

namespace editor {

class Editor;

/// The questions with which a block reference is placed: where, how large, how turned. Options ahead of the point set
/// size and turn for good (Scale, X, Y, Z, Rotate), or only for the ghost that follows the pointer (PScale ...);
/// Basepoint has this one reference held by another point than the definition's own.
class Placing {
public:
    explicit Placing(Editor& running);

    /// Asks for all that is needed and adds the reference to model space of the current drawing, with the attributes
    /// that its definition asks for. Throws CommandCancelled, and CommandFailed where the drawing doesn't take it.
    AcDbObjectId place(AcDbObjectId block);
    /// Asks for a point, one factor for all axes and an angle, as for a block that is inserted in pieces.
    AcDbObjectId placeEvenly(AcDbObjectId block);

private:
    AcGePoint3d askForPoint(AcDbObjectId block);
    void preset(const std::wstring& option);
    void askForScale(const AcGePoint3d& point);
    double askForFactor(const std::wstring& prompt, double byDefault, const std::optional<AcGePoint3d>& base);
    double askForRotation(const std::wstring& prompt, const std::optional<AcGePoint3d>& base);
    AcDbObjectId add(AcDbObjectId block, const AcGePoint3d& point);
    /// The values of the attributes that the definition asks for, in their order.
    std::vector<std::wstring> askForAttributes(AcDbObjectId block);
    void addValues(AcDbObjectId reference, const std::vector<std::wstring>& values);

    Editor& editor;
    CommandLine& line;
    bool scalePreset = false;
    AcGeVector3d scale{1, 1, 1}, shownScale{1, 1, 1};
    std::optional<double> rotation;
    double shownRotation = 0;
    AcGeVector3d grip; ///< the point that is placed, from the definition's base point, in its own units
};

} // namespace editor
