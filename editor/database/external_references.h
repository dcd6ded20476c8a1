#pragma once

#include "editor/sdk/db.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// External references: block definitions that show the model space of another drawing. The drawing keeps the name and
/// the path only; what they show is read from the file and belongs to a database of its own, so that nothing of it is
/// ever saved with the drawing.
namespace editor {

struct ExternalReference {
    AcDbObjectId block;
    std::wstring name, path;
    bool overlay = false;
    bool loaded = false;
};

/// The full path of a reference's file as it lies now, or nothing.
using ReferenceFinder = std::function<std::optional<std::wstring>(const std::wstring& path)>;

/// In the order of the block table.
std::vector<ExternalReference> externalReferences(AcDbDatabase& database);

/// A new reference, or the one of that name with a new path and kind. `block` is set on eOk; nothing is read yet.
/// eInvalidInput for a name that no record may have, eDuplicateRecordName where a definition of that name isn't a
/// reference.
int attachReference(AcDbDatabase& database, const std::wstring& name, const std::wstring& path, bool overlay,
                    AcDbObjectId& block);

/// Reads the file of a reference and of all references attached to it in turn; overlays of a reference aren't shown.
/// eFileNotFound where `find` gives nothing, eSelfReference for the drawing itself and for a drawing that refers to
/// itself, else what reading gives. What was shown before stays on failure.
int loadReference(AcDbObjectId block, const ReferenceFinder& find);

/// The drawing that a reference shows; null where it wasn't loaded.
AcDbDatabase* referencedDrawing(AcDbObjectId block);

/// Erases a reference with all its insertions and the layers that it brought. An Acad status.
int detachReference(AcDbObjectId block);

} // namespace editor
