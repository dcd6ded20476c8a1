#pragma once

#include "editor/sdk/db.h"

#include <string>

namespace editor {

/// A text of one line to be added to model space. Lengths in drawing units, the angle in radians.
struct NewText {
    enum class Justification { Left, Center, Right, Middle };

    AcGePoint3d point;
    std::wstring value;
    double height = 1;
    double rotation = 0;
    Justification justification = Justification::Left;
    std::wstring style; ///< empty for the current one
};

/// Null where the drawing doesn't take it: no such style, a height that is not positive.
AcDbObjectId addText(AcDbDatabase& database, const NewText& text);

/// The current text style's name, and the height that all texts of a style have: 0 where each has its own. Nothing for
/// a style that there isn't.
std::wstring currentTextStyle(const AcDbDatabase& database);
bool hasTextStyle(const AcDbDatabase& database, const std::wstring& name);
double fixedTextHeight(const AcDbDatabase& database, const std::wstring& style);
/// The height that is offered for the next text.
double textHeight(const AcDbDatabase& database);
void setTextHeight(AcDbDatabase& database, double height);

} // namespace editor
