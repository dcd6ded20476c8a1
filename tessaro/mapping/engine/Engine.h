#pragma once

#include <string>

/// What a scheme does to a drawing on its way into the current one. Main thread.
///
/// In this version no scheme is carried out: a drawing is placed as it stands, and the current layer stays.

/// True where the definition `blockName` now comes from the mapped drawing; false has the caller go on unmapped. A name
/// that `schemes` does not hold ("<None>" among them) gives false before anything is read.
bool MapAndInsertDrawing(const std::wstring& file, const std::wstring& blockName, const std::wstring& schemeName);
/// Makes the target layer of a scheme by block name current for a placement.
void ApplyBlockNameScheme(const std::wstring& blockName, const std::wstring& schemeName);
/// Makes the layer current again that ApplyBlockNameScheme found.
void RestoreCurrentLayer();
