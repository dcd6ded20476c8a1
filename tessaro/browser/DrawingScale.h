#pragma once

#include <string>

/// The number that the current drawing keeps for insertions, its USERR4.

/// In decimal units with the drawing's precision; empty without a drawing.
std::wstring DrawingScaleText();
void SetDrawingScale(double scale);
