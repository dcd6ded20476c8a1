#pragma once

#include "editor/sdk/db.h"

#include <string>

/// What a scheme does to a drawing on its way into the current one. Main thread.

/// Reads the file into a database of its own, rewrites that one by the scheme and makes it the definition `blockName`
/// of the current drawing; the file stays as it is. False, without a word, has the caller go on unmapped: a name that
/// `schemes` does not hold ("<None>" among them; nothing is read then), a file that can't be read, a drawing without a
/// layer table, or an insertion that the host refuses.
bool MapAndInsertDrawing(const std::wstring& file, const std::wstring& blockName, const std::wstring& schemeName);

/// Makes the target layer of a scheme by block name current for a placement, and makes it where it is missing. Does
/// nothing for schemes of other kinds.
void ApplyBlockNameScheme(const std::wstring& blockName, const std::wstring& schemeName);
/// Makes the layer current again that ApplyBlockNameScheme found.
void RestoreCurrentLayer();

extern AcDbObjectId savedClayer; ///< the current layer before ApplyBlockNameScheme
extern bool clayerSaved;         ///< savedClayer holds a value to restore
